// The plugin's process: the application object, the SDK's plugin with this plugin's handlers, the event loop.
#include "Handlers.h"

#include <VendelSDK/Platform.h>
#include <VendelSDK/QtApplicationServices.h>
#include <VendelSDK/StderrAlertPresenter.h>
#include <VendelSDK/TerminationSignals.h>
#include <VendelSDK/Translations.h>
#include <VendelSDK/VendelPlugin.h>

#include <QCoreApplication>

#include <memory>
#include <optional>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    // Without windows, alerts go to standard error; a windowed plugin links VendelSDK::Widgets and uses
    // makePlatformWindowedApplicationServices() and makePlatformWindowedAlertPresenter() instead.
    VendelSDK::Platform::setAlertPresenter(std::make_unique<VendelSDK::StderrAlertPresenter>());
    auto owned = std::make_unique<VendelSDK::QtApplicationServices>();
    VendelSDK::QtApplicationServices& services = *owned;
    VendelSDK::Platform::setApplicationServices(std::move(owned));
    VendelSDK::Translations::install();
    // A signal ends the application as a termination request does, so pending writes reach the host.
    services.terminateOnSignals();

    int status = 0;
    {
        // Started without a launch URL, the plugin offers to install itself into the host.
        VendelSDK::VendelPlugin plugin(
            {.askToInstallPluginIfNotInstalled = true, .alertUserThatPluginMustBeRunByVendelAndQuit = true});
        Plugin::installHandlers(plugin.actionController);
        // The host passes the launch URL as the only argument.
        const QStringList arguments = QCoreApplication::arguments();
        plugin.actionController.handle(arguments.size() > 1 ? std::optional(arguments.at(1)) : std::nullopt);
        services.finishLaunchingWhenLoopStarts();
        status = services.exec();
    }
    const int signal = services.terminatingSignal();
    VendelSDK::Platform::reset();
    if (signal != 0) {
        VendelSDK::TerminationSignals::endAs(signal);
    }
    return status;
}
