// Handlers hold the plugin object weakly, so a handler that outlives it does nothing instead of crashing.
#include "LinkShelfPlugin.h"

#include "LinkSetWindow.h"
#include "RunController.h"

#include <VendelSDK/GlobalConfigProvider.h>
#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelPlugin.h>
#include <VendelSDK/VendelPluginURL.h>

#include <QCoreApplication>
#include <QLabel>
#include <QPointer>

namespace LinkShelf {

using namespace VendelSDK;

LinkShelfPlugin::LinkShelfPlugin(VendelPlugin& plugin, bool windowsAvailable)
    : m_plugin(plugin), m_windowsAvailable(windowsAvailable)
{
    connect(&Platform::applicationServices(), &ApplicationServices::getURLEvent, this,
            [this](const QString& url) { handleLaunchURL(url); });
    const QPointer<LinkShelfPlugin> self(this);
    PluginController& controller = m_plugin.actionController;
    controller.onRun = [self](const QString& actionID) {
        if (self) {
            self->run(actionID);
        }
    };
    controller.onEdit = [self](const QString& actionID) {
        if (self) {
            self->openEditor(actionID);
        }
    };
    controller.onConfigure = [self] {
        if (self) {
            self->openPreferences();
        }
    };
    // The plugin-wide links are its global configuration, edited in the preferences.
    controller.onRunCommand = [self](const std::optional<QString>&) {
        if (self) {
            self->openPreferences();
        }
    };
}

LinkShelfPlugin::~LinkShelfPlugin() = default;

void LinkShelfPlugin::handleLaunchURL(const std::optional<QString>& url)
{
    m_plugin.actionController.handle(url);
}

bool LinkShelfPlugin::acceptLaunch(const std::optional<QString>& url)
{
    if (Platform::applicationServices().terminationRequested()) {
        return false;
    }
    if (url && !m_windowsAvailable) {
        const auto parsed = VendelPluginURL::parse(*url);
        if (parsed && parsed->action != u"run") {
            return false;
        }
    }
    const QPointer<LinkShelfPlugin> self(this);
    Platform::applicationServices().postToMainThread([self, url] {
        if (self) {
            self->handleLaunchURL(url);
        }
    });
    return true;
}

void LinkShelfPlugin::run(const QString& actionID)
{
    RunController(actionID).run();
}

void LinkShelfPlugin::openEditor(const QString& actionID)
{
    if (!canOpenWindows()) {
        return;
    }
    const auto provider = LocalConfigProvider<LinkSet>::create(actionID, LinkSet{});
    if (!provider) {
        Platform::applicationServices().terminate();
        return;
    }
    //: Title of the window that edits one action's links
    const QString title = QCoreApplication::translate("LinkShelfPlugin", "Links of the Action");
    //: Heading above the links of an action
    const QString heading =
        QCoreApplication::translate("LinkShelfPlugin", "A run adds these links to Vendel:");
    show(std::make_unique<LinkSetWindow>(title, heading, provider->config, [provider](const LinkSet& set) {
        provider->config = set;
        provider->save();
    }));
}

void LinkShelfPlugin::openPreferences()
{
    if (!canOpenWindows()) {
        return;
    }
    const auto provider = GlobalConfigProvider<LinkSet>::create();
    if (!provider) {
        Platform::applicationServices().terminate();
        return;
    }
    const Bundle& bundle = Platform::mainBundle();
    auto* about = new QLabel(QStringLiteral("%1 %2").arg(bundle.infoText(Bundle::nameKey),
                                                         bundle.infoText(Bundle::shortVersionKey)));
    about->setObjectName(QStringLiteral("about"));
    //: Title of the preferences window
    const QString title = QCoreApplication::translate("LinkShelfPlugin", "Link Shelf Preferences");
    //: Heading above the links that every run adds
    const QString heading =
        QCoreApplication::translate("LinkShelfPlugin", "Every run also adds these links:");
    show(std::make_unique<LinkSetWindow>(
        title, heading, provider->config,
        [provider](const LinkSet& set) {
            provider->config = set;
            provider->save();
        },
        about));
}

bool LinkShelfPlugin::canOpenWindows()
{
    if (m_windowsAvailable) {
        return true;
    }
    Alert alert;
    //: Shown when an edit or configure launch finds no display to open its window on
    alert.messageText = QCoreApplication::translate("LinkShelfPlugin", "The window cannot be opened.");
    //: Informative text of the message shown when there is no display
    alert.informativeText =
        QCoreApplication::translate("LinkShelfPlugin", "The plugin was started without a display.");
    Platform::alertPresenter().runModal(alert);
    Platform::applicationServices().terminate();
    return false;
}

void LinkShelfPlugin::show(std::unique_ptr<LinkSetWindow> window)
{
    window->show();
    m_windows.push_back(std::move(window));
}

} // namespace LinkShelf
