// The plugin's own bundle on platforms without application bundles: identity compiled in, path from the
// system.
#pragma once

#include "VendelSDK/Bundle.h"

namespace MusicPlugin {

// The running executable's canonical path, with the identifier and information keys of this build.
VendelSDK::Bundle appBundle();

} // namespace MusicPlugin
