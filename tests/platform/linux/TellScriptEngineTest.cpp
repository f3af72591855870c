// Tests the tell engine: every command text of the system parses to the right call, anything else is refused.
#include "TellScriptEngine.h"

#include <VendelSDK/VendelAPI.h>

#include <QTest>

using namespace VendelSDK;

Q_DECLARE_METATYPE(VendelSDK::ScriptCommand)

namespace {

ScriptToken word(const char* text)
{
    return {ScriptToken::Kind::word, QString::fromLatin1(text)};
}

ScriptToken text(const QString& value)
{
    return {ScriptToken::Kind::text, value};
}

ScriptToken boolean(bool value)
{
    return {ScriptToken::Kind::boolean, value ? QStringLiteral("true") : QStringLiteral("false")};
}

// Records the entries it is told to perform and answers with a fixed outcome.
class RecordingApplication final : public ScriptApplication
{
public:
    RecordingApplication(QStringList dictionary, QList<ResolvedCommand>& log,
                         ScriptOutcome answer = ScriptNoResult{})
        : m_dictionary(std::move(dictionary)), m_log(log), m_answer(std::move(answer))
    {}

    QStringList dictionary() const override { return m_dictionary; }
    ScriptOutcome perform(qsizetype entry, const QStringList& arguments) override
    {
        m_log.append({entry, arguments});
        return m_answer;
    }

private:
    QStringList m_dictionary;
    QList<ResolvedCommand>& m_log;
    ScriptOutcome m_answer;
};

const QStringList musicDictionary{QStringLiteral("set shuffle enabled to %b"),
                                  QStringLiteral("play playlist %s"), QStringLiteral("pause")};
const QStringList vendelDictionary{QStringLiteral("get config %s"), QStringLiteral("set config %s action %s"),
                                   QStringLiteral("install plugin")};

ScriptOutcome runOnMusic(const QString& source, QList<ResolvedCommand>& log)
{
    TellScriptEngine engine;
    engine.registerApplication(QStringLiteral("Music"),
                               std::make_unique<RecordingApplication>(musicDictionary, log));
    return engine.execute(source);
}

} // namespace

class TellScriptEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCommandTextParsesToItsCall_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("application");
        QTest::addColumn<ScriptCommand>("command");
        const QString config = QStringLiteral("{\"name\":\"My \\\"Best\\\" \\\\ mix\"}");
        QTest::newRow("get global config")
            << *VendelAPI::getGlobalConfigCommand(QStringLiteral("org.vendel.music"))
            << QStringLiteral("Vendel")
            << ScriptCommand{word("get"), word("global"), word("config"),
                             text(QStringLiteral("org.vendel.music"))};
        QTest::newRow("set global config")
            << *VendelAPI::setGlobalConfigCommand(config, QStringLiteral("org.vendel.music"))
            << QStringLiteral("Vendel")
            << ScriptCommand{
                   word("set"),    word("global"), word("config"), text(config),
                   word("action"), word("bundle"), word("id"),     text(QStringLiteral("org.vendel.music"))};
        QTest::newRow("get config") << *VendelAPI::getConfigCommand(QStringLiteral("A-1"))
                                    << QStringLiteral("Vendel")
                                    << ScriptCommand{word("get"), word("config"),
                                                     text(QStringLiteral("A-1"))};
        QTest::newRow("set config") << *VendelAPI::setConfigCommand(config, QStringLiteral("A-1"))
                                    << QStringLiteral("Vendel")
                                    << ScriptCommand{word("set"), word("config"), text(config),
                                                     word("action"), text(QStringLiteral("A-1"))};
        QTest::newRow("get plugin folder path")
            << VendelAPI::getPluginFolderPathCommand() << QStringLiteral("Vendel")
            << ScriptCommand{word("get"), word("plugin"), word("folder"), word("path")};
        QTest::newRow("get path of plugin")
            << *VendelAPI::getPathOfPluginCommand(QStringLiteral("org.x")) << QStringLiteral("Vendel")
            << ScriptCommand{word("get"), word("path"), word("of"), word("plugin"),
                             text(QStringLiteral("org.x"))};
        QTest::newRow("is plugin installed")
            << *VendelAPI::isPluginInstalledCommand(QStringLiteral("/usr/bin/p")) << QStringLiteral("Vendel")
            << ScriptCommand{word("get"),
                             word("is"),
                             word("plugin"),
                             word("installed"),
                             word("at"),
                             word("path"),
                             text(QStringLiteral("/usr/bin/p"))};
        QTest::newRow("install plugin") << VendelAPI::installPluginCommand() << QStringLiteral("Vendel")
                                        << ScriptCommand{word("install"), word("plugin")};
        QTest::newRow("shuffle on") << QStringLiteral(
                                           "tell application \"Music\" to set shuffle enabled to true")
                                    << QStringLiteral("Music")
                                    << ScriptCommand{word("set"), word("shuffle"), word("enabled"),
                                                     word("to"), boolean(true)};
        QTest::newRow("shuffle off") << QStringLiteral(
                                            "tell application \"Music\" to set shuffle enabled to false")
                                     << QStringLiteral("Music")
                                     << ScriptCommand{word("set"), word("shuffle"), word("enabled"),
                                                      word("to"), boolean(false)};
        QTest::newRow("play playlist")
            << QStringLiteral("tell application \"Music\" to play playlist \"Focus\"")
            << QStringLiteral("Music")
            << ScriptCommand{word("play"), word("playlist"), text(QStringLiteral("Focus"))};
        QTest::newRow("play empty playlist")
            << QStringLiteral("tell application \"Music\" to play playlist \"\"") << QStringLiteral("Music")
            << ScriptCommand{word("play"), word("playlist"), text(QString())};
        QTest::newRow("pause") << QStringLiteral("tell application \"Music\" to pause")
                               << QStringLiteral("Music") << ScriptCommand{word("pause")};
    }

    void everyCommandTextParsesToItsCall()
    {
        QFETCH(QString, source);
        QFETCH(QString, application);
        QFETCH(ScriptCommand, command);
        const auto parsed = TellScriptEngine::parse(source);
        if (const auto* error = std::get_if<ScriptErrorRecord>(&parsed)) {
            QFAIL(qPrintable(error->message.value_or(QString())));
        }
        QCOMPARE(std::get<TellStatement>(parsed).application, application);
        QCOMPARE(std::get<TellStatement>(parsed).command, command);
    }

    void malformedSourcesAreSyntaxErrors_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("message");
        QTest::newRow("missing quote")
            << QStringLiteral("tell application \"Music\" to play playlist \"Focus")
            << QStringLiteral("Expected “\"” but found end of script.");
        QTest::newRow("trailing words") << QStringLiteral("tell application \"Music\" to pause \"x\" &")
                                        << QStringLiteral("Expected end of line but found “&”.");
        QTest::newRow("two statements")
            << QStringLiteral(
                   "tell application \"Music\" to pause\ntell application \"Vendel\" to install plugin")
            << QStringLiteral("Expected end of line but found end of line.");
        QTest::newRow("ampersand")
            << QStringLiteral(
                   "tell application \"Vendel\" to get config \"x\" & (do shell script \"id\") & \"\"")
            << QStringLiteral("Expected end of line but found “&”.");
        QTest::newRow("do shell script")
            << QStringLiteral("do shell script \"id\"") << QStringLiteral("Expected “tell” but found “do”.");
        QTest::newRow("empty source")
            << QString() << QStringLiteral("Expected “tell” but found end of script.");
        QTest::newRow("spaces only") << QStringLiteral("   \t  ")
                                     << QStringLiteral("Expected “tell” but found end of script.");
        QTest::newRow("no command") << QStringLiteral("tell application \"Music\" to")
                                    << QStringLiteral("Expected command but found end of script.");
        QTest::newRow("no application name")
            << QStringLiteral("tell application Music to pause")
            << QStringLiteral("Expected application name but found “Music”.");
        QTest::newRow("unknown escape")
            << QStringLiteral("tell application \"Music\" to play playlist \"a\\nb\"")
            << QStringLiteral("Expected “\\\"” or “\\\\” but found “\\n”.");
        QTest::newRow("semicolon") << QStringLiteral("tell application \"Music\" to pause; pause")
                                   << QStringLiteral("Expected end of line but found “;”.");
        QTest::newRow("parenthesis") << QStringLiteral("tell application \"Music\" to play (playlist \"a\")")
                                     << QStringLiteral("Expected end of line but found “(”.");
        QTest::newRow("digits") << QStringLiteral("tell application \"Music\" to play track 1")
                                << QStringLiteral("Expected end of line but found “1”.");
        QTest::newRow("capitalised keyword") << QStringLiteral("Tell application \"Music\" to pause")
                                             << QStringLiteral("Expected “tell” but found “Tell”.");
    }

    void malformedSourcesAreSyntaxErrors()
    {
        QFETCH(QString, source);
        QFETCH(QString, message);
        const auto parsed = TellScriptEngine::parse(source);
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(parsed));
        const auto& error = std::get<ScriptErrorRecord>(parsed);
        QCOMPARE(error.number, std::optional<qint64>(-2741));
        QCOMPARE(error.message, std::optional<QString>(message));
        QCOMPARE(error.briefMessage, std::optional<QString>(message));
    }

    void surroundingWhitespaceIsAllowed()
    {
        const auto parsed =
            TellScriptEngine::parse(QStringLiteral("\n    tell application \"Music\" to pause \t\n"));
        QVERIFY(std::holds_alternative<TellStatement>(parsed));
        QCOMPARE(std::get<TellStatement>(parsed).command, ScriptCommand{word("pause")});
    }

    void escapesInsideLiteralsAreUndone()
    {
        const auto parsed = TellScriptEngine::parse(
            *VendelAPI::setConfigCommand(QStringLiteral("\\\" \"\\"), QStringLiteral("A")));
        QVERIFY(std::holds_alternative<TellStatement>(parsed));
        QCOMPARE(std::get<TellStatement>(parsed).command.at(2), text(QStringLiteral("\\\" \"\\")));
    }

    void executeDispatchesToTheNamedApplication()
    {
        QList<ResolvedCommand> vendel;
        QList<ResolvedCommand> music;
        TellScriptEngine engine;
        engine.registerApplication(
            QStringLiteral("Vendel"),
            std::make_unique<RecordingApplication>(vendelDictionary, vendel, QStringLiteral("{}")));
        engine.registerApplication(QStringLiteral("Music"),
                                   std::make_unique<RecordingApplication>(musicDictionary, music));
        QCOMPARE(engine.execute(*VendelAPI::getConfigCommand(QStringLiteral("A"))),
                 ScriptOutcome(QStringLiteral("{}")));
        QCOMPARE(engine.execute(
                     *VendelAPI::setConfigCommand(QStringLiteral("{\"a\":\"\\\"\"}"), QStringLiteral("B"))),
                 ScriptOutcome(QStringLiteral("{}")));
        QCOMPARE(engine.execute(QStringLiteral("tell application \"Music\" to set shuffle enabled to false")),
                 ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(vendel,
                 (QList<ResolvedCommand>{{0, {QStringLiteral("A")}},
                                         {1, {QStringLiteral("{\"a\":\"\\\"\"}"), QStringLiteral("B")}}}));
        QCOMPARE(music, (QList<ResolvedCommand>{ResolvedCommand{0, {QStringLiteral("false")}}}));
    }

    void registeringNoApplicationMakesTheNameUnknownAgain()
    {
        QList<ResolvedCommand> music;
        TellScriptEngine engine;
        engine.registerApplication(QStringLiteral("Music"),
                                   std::make_unique<RecordingApplication>(musicDictionary, music));
        engine.registerApplication(QStringLiteral("Music"), nullptr);

        const QString message = QStringLiteral("Application “Music” can’t be found.");
        QCOMPARE(engine.execute(QStringLiteral("tell application \"Music\" to pause")),
                 ScriptOutcome(ScriptErrorRecord{TellScriptEngine::applicationNotFound, message, message}));
        QVERIFY(music.isEmpty());
    }

    void commandOutsideTheDictionaryIsASyntaxError_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("message");
        QTest::newRow("quote inside a playlist name")
            << QStringLiteral("tell application \"Music\" to play playlist \"My \"Best\"\"")
            << QStringLiteral("Expected end of line but found “Best”.");
        QTest::newRow("quoted boolean")
            << QStringLiteral("tell application \"Music\" to set shuffle enabled to \"true\"")
            << QStringLiteral("Expected true or false but found “\"true\"”.");
        QTest::newRow("missing playlist name")
            << QStringLiteral("tell application \"Music\" to play playlist")
            << QStringLiteral("Expected string but found end of script.");
        QTest::newRow("unknown verb") << QStringLiteral("tell application \"Music\" to stop")
                                      << QStringLiteral("Expected “set” but found “stop”.");
        QTest::newRow("extra word") << QStringLiteral("tell application \"Music\" to pause now")
                                    << QStringLiteral("Expected end of line but found “now”.");
    }

    void commandOutsideTheDictionaryIsASyntaxError()
    {
        QFETCH(QString, source);
        QFETCH(QString, message);
        QList<ResolvedCommand> log;
        const auto outcome = runOnMusic(source, log);
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
        QCOMPARE(std::get<ScriptErrorRecord>(outcome).number, std::optional<qint64>(-2741));
        QCOMPARE(std::get<ScriptErrorRecord>(outcome).message, std::optional<QString>(message));
        QVERIFY(log.isEmpty());
    }

    void syntaxErrorReachesNoApplication()
    {
        QList<ResolvedCommand> log;
        const auto outcome = runOnMusic(QStringLiteral("tell application \"Music\" to pause & pause"), log);
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
        QVERIFY(log.isEmpty());
    }

    void unknownApplicationFailsWithApplicationNotFound()
    {
        TellScriptEngine engine;
        const auto outcome = engine.execute(QStringLiteral("tell application \"Nowhere\" to pause"));
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
        const auto& error = std::get<ScriptErrorRecord>(outcome);
        QCOMPARE(error.number, std::optional<qint64>(-10814));
        QCOMPARE(error.message,
                 std::optional<QString>(QStringLiteral("Application “Nowhere” can’t be found.")));
    }

    void applicationNamesAreExact()
    {
        QList<ResolvedCommand> log;
        const auto outcome = runOnMusic(QStringLiteral("tell application \"music\" to pause"), log);
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
        QVERIFY(log.isEmpty());
    }

    void resolvingCollectsPlaceholdersInOrder()
    {
        const ScriptCommand setConfig{word("set"), word("config"), text(QStringLiteral("{}")), word("action"),
                                      text(QStringLiteral("A"))};
        const auto resolved = resolveCommand(setConfig, vendelDictionary);
        QVERIFY(std::holds_alternative<ResolvedCommand>(resolved));
        QCOMPARE(std::get<ResolvedCommand>(resolved),
                 (ResolvedCommand{1, {QStringLiteral("{}"), QStringLiteral("A")}}));
    }

    void emptyDictionaryUnderstandsNothing()
    {
        const auto resolved = resolveCommand({word("pause")}, {});
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(resolved));
        QCOMPARE(std::get<ScriptErrorRecord>(resolved).message,
                 std::optional<QString>(QStringLiteral("Expected command but found “pause”.")));
    }
};

QTEST_GUILESS_MAIN(TellScriptEngineTest)
#include "TellScriptEngineTest.moc"
