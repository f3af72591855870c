// Interface files by name: the scenes that the windowed part of the application registers.
#pragma once

#include "WindowController.h"

#include <QString>

#include <functional>
#include <memory>

namespace MusicPlugin {

class Storyboard
{
public:
    using SceneFactory = std::function<std::unique_ptr<WindowController>()>;

    // Makes a scene available under its storyboard's name and its identifier; a later registration of the
    // same scene replaces the earlier one.
    static void registerScene(const QString& storyboard, const QString& identifier, SceneFactory factory);
    // Whether any scene of this storyboard is registered: false in a process without windows.
    static bool exists(const QString& name);
    // Forgets every scene (tests).
    static void clear();

    explicit Storyboard(QString name) : m_name(std::move(name)) {}

    // A missing scene is a wiring mistake of the interface files and stops the process.
    std::unique_ptr<WindowController> instantiateController(const QString& identifier) const;

private:
    QString m_name;
};

} // namespace MusicPlugin
