// The plugin's process: the application object, the single instance, and the launch URL, which is dispatched
// before launching finishes so that the start-up check knows a handler ran.
#include "LinkShelfPlugin.h"

#include <VendelSDK/LaunchChannel.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/QtApplicationServices.h>
#include <VendelSDK/StderrAlertPresenter.h>
#include <VendelSDK/TerminationSignals.h>
#include <VendelSDK/VendelPlugin.h>
#include <VendelSDK/WindowedBackends.h>

#include <QApplication>

#include <cstdio>
#include <cstring>

using namespace VendelSDK;

namespace {

bool displayAvailable()
{
    // A platform chosen explicitly (offscreen, say) counts as a display.
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("DISPLAY");
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--version") == 0) {
        const Bundle bundle = makePlatformMainBundle();
        std::printf("vendel-link-shelf %s\n", qPrintable(bundle.infoText(Bundle::shortVersionKey)));
        return 0;
    }
    // The host passes the launch URL as the only argument.
    const std::optional<QString> url =
        argc > 1 ? std::optional(QString::fromLocal8Bit(argv[1])) : std::nullopt;

    // With a display the application is windowed, alerts included; without one, alerts go to standard error.
    const bool windowed = displayAvailable();
    std::unique_ptr<QCoreApplication> app;
    const StderrAlertPresenter* headlessAlerts = nullptr;
    if (windowed) {
        app = std::make_unique<QApplication>(argc, argv);
        Platform::setApplicationServices(makePlatformWindowedApplicationServices());
        Platform::setAlertPresenter(makePlatformWindowedAlertPresenter());
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
        auto presenter = std::make_unique<StderrAlertPresenter>();
        headlessAlerts = presenter.get();
        Platform::setAlertPresenter(std::move(presenter));
        Platform::setApplicationServices(std::make_unique<QtApplicationServices>());
    }
    // A signal ends the plugin as a quit does, so an edit not yet written reaches the host first.
    auto* services = qobject_cast<QtApplicationServices*>(&Platform::applicationServices());
    if (services != nullptr) {
        services->terminateOnSignals();
    }
    const Bundle& bundle = Platform::mainBundle();
    QCoreApplication::setApplicationName(bundle.infoText(Bundle::nameKey));
    QCoreApplication::setApplicationVersion(bundle.infoText(Bundle::shortVersionKey));

    LinkShelf::LinkShelfPlugin* plugin = nullptr;
    const auto channel = makePlatformLaunchChannel();
    const auto role =
        channel->claim(bundle.identifier(), url, [&plugin](const std::optional<QString>& later) {
            return plugin != nullptr && plugin->acceptLaunch(later);
        });
    TerminationSignals::deliverPending();
    if (role == LaunchChannel::Role::forwarded) {
        return 0;
    }

    int status = 0;
    {
        // Started by hand, it installs itself into the host, or says that the host must start it.
        VendelPlugin vendelPlugin(
            {.askToInstallPluginIfNotInstalled = true, .alertUserThatPluginMustBeRunByVendelAndQuit = true});
        LinkShelf::LinkShelfPlugin linkShelf(vendelPlugin, windowed);
        plugin = &linkShelf;
        linkShelf.handleLaunchURL(url);
        if (services != nullptr) {
            services->finishLaunchingWhenLoopStarts();
            status = services->exec();
        } else {
            // A platform whose system says when launching has finished.
            status = app->exec();
        }
        plugin = nullptr;
    }
    const int signal = services != nullptr ? services->terminatingSignal() : 0;
    const bool alertShown = headlessAlerts != nullptr && headlessAlerts->shownCount() > 0;
    // Backends go before the application object that some of them depend on.
    Platform::reset();
    if (signal != 0) {
        TerminationSignals::endAs(signal);
    }
    return alertShown ? 1 : status;
}
