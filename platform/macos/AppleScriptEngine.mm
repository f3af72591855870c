// Gathers what the system's script object reports; what that means is decided in plain C++.
#include "AppleScriptEngine.h"

#include "AppleScriptOutcome.h"
#include "FoundationConversions.h"

namespace VendelSDK {

ScriptOutcome AppleScriptEngine::execute(const QString& source)
{
    @autoreleasepool {
        AppleScriptExecution execution;
        NSAppleScript* script = [[NSAppleScript alloc] initWithSource:toNSString(source)];
        if (script == nil) {
            return appleScriptOutcome(execution);
        }
        execution.scriptCreated = true;
        NSDictionary<NSString*, id>* errorInfo = nil;
        NSAppleEventDescriptor* result = [script executeAndReturnError:&errorInfo];
        if (errorInfo != nil) {
            execution.errorInfo = toDictionaryEntries(errorInfo);
        }
        if (result != nil) {
            execution.resultText = toOptionalQString(result.stringValue);
        }
        return appleScriptOutcome(execution);
    }
}

} // namespace VendelSDK
