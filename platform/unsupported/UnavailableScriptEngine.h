// A script engine for platforms that have none: every script fails as "not available".
#pragma once

#include <VendelSDK/ScriptEngine.h>

namespace VendelSDK {

class UnavailableScriptEngine final : public ScriptEngine
{
public:
    ScriptOutcome execute(const QString& source) override;
};

} // namespace VendelSDK
