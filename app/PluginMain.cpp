// The plugin's process: the application object, the single instance, and the launch URL, which is dispatched
// before launching finishes so that the start-up check knows a handler ran.
#include "PluginMain.h"

#include "AppDelegate.h"
#include "CommandLine.h"
#include "UiModule.h"

#include <VendelSDK/LaunchChannel.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/QtApplicationServices.h>
#include <VendelSDK/StderrAlertPresenter.h>
#include <VendelSDK/TerminationSignals.h>
#include <VendelSDK/Translations.h>

#include <cstdio>

namespace MusicPlugin {

using namespace VendelSDK;

namespace {

// The executable's name, which also names the application's catalogue.
constexpr auto programName = "vendel-music-plugin";

void print(std::FILE* stream, const QString& text)
{
    std::fputs(text.toUtf8().constData(), stream);
}

} // namespace

int pluginMain(int argc, char* argv[])
{
    // Options are answered before anything else starts: no display, no bus, no host.
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const CommandLine commandLine = CommandLine::parse(arguments);
    const QString program = QString::fromLatin1(programName);
    switch (commandLine.request) {
    case CommandLine::Request::help:
        print(stdout, CommandLine::help(program));
        return 0;
    case CommandLine::Request::version: {
        // The identity that the build compiled into the executable.
        const VendelSDK::Bundle bundle = makePlatformMainBundle();
        print(stdout, CommandLine::version(program, bundle.infoText(VendelSDK::Bundle::shortVersionKey),
                                           bundle.infoText(VendelSDK::Bundle::versionKey)));
        return 0;
    }
    case CommandLine::Request::usageError:
        print(stderr, QStringLiteral("%1: %2\n%3Try '%1 --help'.\n")
                          .arg(program, commandLine.error, CommandLine::usage(program)));
        return CommandLine::usageErrorStatus;
    case CommandLine::Request::launch:
        break;
    }

    // With a display the whole application is windowed, alerts included; without one it stays at the
    // core level, and alerts go to standard error.
    std::unique_ptr<QCoreApplication> app;
    if (UiModule::displayAvailable()) {
        QString error;
        app = UiModule::createApplication(argc, argv, error);
        if (!app) {
            std::fprintf(stderr, "The windows are not available (%s); going on without them.\n",
                         error.toLocal8Bit().constData());
        }
    }
    const StderrAlertPresenter* headlessAlerts = nullptr;
    if (!app) {
        app = std::make_unique<QCoreApplication>(argc, argv);
        auto presenter = std::make_unique<StderrAlertPresenter>();
        headlessAlerts = presenter.get();
        Platform::setAlertPresenter(std::move(presenter));
        Platform::setApplicationServices(std::make_unique<QtApplicationServices>());
    }
    // Every text from here on is looked up in the user's language, when the plugin ships it.
    Translations::install(QString::fromLatin1(programName));
    // A desktop session that ends, a terminal closed, or a service manager stopping the plugin sends a
    // signal; it ends the application as a termination request does, so a pending change reaches the host.
    auto* services = qobject_cast<QtApplicationServices*>(&Platform::applicationServices());
    if (services != nullptr) {
        services->terminateOnSignals();
    }
    const Bundle& bundle = Platform::mainBundle();
    QCoreApplication::setApplicationName(bundle.infoText(Bundle::nameKey));
    QCoreApplication::setApplicationVersion(bundle.infoText(Bundle::shortVersionKey));

    // The host passes the launch URL as the only argument.
    const std::optional<QString> url = commandLine.url;

    AppDelegate* delegate = nullptr;
    const auto channel = makePlatformLaunchChannel();
    const auto role =
        channel->claim(bundle.identifier(), url, [&delegate](const std::optional<QString>& later) {
            return delegate != nullptr && delegate->acceptLaunch(later);
        });
    // A termination signal ends the launch where it waits for the running instance; one that came as that
    // wait ended ends it here, before it performs its URL or asks the host for anything.
    TerminationSignals::deliverPending();
    if (role == LaunchChannel::Role::forwarded) {
        return 0;
    }

    int status = 0;
    {
        AppDelegate appDelegate;
        delegate = &appDelegate;
        appDelegate.handleGetURLEvent(url);
        if (services != nullptr) {
            services->finishLaunchingWhenLoopStarts();
            status = services->exec();
        } else {
            status = app->exec();
        }
        delegate = nullptr;
    }
    const bool alertShown = headlessAlerts != nullptr && headlessAlerts->shownCount() > 0;
    const int signal = services != nullptr ? services->terminatingSignal() : 0;
    // Backends go before the application object that some of them depend on.
    Platform::reset();
    if (signal != 0) {
        // The hooks have run; the exit status still tells the sender which signal ended the plugin.
        TerminationSignals::endAs(signal);
    }
    return alertShown ? 1 : status;
}

} // namespace MusicPlugin
