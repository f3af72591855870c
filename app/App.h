// The music plugin's one application object: it owns the plugin and counts the windows that are shown.
#pragma once

#include <VendelSDK/VendelPlugin.h>

namespace MusicPlugin {

class App
{
public:
    // Made on first use, exactly once; it must be made before launching finishes, so that the plugin sees
    // did-finish-launching.
    static App& shared();

    VendelSDK::VendelPlugin& vendelPlugin() { return m_vendelPlugin; }

    // The application's windows that are visible or miniaturised. A window closing decides to end the
    // application when this is exactly 1: itself.
    static int visibleWindowsCount();

private:
    App();

    VendelSDK::VendelPlugin m_vendelPlugin;
};

} // namespace MusicPlugin
