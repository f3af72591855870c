// The Linux backends of the platform seams.
#include "DBusLaunchChannel.h"
#include "TellScriptEngine.h"
#include "VendelHostApplication.h"
#include "XdgUrlOpener.h"

#include "SdBus.h"

#include <VendelSDK/ScriptEngine.h>
#include <VendelSDK/TerminationSignals.h>
#include <VendelSDK/UrlOpener.h>

namespace VendelSDK {

namespace {

// The bus clients block the main thread outside the event loop; their waits let a termination signal
// through, so that it is carried out at once rather than after the call.
void letTerminationSignalsThroughBusWaits()
{
    SdBus::setInterruption({&TerminationSignals::descriptor, &TerminationSignals::deliverPending});
}

} // namespace

// Linux has no system-wide scripting; the tell engine stands in for it. It knows the host, which every
// plugin talks to; a plugin registers the further applications that its own scripts address.
std::unique_ptr<ScriptEngine> makePlatformScriptEngine()
{
    letTerminationSignalsThroughBusWaits();
    auto engine = std::make_unique<TellScriptEngine>();
    engine->registerApplication(QStringLiteral("Vendel"), std::make_unique<VendelHostApplication>());
    return engine;
}

std::unique_ptr<LaunchChannel> makePlatformLaunchChannel()
{
    letTerminationSignalsThroughBusWaits();
    return std::make_unique<DBusLaunchChannel>(SdBus::Bus::session(),
                                               DBusLaunchChannel::handOverTimeoutFromEnvironment());
}

std::unique_ptr<UrlOpener> makePlatformUrlOpener()
{
    return std::make_unique<XdgUrlOpener>();
}

} // namespace VendelSDK
