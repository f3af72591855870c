// Fails every script with a record that says why, so callers show their usual failure.
#include "UnavailableScriptEngine.h"

namespace VendelSDK {

ScriptOutcome UnavailableScriptEngine::execute(const QString&)
{
    return ScriptErrorRecord{std::nullopt,
                             QStringLiteral("Script execution is not available on this platform."),
                             QStringLiteral("Script execution is not available.")};
}

} // namespace VendelSDK
