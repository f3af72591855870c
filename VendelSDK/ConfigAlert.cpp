// Builds and shows the configuration alert through the alert seam.
#include <VendelSDK/ConfigAlert.h>

#include <VendelSDK/Platform.h>

#include <QCoreApplication>

namespace VendelSDK {

void showConfigAlert(const Error& error, bool read)
{
    Alert alert;
    if (read) {
        //: Alert title
        alert.messageText = QCoreApplication::translate("VendelSDK", "Could not read action data in Vendel.");
    } else {
        //: Alert title
        alert.messageText = QCoreApplication::translate("VendelSDK", "Could not save action data in Vendel.");
    }
    alert.informativeText = error.localizedDescription();
    //: OK button title
    alert.buttons = {QCoreApplication::translate("VendelSDK", "OK")};
    Platform::alertPresenter().runModal(alert);
}

} // namespace VendelSDK
