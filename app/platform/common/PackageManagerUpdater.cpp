// The updater where the system's package manager updates installed software: the check has nothing to do.
#include "Updater.h"

namespace MusicPlugin {

namespace {

class PackageManagerUpdater final : public Updater
{
public:
    void checkForUpdatesInBackground() override {}
};

} // namespace

std::unique_ptr<Updater> makePlatformUpdater()
{
    return std::make_unique<PackageManagerUpdater>();
}

} // namespace MusicPlugin
