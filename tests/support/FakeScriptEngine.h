// A script engine for unit tests: records every source and answers from a script of outcomes.
#pragma once

#include <VendelSDK/ScriptEngine.h>

#include <QList>
#include <QStringList>

#include <functional>

namespace VendelSDK::Testing {

class FakeScriptEngine final : public ScriptEngine
{
public:
    ScriptOutcome execute(const QString& source) override;
    // Records the name; the fake answers every script itself.
    void registerApplication(const QString& name, std::unique_ptr<ScriptApplication> application) override;

    // Sources in the order they were executed.
    QStringList sources;
    // Names of registered applications in the order of registration, and whether each came with one.
    QList<std::pair<QString, bool>> registrations;
    // Answers used in order; when they run out, `fallback` answers.
    QList<ScriptOutcome> answers;
    ScriptOutcome fallback = ScriptNoResult{};
    // When set, answers instead of the queue, for engines whose answer depends on the source.
    std::function<ScriptOutcome(const QString&)> responder;
};

} // namespace VendelSDK::Testing
