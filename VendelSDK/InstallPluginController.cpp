// The host identifies the caller itself, so the request carries no path and no identifier.
#include <VendelSDK/InstallPluginController.h>

#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include <QCoreApplication>

namespace VendelSDK {

void InstallPluginController::install()
{
    try {
        VendelAPI().installPlugin();
    } catch (const Error&) {
        // The script error means nothing to the user; the remedy does.
        Alert alert;
        //: Can't communicate with Vendel message during plugin installation.
        alert.messageText = QCoreApplication::translate("VendelSDK", "Plugin cannot be installed.");
        //: Can't communicate with Vendel informative text of message during plugin installation.
        alert.informativeText = QCoreApplication::translate(
            "VendelSDK",
            "Please make sure you have the latest version of Vendel installed. If problem occurs "
            "again, go to Preferences -> Plugins and install the plugin there.");
        Platform::alertPresenter().runModal(alert);
        Platform::applicationServices().terminate();
    }
}

void InstallPluginController::installAndQuit()
{
    install();
    Platform::applicationServices().terminate();
}

} // namespace VendelSDK
