// Asks the host to install this plugin and tells the user when it could not.
#pragma once

#include <VendelSDK/Export.h>

namespace VendelSDK {

class VENDELSDK_EXPORT InstallPluginController
{
public:
    InstallPluginController() = default;

    // Sends the install request; on failure shows the installation alert and terminates.
    static void install();
    // Installs, then terminates whatever the outcome.
    void installAndQuit();
};

} // namespace VendelSDK
