// The updater of macOS: the updater framework's standard controller, one for the process, started once.
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
        // Started by the framework: a start that fails (a malformed key, no feed in the bundle) is its to
        // report, as a failed check is, and the launch goes on. Only a missing updater stops the process.
        m_controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                     updaterDelegate:nil
                                                                  userDriverDelegate:nil];
        if (m_controller == nil) {
            VendelSDK::fatalError(QStringLiteral("The software updater could not be made."),
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
