// A child process for the fatal stop of a plugin without a bundle identifier: asks for the global
// configuration.
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include "FakeScriptEngine.h"

int main()
{
    VendelSDK::Platform::setScriptEngine(std::make_unique<VendelSDK::Testing::FakeScriptEngine>());
    VendelSDK::Platform::setMainBundle(VendelSDK::Bundle(QStringLiteral("/usr/bin/plugin"), QString(), {}));
    VendelSDK::VendelAPI().getGlobalConfig();
    // Reaching this line means the missing identifier went unnoticed.
    return 3;
}
