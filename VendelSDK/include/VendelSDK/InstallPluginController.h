// Asks the host to install this plugin and tells the user when it could not.
#pragma once

#include <VendelSDK/Export.h>

namespace VendelSDK {

/// Installs the plugin into the host, as the start-up check does when the user agrees.
class VENDELSDK_EXPORT InstallPluginController
{
public:
    InstallPluginController() = default;

    /// Sends the install request; on failure shows the installation alert and terminates.
    static void install();
    /// Installs, then terminates whatever the outcome.
    void installAndQuit();
};

} // namespace VendelSDK
