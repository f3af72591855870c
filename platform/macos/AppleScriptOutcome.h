// What one AppleScript execution reported, turned into the script seam's outcome.
#pragma once

#include "DictionaryEntries.h"

#include <VendelSDK/ScriptEngine.h>

#include <QVariantMap>

#include <optional>

namespace VendelSDK {

// The keys of an execution's error dictionary, as Foundation names them.
inline constexpr auto appleScriptErrorNumberKey = "NSAppleScriptErrorNumber";
inline constexpr auto appleScriptErrorMessageKey = "NSAppleScriptErrorMessage";
inline constexpr auto appleScriptErrorBriefMessageKey = "NSAppleScriptErrorBriefMessage";

// The facts of one execution, as the script object reported them.
struct AppleScriptExecution
{
    // False when the source could not be made into a script object; nothing ran then.
    bool scriptCreated = false;
    // The error dictionary's entries, present exactly when execution filled it.
    std::optional<DictionaryEntries> errorInfo;
    // The result descriptor's string value; absent when there was no descriptor or it has no text.
    std::optional<QString> resultText;
};

// A filled error dictionary is a failure, whatever else came back, and one with a key that is not text is a
// failure that cannot be read; then a result text, even an empty one; anything else is no result.
ScriptOutcome appleScriptOutcome(const AppleScriptExecution& execution);

// The record of a filled error dictionary: the number only when it is an integer, each text only when it
// is text.
ScriptErrorRecord appleScriptErrorRecord(const QVariantMap& errorInfo);

} // namespace VendelSDK
