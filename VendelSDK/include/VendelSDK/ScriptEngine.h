// The script-execution seam: runs one script synchronously, and the applications that scripts address.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <variant>

namespace VendelSDK {

/// What a failed script reports; each entry may be missing, as with the platform's own engine.
struct VENDELSDK_EXPORT ScriptErrorRecord
{
    /// The error number.
    std::optional<qint64> number;
    /// The full message.
    std::optional<QString> message;
    /// The short message.
    std::optional<QString> briefMessage;
    /// False when the engine's own error record had keys other than text, so that it could not be read at
    /// all; the entries above are then missing. Still a failure.
    bool keyedByText = true;

    /// Equal when every entry is.
    friend bool operator==(const ScriptErrorRecord&, const ScriptErrorRecord&) = default;
};

/// The outcome of a script that succeeded without a result.
struct VENDELSDK_EXPORT ScriptNoResult
{
    /// Every no-result is the same.
    friend bool operator==(ScriptNoResult, ScriptNoResult) = default;
};

/// Exactly one of: failed (with its record), a result text, or no result.
using ScriptOutcome = std::variant<ScriptErrorRecord, QString, ScriptNoResult>;

/// An application that scripts address by name, for engines that do not find applications by themselves: the
/// commands it understands and how it answers them.
class VENDELSDK_EXPORT ScriptApplication
{
public:
    virtual ~ScriptApplication() = default;

    /// The commands the application understands. Each entry is a pattern of words and placeholders:
    /// "%s" takes a string literal and "%b" takes true or false, as in "play playlist %s".
    virtual QStringList dictionary() const = 0;
    /// Carries out the dictionary entry at `entry` with its placeholders' values, in order. The engine has
    /// matched the command against the dictionary before it calls this.
    virtual ScriptOutcome perform(qsizetype entry, const QStringList& arguments) = 0;
};

/// Runs one-line scripts, through which the SDK talks to the host (VendelAPI). Platform::scriptEngine()
/// holds the one in use; a test installs VendelSDK::Testing::ScriptedHost instead.
class VENDELSDK_EXPORT ScriptEngine
{
public:
    virtual ~ScriptEngine() = default;

    /// Runs the source to its end on the calling thread; never throws.
    virtual ScriptOutcome execute(const QString& source) = 0;

    /// Makes `application` the one that scripts addressed to `name` reach, in place of any registered
    /// before; a null application makes the name unknown again. The engine of Linux knows the host, "Vendel",
    /// from the start, and nothing else until a plugin registers it. Where the system itself finds every
    /// application by name, as AppleScript does, the engine has no use for it and drops it, so a plugin
    /// registers the applications its scripts address on every platform without asking which one it is on.
    virtual void registerApplication(const QString& name, std::unique_ptr<ScriptApplication> application)
    {
        Q_UNUSED(name);
        Q_UNUSED(application);
    }
};

/// The engine of the platform this build targets; CMake picks the implementation.
VENDELSDK_EXPORT std::unique_ptr<ScriptEngine> makePlatformScriptEngine();

} // namespace VendelSDK
