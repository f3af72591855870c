// The Linux backends of the platform seams.
#include "DBusLaunchChannel.h"
#include "MusicApplication.h"
#include "TellScriptEngine.h"
#include "VendelHostApplication.h"
#include "XdgUrlOpener.h"

#include "VendelSDK/ScriptEngine.h"
#include "VendelSDK/UrlOpener.h"

namespace VendelSDK {

// Linux has no system-wide scripting; the tell engine stands in for it, addressing the applications
// registered here by the names the scripts use.
std::unique_ptr<ScriptEngine> makePlatformScriptEngine()
{
    auto engine = std::make_unique<TellScriptEngine>();
    engine->registerApplication(QStringLiteral("Vendel"), std::make_unique<VendelHostApplication>());
    engine->registerApplication(QStringLiteral("Music"), makeMusicApplication());
    return engine;
}

std::unique_ptr<LaunchChannel> makePlatformLaunchChannel()
{
    return std::make_unique<DBusLaunchChannel>();
}

std::unique_ptr<UrlOpener> makePlatformUrlOpener()
{
    return std::make_unique<XdgUrlOpener>();
}

} // namespace VendelSDK
