// The Linux backends of the platform seams.
#include "DBusLaunchChannel.h"
#include "TellScriptEngine.h"
#include "VendelHostApplication.h"
#include "XdgUrlOpener.h"

#include <VendelSDK/ScriptEngine.h>
#include <VendelSDK/UrlOpener.h>

namespace VendelSDK {

// Linux has no system-wide scripting; the tell engine stands in for it. It knows the host, which every
// plugin talks to; a plugin registers the further applications that its own scripts address.
std::unique_ptr<ScriptEngine> makePlatformScriptEngine()
{
    auto engine = std::make_unique<TellScriptEngine>();
    engine->registerApplication(QStringLiteral("Vendel"), std::make_unique<VendelHostApplication>());
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
