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

void FakeScriptEngine::registerApplication(const QString& name,
                                           std::unique_ptr<ScriptApplication> application)
{
    registrations.append({name, application != nullptr});
}

} // namespace VendelSDK::Testing
