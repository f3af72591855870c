// The providers are made for the run only: their write at termination gives the host back what it gave.
#include "RunController.h"

#include "LinkSet.h"

#include <VendelSDK/Alert.h>
#include <VendelSDK/Command.h>
#include <VendelSDK/GlobalConfigProvider.h>
#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/Platform.h>

#include <QCoreApplication>

namespace LinkShelf {

using namespace VendelSDK;

RunController::RunController(QString actionID) : m_actionID(std::move(actionID)) {}

void RunController::run()
{
    // Each provider has told the user already when the host could not be asked.
    const auto action = LocalConfigProvider<LinkSet>::create(m_actionID, LinkSet{});
    const auto everyAction = action ? GlobalConfigProvider<LinkSet>::create() : nullptr;
    if (action && everyAction) {
        const QList<Resource> resources = LinkSet::merged(action->config, everyAction->config);
        if (resources.isEmpty()) {
            // The host would add nothing; the user learns why the run did nothing.
            Alert alert;
            //: Shown when an action is run that has no links, and no links are set for every action
            alert.messageText = QCoreApplication::translate("RunController", "There are no links to add.");
            //: Informative text of the message shown when a run has no links
            alert.informativeText = QCoreApplication::translate(
                "RunController",
                "Add links to the action in its editor, or to every action in the preferences.");
            Platform::alertPresenter().runModal(alert);
        } else {
            try {
                Command(resources).send();
            } catch (const Error& error) {
                Platform::alertPresenter().runModal(Alert::fromError(error));
            }
        }
    }
    Platform::applicationServices().terminate();
}

} // namespace LinkShelf
