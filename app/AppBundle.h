// The plugin's own bundle: the platform's, with this build's identity where the platform's has none.
#pragma once

#include <VendelSDK/Bundle.h>

namespace MusicPlugin {

// The platform's main bundle; a bare executable's is given the identifier and information keys of this
// build.
VendelSDK::Bundle appBundle();

} // namespace MusicPlugin
