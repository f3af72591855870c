// The updater of macOS: the updater framework's standard controller, one for the process, started once.
#include "FoundationErrors.h"

#include "Updater.h"

#include <VendelSDK/FatalError.h>

#import <Sparkle/Sparkle.h>

namespace MusicPlugin {

namespace {

// The feed, the public key and whether to check on its own are the bundle's settings, never the code's.
class SparkleUpdater final : public Updater
{
public:
    SparkleUpdater()
    {
        // Made without starting, so that a failure to start is seen here rather than shown by the framework.
        m_controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:NO
                                                                     updaterDelegate:nil
                                                                  userDriverDelegate:nil];
        if (m_controller == nil) {
            VendelSDK::fatalError(QStringLiteral("The software updater could not be made."),
                                  "app/platform/macos/SparkleUpdater", __LINE__);
        }
        NSError* error = nil;
        if (![m_controller.updater startUpdater:&error]) {
            const QString reason = error != nil
                                       ? frameworkError(toFrameworkErrorFacts(error)).localizedDescription()
                                       : QString();
            VendelSDK::fatalError(QStringLiteral("The software updater could not be started: ") + reason,
                                  "app/platform/macos/SparkleUpdater", __LINE__);
        }
    }

    void checkForUpdatesInBackground() override { [m_controller.updater checkForUpdatesInBackground]; }

private:
    SPUStandardUpdaterController* m_controller = nil;
};

} // namespace

std::unique_ptr<Updater> makePlatformUpdater()
{
    return std::make_unique<SparkleUpdater>();
}

} // namespace MusicPlugin
