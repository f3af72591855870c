// The preferences window: the form "Preferences", which holds the about panel and its links.
#pragma once

#include "WindowController.h"

#include <memory>

class QWidget;

namespace Ui {
class Preferences;
} // namespace Ui

namespace MusicPlugin {

class AboutViewController;

class PreferencesWindowController : public WindowController
{
    Q_OBJECT

public:
    // The scene "Preferences Window Controller".
    explicit PreferencesWindowController(QObject* parent = nullptr);
    ~PreferencesWindowController() override;

    void showWindow() override;
    // The about panel.
    QObject* contentViewController() const override;
    AboutViewController* aboutViewController() const { return m_about; }
    QWidget* window() const { return m_window.get(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void windowDidLoad();
    // As the editor's: the last window shown to close ends the application.
    void windowWillClose();

    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<Ui::Preferences> m_form;
    AboutViewController* m_about = nullptr;
};

} // namespace MusicPlugin
