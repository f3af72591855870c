// The updater seam: the software updater that checks for a newer version of the plugin.
#pragma once

#include <memory>

namespace MusicPlugin {

class Updater
{
public:
    virtual ~Updater() = default;

    // Starts a silent check; what it shows and how often it checks on its own are the updater's settings.
    virtual void checkForUpdatesInBackground() = 0;
};

// The updater of the platform this build targets; CMake picks the implementation. Nothing means the
// platform has none to offer.
std::unique_ptr<Updater> makePlatformUpdater();

} // namespace MusicPlugin
