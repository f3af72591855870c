// Handlers hold the delegate weakly, so a handler that outlives it does nothing instead of crashing.
#include "AppDelegate.h"

#include "App.h"
#include "EditorViewController.h"
#include "MusicScriptApplication.h"
#include "RunActionController.h"
#include "Storyboard.h"
#include "UpdateController.h"

#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelPluginURL.h>

#include <QCoreApplication>
#include <QPointer>

namespace MusicPlugin {

using namespace VendelSDK;

namespace {

const auto mainStoryboard = QStringLiteral("Main");
const auto editScene = QStringLiteral("Edit Window Controller");
const auto preferencesStoryboard = QStringLiteral("Preferences");
const auto preferencesScene = QStringLiteral("Preferences Window Controller");

} // namespace

AppDelegate::AppDelegate()
{
    // Where the system delivers launch URLs to the running application, each is dispatched as it arrives,
    // before launching finishes for the URL that started the process.
    connect(&Platform::applicationServices(), &ApplicationServices::getURLEvent, this,
            [this](const QString& url) { handleGetURLEvent(url); });
    UpdateController::shared().updater().checkForUpdatesInBackground();
    // The player's scripts address "Music"; where the system does not know it by that name, the plugin
    // supplies it.
    Platform::scriptEngine().registerApplication(QStringLiteral("Music"), makePlatformMusicApplication());

    PluginController& controller = App::shared().vendelPlugin().actionController;
    const QPointer<AppDelegate> self(this);
    controller.onEdit = [self](const QString& actionID) {
        if (self) {
            self->openEditor(actionID);
        }
    };
    controller.onRun = [](const QString& actionID) { RunActionController(actionID).run(); };
    controller.onConfigure = [self] {
        if (self) {
            self->openPreferences();
        }
    };
    // "runCommand" keeps its default: this plugin has no global configuration to edit.
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::handleGetURLEvent(const std::optional<QString>& url)
{
    App::shared().vendelPlugin().actionController.handle(url);
}

bool AppDelegate::acceptLaunch(const std::optional<QString>& url)
{
    if (Platform::applicationServices().terminationRequested()) {
        return false;
    }
    if (url) {
        const auto parsed = VendelPluginURL::parse(*url);
        const bool needsWindows = parsed && (parsed->action == u"edit" || parsed->action == u"configure");
        if (needsWindows && !Storyboard::exists(mainStoryboard)) {
            return false;
        }
    }
    const QPointer<AppDelegate> self(this);
    Platform::applicationServices().postToMainThread([self, url] {
        if (self) {
            self->handleGetURLEvent(url);
        }
    });
    return true;
}

void AppDelegate::openEditor(const QString& actionID)
{
    if (!canOpenWindows(mainStoryboard)) {
        return;
    }
    // Making the editor reads the playlists, and loading reads the record; either may fail, tell the user
    // and ask to terminate. Terminating ends the flow there: no host call, no window, no write after it.
    const auto terminating = [] { return Platform::applicationServices().terminationRequested(); };
    auto windowController = Storyboard(mainStoryboard).instantiateController(editScene);
    if (terminating()) {
        return;
    }
    // The editor's content is loaded with the action before the window is shown.
    if (auto* editor = qobject_cast<EditorViewController*>(windowController->contentViewController())) {
        editor->setActionIdentifier(actionID);
        editor->loadConfiguration();
    }
    if (terminating()) {
        return;
    }
    windowController->showWindow();
    runControllers.push_back(std::move(windowController));
}

void AppDelegate::openPreferences()
{
    if (!canOpenWindows(preferencesStoryboard)) {
        return;
    }
    auto windowController = Storyboard(preferencesStoryboard).instantiateController(preferencesScene);
    windowController->showWindow();
    runControllers.push_back(std::move(windowController));
}

bool AppDelegate::canOpenWindows(const QString& storyboard)
{
    if (Storyboard::exists(storyboard)) {
        return true;
    }
    reportNoDisplay();
    return false;
}

void AppDelegate::reportNoDisplay()
{
    Alert alert;
    //: Shown when an edit or configure launch finds no display to open its window on
    alert.messageText = QCoreApplication::translate("AppDelegate", "The window cannot be opened.");
    //: Informative text of the message shown when there is no display
    alert.informativeText =
        QCoreApplication::translate("AppDelegate", "The plugin was started without a display.");
    Platform::alertPresenter().runModal(alert);
    Platform::applicationServices().terminate();
}

} // namespace MusicPlugin
