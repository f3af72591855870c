// The one plugin object of a plugin application: its start-up configuration and its controller.
#pragma once

#include <VendelSDK/Alert.h>
#include <VendelSDK/Export.h>
#include <VendelSDK/PluginController.h>

#include <QObject>

namespace VendelSDK {

/// How the plugin behaves when it was started without a launch URL (VendelPlugin::Config).
struct VENDELSDK_EXPORT VendelPluginConfig
{
    /// Offer installation when started by hand and not installed; also gates the whole start-up check.
    bool askToInstallPluginIfNotInstalled = false;
    /// When started by hand while installed, tell the user to start it from the host, and quit.
    bool alertUserThatPluginMustBeRunByVendelAndQuit = false;
};

/// The plugin: holds the launch handlers (actionController) and, when launching has finished without a
/// launch URL that ran one, runs the start-up check. Make one in main(), after the application object and
/// before its event loop.
class VENDELSDK_EXPORT VendelPlugin : public QObject
{
    Q_OBJECT

public:
    /// The start-up behaviour.
    using Config = VendelPluginConfig;

    /// Starts observing did-finish-launching, so it must be made before launching finishes.
    explicit VendelPlugin(Config config = {});

    /// The start-up behaviour, read when launching has finished.
    Config config;
    /// The launch handlers; set them before launching finishes.
    PluginController actionController;

    /// The start-up check: acts only when no launch URL made a handler run.
    void applicationDidFinishLaunching();

private:
    void handleLaunchWithoutAction();
    static Alert mustBeRunAlert();
};

} // namespace VendelSDK
