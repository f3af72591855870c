// An application without its updater cannot be kept current, so a missing one stops the process.
#include "UpdateController.h"

#include <VendelSDK/FatalError.h>

namespace MusicPlugin {

UpdateController::UpdateController() : m_updater(makePlatformUpdater())
{
    if (!m_updater) {
        VendelSDK::fatalError(QStringLiteral("The platform offers no software updater."),
                              "app/UpdateController", __LINE__);
    }
}

UpdateController& UpdateController::shared()
{
    static UpdateController instance;
    return instance;
}

} // namespace MusicPlugin
