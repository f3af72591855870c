// Where the system runs the scripts itself, it finds "Music" by its name: the plugin supplies nothing.
#include "MusicScriptApplication.h"

namespace MusicPlugin {

std::unique_ptr<VendelSDK::ScriptApplication> makePlatformMusicApplication()
{
    return nullptr;
}

} // namespace MusicPlugin
