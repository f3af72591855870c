// The plugin has no settings of its own, so its preferences are what it is: the about panel.
#include "PreferencesWindowController.h"

#include "ui_Preferences.h"

#include "AboutViewController.h"
#include "LinkLabel.h"

#include "App.h"

#include <VendelSDK/FatalError.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/WindowConfiguration.h>

#include <QEvent>
#include <QWidget>

namespace MusicPlugin {

PreferencesWindowController::PreferencesWindowController(QObject* parent)
    : WindowController(parent), m_window(std::make_unique<QWidget>()),
      m_form(std::make_unique<Ui::Preferences>()), m_about(new AboutViewController(this))
{
    m_form->setupUi(m_window.get());
    // The form's links take their addresses from the form, then turn into links.
    for (LinkLabel* label : m_window->findChildren<LinkLabel*>()) {
        label->awakeFromNib();
    }
    m_about->icon = m_form->icon;
    m_about->name = m_form->name;
    m_about->copyright = m_form->copyright;
    m_about->version = m_form->version;
    m_about->viewDidLoad();
    windowDidLoad();
}

PreferencesWindowController::~PreferencesWindowController() = default;

void PreferencesWindowController::showWindow()
{
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

QObject* PreferencesWindowController::contentViewController() const
{
    return m_about;
}

void PreferencesWindowController::windowDidLoad()
{
    if (!m_window) {
        VendelSDK::fatalError(QStringLiteral("The preferences have no window."),
                              "app/ui/PreferencesWindowController", __LINE__);
    }
    // Unlike the editor, this window is moved by its title bar only.
    VendelSDK::WindowConfiguration::configure(*m_window);
    m_window->installEventFilter(this);
}

bool PreferencesWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window.get() && event->type() == QEvent::Close) {
        windowWillClose();
    }
    return WindowController::eventFilter(watched, event);
}

void PreferencesWindowController::windowWillClose()
{
    if (App::visibleWindowsCount() == 1) {
        VendelSDK::Platform::applicationServices().terminate();
    }
}

} // namespace MusicPlugin
