// The script-execution seam: compiles and runs one script source synchronously.
#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <variant>

namespace VendelSDK {

// What a failed script reports; each entry may be missing, as with the platform's own engine.
struct ScriptErrorRecord
{
    std::optional<qint64> number;
    std::optional<QString> message;
    std::optional<QString> briefMessage;
    // False when the engine's own error record had keys other than text, so that it could not be read at
    // all; the entries above are then missing. Still a failure.
    bool keyedByText = true;

    friend bool operator==(const ScriptErrorRecord&, const ScriptErrorRecord&) = default;
};

struct ScriptNoResult
{
    friend bool operator==(ScriptNoResult, ScriptNoResult) = default;
};

// Exactly one of: failed (with its record), a result text, or no result.
using ScriptOutcome = std::variant<ScriptErrorRecord, QString, ScriptNoResult>;

class ScriptEngine
{
public:
    virtual ~ScriptEngine() = default;

    // Runs the source to its end on the calling thread; never throws.
    virtual ScriptOutcome execute(const QString& source) = 0;
};

// The engine of the platform this build targets; CMake picks the implementation.
std::unique_ptr<ScriptEngine> makePlatformScriptEngine();

} // namespace VendelSDK
