// The Linux backends of the platform seams.
#include "VendelSDK/ScriptEngine.h"
#include "VendelSDK/UrlOpener.h"
#include "XdgUrlOpener.h"
#include "unsupported/UnavailableScriptEngine.h"

namespace VendelSDK {

// Linux has no script engine of its own; until one speaks to the host and the player, scripts fail
// as "not available" and every caller reports that like any other failed script.
std::unique_ptr<ScriptEngine> makePlatformScriptEngine()
{
    return std::make_unique<UnavailableScriptEngine>();
}

std::unique_ptr<UrlOpener> makePlatformUrlOpener()
{
    return std::make_unique<XdgUrlOpener>();
}

} // namespace VendelSDK
