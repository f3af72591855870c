// The application's wiring: update check, the plugin's launch handlers, and the windows they open.
#pragma once

#include "WindowController.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace MusicPlugin {

class AppDelegate : public QObject
{
    Q_OBJECT

public:
    // Starts the update check, registers "Music" with the script engine, makes the application object and
    // assigns the edit, run and configure handlers. It must be made before launching finishes, so that the
    // start-up check sees the launch URL.
    AppDelegate();
    ~AppDelegate() override;

    // Every window controller a handler opened, in opening order; each lives until the process ends.
    std::vector<std::unique_ptr<WindowController>> runControllers;

    // A launch URL, at start or from a later launch; no URL dispatches nothing.
    void handleGetURLEvent(const std::optional<QString>& url);

    // Decides for a later launch that the running instance was handed: false when this instance cannot
    // serve it (it is terminating, or the launch needs windows and this process has none). An accepted
    // launch is dispatched from the event loop, after the launcher has had its answer.
    bool acceptLaunch(const std::optional<QString>& url);

    // The handlers; each opens a new window and keeps its controller.
    void openEditor(const QString& actionID);
    void openPreferences();

private:
    // Without windows an edit or configure launch cannot be served; the user is told so.
    static bool canOpenWindows(const QString& storyboard);
    static void reportNoDisplay();
};

} // namespace MusicPlugin
