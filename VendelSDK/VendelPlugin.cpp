// Creates the plugin's controller and runs the start-up check when launching finishes.
#include <VendelSDK/VendelPlugin.h>

#include <VendelSDK/Error.h>
#include <VendelSDK/InstallPluginController.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include <QCoreApplication>

namespace VendelSDK {

VendelPlugin::VendelPlugin(Config pluginConfig) : config(pluginConfig)
{
    connect(&Platform::applicationServices(), &ApplicationServices::didFinishLaunching, this,
            &VendelPlugin::applicationDidFinishLaunching);
}

void VendelPlugin::applicationDidFinishLaunching()
{
    // With installation not offered, the must-be-run alert is not shown either, whatever its flag says.
    if (config.askToInstallPluginIfNotInstalled) {
        handleLaunchWithoutAction();
    }
}

void VendelPlugin::handleLaunchWithoutAction()
{
    if (actionController.didPerformAction) {
        return;
    }

    bool installed = false;
    try {
        installed = VendelAPI().isPluginInstalled(Platform::mainBundle().path());
    } catch (const Error& error) {
        Platform::alertPresenter().runModal(Alert::fromError(error));
        Platform::applicationServices().terminate();
        return;
    }

    if (installed) {
        if (!config.alertUserThatPluginMustBeRunByVendelAndQuit) {
            return;
        }
        Platform::alertPresenter().runModal(mustBeRunAlert());
        Platform::applicationServices().terminate();
        return;
    }
    if (!config.askToInstallPluginIfNotInstalled) {
        return;
    }
    InstallPluginController::install();
    Platform::applicationServices().terminate();
}

Alert VendelPlugin::mustBeRunAlert()
{
    Alert alert;
    //: Information that plugin must be run by Vendel
    alert.messageText = QCoreApplication::translate("VendelSDK", "This plugin must be run by Vendel app.");
    //: OK button
    alert.buttons = {QCoreApplication::translate("VendelSDK", "OK")};
    return alert;
}

} // namespace VendelSDK
