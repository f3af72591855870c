// Records sources and answers as scripted.
#include "FakeScriptEngine.h"

namespace VendelSDK::Testing {

ScriptOutcome FakeScriptEngine::execute(const QString& source)
{
    sources.append(source);
    if (responder) {
        return responder(source);
    }
    if (!answers.isEmpty()) {
        return answers.takeFirst();
    }
    return fallback;
}

} // namespace VendelSDK::Testing
