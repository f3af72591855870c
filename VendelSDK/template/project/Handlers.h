// The plugin's launch handlers: what a run, an edit and the preferences do.
#pragma once

#include <VendelSDK/PluginController.h>

namespace Plugin {

// Sets the run, edit and configure handlers of `controller`. Each ends the application when it is done.
void installHandlers(VendelSDK::PluginController& controller);

} // namespace Plugin
