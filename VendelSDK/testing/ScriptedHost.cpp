// Matches each command against the script; a mismatch fails the Qt test that is running, where one is.
#include <VendelSDK/Testing/ScriptedHost.h>

#include <VendelSDK/Platform.h>
#include <VendelSDK/UrlOpener.h>
#include <VendelSDK/VendelAPI.h>

#include <QHash>
#include <QTest>

#include <utility>

namespace VendelSDK::Testing {

struct ScriptedHost::State
{
    // False once the host is gone: the platform's engine and opener may outlive it.
    bool alive = true;
    struct Step
    {
        QString command;
        ScriptOutcome answer;
    };

    QList<Step> steps;
    QHash<QString, ScriptOutcome> table;
    QStringList commands;
    QStringList urls;
    QStringList mismatches;

    ScriptOutcome answer(const QString& command)
    {
        commands.append(command);
        if (!alive) {
            return failure();
        }
        if (!steps.isEmpty() && steps.constFirst().command == command) {
            return steps.takeFirst().answer;
        }
        const auto allowed = table.constFind(command);
        if (allowed != table.constEnd()) {
            return *allowed;
        }
        const QString expected = steps.isEmpty() ? QStringLiteral("no more commands")
                                                 : QStringLiteral("\"%1\"").arg(steps.constFirst().command);
        mismatch(QStringLiteral("the host got \"%1\" where the script expected %2").arg(command, expected));
        return failure();
    }

    void mismatch(const QString& description)
    {
        mismatches.append(description);
        // One failure per test function is enough to fail it, and QTest reports the first one.
        if (QTest::currentTestFunction() != nullptr && !QTest::currentTestFailed()) {
            QTest::qFail(qPrintable(description), __FILE__, __LINE__);
        } else {
            qWarning("ScriptedHost: %s", qPrintable(description));
        }
    }
};

class ScriptedHost::Engine final : public ScriptEngine
{
public:
    explicit Engine(std::shared_ptr<State> state) : m_state(std::move(state)) {}

    ScriptOutcome execute(const QString& source) override { return m_state->answer(source); }

private:
    std::shared_ptr<State> m_state;
};

class ScriptedHost::Opener final : public UrlOpener
{
public:
    explicit Opener(std::shared_ptr<State> state) : m_state(std::move(state)) {}

    void open(const QString& url) override { m_state->urls.append(url); }

private:
    std::shared_ptr<State> m_state;
};

namespace {

// A text that no command equals, for commands that VendelAPI would not send.
QString orUnsendable(const std::optional<QString>& command)
{
    return command.value_or(QStringLiteral("<a command that cannot be sent>"));
}

} // namespace

ScriptedHost::ScriptedHost() : m_state(std::make_shared<State>()) {}

ScriptedHost::~ScriptedHost()
{
    m_state->alive = false;
}

void ScriptedHost::install()
{
    Platform::setScriptEngine(std::make_unique<Engine>(m_state));
    Platform::setUrlOpener(std::make_unique<Opener>(m_state));
}

ScriptOutcome ScriptedHost::text(const QString& result)
{
    return result;
}

ScriptOutcome ScriptedHost::nothing()
{
    return ScriptNoResult{};
}

ScriptOutcome ScriptedHost::failure(const QString& message)
{
    return ScriptErrorRecord{-600, message, std::nullopt};
}

ScriptedHost& ScriptedHost::expect(const QString& command, ScriptOutcome answer)
{
    m_state->steps.append({command, std::move(answer)});
    return *this;
}

ScriptedHost& ScriptedHost::allow(const QString& command, ScriptOutcome answer)
{
    m_state->table.insert(command, std::move(answer));
    return *this;
}

ScriptedHost& ScriptedHost::expectGetConfig(const QString& actionID, ScriptOutcome answer)
{
    return expect(orUnsendable(VendelAPI::getConfigCommand(actionID)), std::move(answer));
}

ScriptedHost& ScriptedHost::expectSetConfig(const QString& config, const QString& actionID,
                                            ScriptOutcome answer)
{
    return expect(orUnsendable(VendelAPI::setConfigCommand(config, actionID)), std::move(answer));
}

ScriptedHost& ScriptedHost::expectGetGlobalConfig(ScriptOutcome answer)
{
    return expect(orUnsendable(VendelAPI::getGlobalConfigCommand(Platform::mainBundle().identifier())),
                  std::move(answer));
}

ScriptedHost& ScriptedHost::expectSetGlobalConfig(const QString& config, ScriptOutcome answer)
{
    return expect(
        orUnsendable(VendelAPI::setGlobalConfigCommand(config, Platform::mainBundle().identifier())),
        std::move(answer));
}

ScriptedHost& ScriptedHost::expectIsPluginInstalled(const QString& atPath, ScriptOutcome answer)
{
    return expect(orUnsendable(VendelAPI::isPluginInstalledCommand(atPath)), std::move(answer));
}

ScriptedHost& ScriptedHost::expectInstallPlugin(ScriptOutcome answer)
{
    return expect(VendelAPI::installPluginCommand(), std::move(answer));
}

QStringList ScriptedHost::commands() const
{
    return m_state->commands;
}

QStringList ScriptedHost::commandUrls() const
{
    return m_state->urls;
}

QStringList ScriptedHost::mismatches() const
{
    return m_state->mismatches;
}

int ScriptedHost::remaining() const
{
    return int(m_state->steps.size());
}

} // namespace VendelSDK::Testing
