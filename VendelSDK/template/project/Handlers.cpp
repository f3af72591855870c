// The plugin's launch handlers, on the SDK's public interface only.
#include "Handlers.h"

#include "ActionSettings.h"

#include <VendelSDK/Alert.h>
#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/Platform.h>

#include <cstdio>

namespace Plugin {

namespace {

void quit()
{
    VendelSDK::Platform::applicationServices().terminate();
}

// A run reads the action's settings from the host and prints its message. When the host cannot be asked,
// the provider has already shown the SDK's alert.
void run(const QString& actionID)
{
    if (const auto provider =
            VendelSDK::LocalConfigProvider<ActionSettings>::create(actionID, ActionSettings{})) {
        std::printf("%s\n", provider->config.message.toUtf8().constData());
        std::fflush(stdout);
    }
    quit();
}

// Stands in for an editor window: it changes the settings and saves them. The provider writes them a second
// after the last save, and once more when the application ends, so quitting at once loses nothing.
void edit(const QString& actionID)
{
    if (const auto provider =
            VendelSDK::LocalConfigProvider<ActionSettings>::create(actionID, ActionSettings{})) {
        provider->config.timesEdited += 1;
        provider->save();
        VendelSDK::Alert alert;
        alert.messageText = QStringLiteral("Action edited");
        alert.informativeText =
            QStringLiteral("This action has been edited %1 times.").arg(provider->config.timesEdited);
        VendelSDK::Platform::alertPresenter().runModal(alert);
    }
    quit();
}

// The preferences: here only an About message with the name and version that the build gave the plugin.
void configure()
{
    const VendelSDK::Bundle& bundle = VendelSDK::Platform::mainBundle();
    VendelSDK::Alert alert;
    alert.messageText = bundle.infoText(VendelSDK::Bundle::nameKey);
    alert.informativeText =
        QStringLiteral("Version %1").arg(bundle.infoText(VendelSDK::Bundle::shortVersionKey));
    VendelSDK::Platform::alertPresenter().runModal(alert);
    quit();
}

} // namespace

void installHandlers(VendelSDK::PluginController& controller)
{
    controller.onRun = run;
    controller.onEdit = edit;
    controller.onConfigure = configure;
}

} // namespace Plugin
