// A run is one short process: read the record, drive the player, terminate.
#include "RunActionController.h"

#include "LocalConfig.h"
#include "MusicAppController.h"

#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/Platform.h>

#include <QCoreApplication>

namespace MusicPlugin {

using namespace VendelSDK;

void RunActionController::run()
{
    // The provider writes the record back once more when the application terminates.
    const auto provider = LocalConfigProvider<LocalConfig>::create(m_actionID, LocalConfig{});
    if (!provider) {
        //: Running Error
        showRunError(
            QCoreApplication::translate("RunActionController", "Could not read action configuration"));
    } else if (const LocalConfig config = provider->config; config.action == LocalConfig::Action::pause) {
        MusicAppController().runScript(MusicAppController::pauseScript());
    } else if (!config.name) {
        //: Running Error
        showRunError(QCoreApplication::translate("RunActionController", "Playlist could not be read"));
    } else {
        MusicAppController().play(*config.name, config.shouldShuffle);
    }
    Platform::applicationServices().terminate();
}

void RunActionController::showRunError(const QString& message)
{
    const Error error(Platform::mainBundle().identifier(), 0,
                      {{QString::fromLatin1(localizedDescriptionKey), message}});
    Platform::alertPresenter().runModal(Alert::fromError(error));
}

} // namespace MusicPlugin
