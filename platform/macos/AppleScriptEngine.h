// The script engine of macOS: AppleScript, compiled and run by the system on the calling (main) thread.
#pragma once

#include <VendelSDK/ScriptEngine.h>

namespace VendelSDK {

class AppleScriptEngine final : public ScriptEngine
{
public:
    // The host and Music are addressed by name in the sources themselves; the system asks the user once
    // for permission to send them events, and a refusal fails the script like any other error (-1743).
    ScriptOutcome execute(const QString& source) override;
};

} // namespace VendelSDK
