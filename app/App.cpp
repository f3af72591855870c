// Started by hand, the plugin offers installation or explains that the host must start it.
#include "App.h"

#include <VendelSDK/Platform.h>

namespace MusicPlugin {

namespace {

VendelSDK::VendelPlugin::Config pluginConfig()
{
    VendelSDK::VendelPlugin::Config config;
    config.askToInstallPluginIfNotInstalled = true;
    config.alertUserThatPluginMustBeRunByVendelAndQuit = true;
    return config;
}

} // namespace

App::App() : m_vendelPlugin(pluginConfig()) {}

App& App::shared()
{
    static App instance;
    return instance;
}

int App::visibleWindowsCount()
{
    int count = 0;
    for (const VendelSDK::WindowState& window : VendelSDK::Platform::applicationServices().windows()) {
        if (window.visible || window.miniaturised) {
            ++count;
        }
    }
    return count;
}

} // namespace MusicPlugin
