// Runs one script source through the platform's engine and maps its outcome to the SDK's terms.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <optional>

namespace VendelSDK {

/// Runs a script through Platform::scriptEngine() and turns its failure into an SDK Error.
class VENDELSDK_EXPORT AppleScriptRunner
{
public:
    AppleScriptRunner() = delete;

    /// The result text, or nothing when the script gave none; throws the SDK error 1 when it failed.
    static std::optional<QString> run(const QString& source);
};

} // namespace VendelSDK
