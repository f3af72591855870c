// A stand-in for the host in tests: answers its commands from a script and records what the plugin sent.
#pragma once

#include <VendelSDK/ScriptEngine.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace VendelSDK::Testing {

/// Answers the host's scripting commands from a script written by the test, and records every command and
/// every command URL that the plugin sends, so that a plugin's handlers run in a unit test without a host.
///
/// The script is a list of steps, each a command text and its answer, expected in that order (expect());
/// beside it, a table of commands answered whenever they come (allow()). A command that is neither the next
/// step nor in the table fails the running Qt test with both texts, and is answered as a failed script, so
/// that the code under test sees an error rather than a made-up success. Commands are compared as exact
/// texts, four leading spaces included; the expect and allow helpers build them as VendelAPI sends them.
///
/// install() puts the host behind Platform::scriptEngine() and Platform::urlOpener(); the host may be
/// destroyed before the platform lets go of them, which then fail every command.
class ScriptedHost
{
public:
    /// An empty script and table, not installed.
    ScriptedHost();
    ~ScriptedHost();
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;

    /// Makes this host the platform's script engine and URL opener (Platform::setScriptEngine() and
    /// Platform::setUrlOpener()).
    void install();

    /// An answer with a result text.
    static ScriptOutcome text(const QString& result);
    /// An answer without a result, as a command that returns nothing gives.
    static ScriptOutcome nothing();
    /// The answer of a host that could not be asked: a failed script, which the SDK reports as its error 1.
    static ScriptOutcome failure(const QString& message = QStringLiteral("Application isn't running."));

    /// Appends a step: `command` is to come next after the steps before it, and gets `answer`.
    ScriptedHost& expect(const QString& command, ScriptOutcome answer = ScriptNoResult{});
    /// Answers `command` with `answer` whenever it comes, any number of times, outside the order of the
    /// steps; a later allow() of the same command replaces the answer.
    ScriptedHost& allow(const QString& command, ScriptOutcome answer);

    /// Steps for the commands that VendelAPI sends, with the texts built as VendelAPI builds them. The
    /// global ones use the identifier of Platform::mainBundle() at the time of the call. A command that
    /// VendelAPI would refuse to send (an identifier holding a double quote) can never match.
    ScriptedHost& expectGetConfig(const QString& actionID, ScriptOutcome answer);
    /// See expectGetConfig(); `config` is the configuration text before escaping.
    ScriptedHost& expectSetConfig(const QString& config, const QString& actionID,
                                  ScriptOutcome answer = ScriptNoResult{});
    /// See expectGetConfig().
    ScriptedHost& expectGetGlobalConfig(ScriptOutcome answer);
    /// See expectGetConfig(); `config` is the configuration text before escaping.
    ScriptedHost& expectSetGlobalConfig(const QString& config, ScriptOutcome answer = ScriptNoResult{});
    /// See expectGetConfig().
    ScriptedHost& expectIsPluginInstalled(const QString& atPath, ScriptOutcome answer);
    /// See expectGetConfig().
    ScriptedHost& expectInstallPlugin(ScriptOutcome answer = ScriptNoResult{});

    /// Every command text received, in order, whether it matched or not.
    QStringList commands() const;
    /// Every command URL that the plugin opened (Command::send()), in order.
    QStringList commandUrls() const;
    /// One description for each command that differed from the script, in order.
    QStringList mismatches() const;
    /// Steps of the script not reached yet; a test that ends with some left did not send all it should.
    int remaining() const;

private:
    struct State;
    class Engine;
    class Opener;

    std::shared_ptr<State> m_state;
};

} // namespace VendelSDK::Testing
