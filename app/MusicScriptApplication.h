// The application "Music" that the player's scripts address, where the plugin has to supply it.
#pragma once

#include <VendelSDK/ScriptEngine.h>

#include <memory>

namespace MusicPlugin {

// "Music" as the platform's script engine needs the plugin to supply it; CMake picks the implementation.
// On Linux it is the user's music player (MPD, else an MPRIS player; see
// app/platform/linux/MusicApplication.h). Null where the system's own Music application answers the scripts
// (macOS), or where no script can run.
std::unique_ptr<VendelSDK::ScriptApplication> makePlatformMusicApplication();

} // namespace MusicPlugin
