// Tests the host application of the tell engine against a stand-in host on a private session bus.
#include "VendelHostApplication.h"
#include "TellScriptEngine.h"

#include <VendelSDK/Bundle.h>
#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include "InterfaceDescription.h"
#include "TestHostProcess.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QProcess>
#include <QTest>

#include <cstdio>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(VendelSDK::ScriptOutcome)
Q_DECLARE_METATYPE(VendelSDK::VendelHostApplication::Reply)

namespace VendelSDK {

QString describe(const ScriptOutcome& outcome)
{
    if (const auto* text = std::get_if<QString>(&outcome)) {
        return QStringLiteral("text \"%1\"").arg(*text);
    }
    if (std::holds_alternative<ScriptNoResult>(outcome)) {
        return QStringLiteral("no result");
    }
    const auto& error = std::get<ScriptErrorRecord>(outcome);
    return QStringLiteral("error %1 \"%2\" / \"%3\"")
        .arg(error.number ? QString::number(*error.number) : QStringLiteral("none"),
             error.message.value_or(QStringLiteral("(none)")),
             error.briefMessage.value_or(QStringLiteral("(none)")));
}

char* toString(const ScriptOutcome& outcome)
{
    return QTest::toString(describe(outcome));
}

} // namespace VendelSDK

namespace {

const QString bundleID = QStringLiteral("org.vendel.music");
// A configuration that needs every kind of escaping on its way through the script text.
const QString trickyConfig =
    QStringLiteral("{\"name\":\"My \\\"Best\\\" \\\\ mix\",\"path\":\"C:\\\\x\\\\\",\"tail\":\"\\\\\\\"\"}");

ScriptErrorRecord failure(qint64 number, const QString& message)
{
    return ScriptErrorRecord{number, message, message};
}

std::unique_ptr<TellScriptEngine> makeEngine(std::optional<std::chrono::milliseconds> timeout = std::nullopt)
{
    auto engine = std::make_unique<TellScriptEngine>();
    engine->registerApplication(QStringLiteral("Vendel"), std::make_unique<VendelHostApplication>(timeout));
    return engine;
}

ScriptOutcome tell(const QString& source)
{
    return makeEngine()->execute(source);
}

QString getConfigSource(const QString& actionID = QStringLiteral("A-1"))
{
    return *VendelAPI::getConfigCommand(actionID);
}

// Every command text, as the SDK builds it, with the host call it must become.
struct CommandCase
{
    const char* name;
    QString source;
    QStringList call;
};

QList<CommandCase> commandCases()
{
    return {
        {"get global config",
         *VendelAPI::getGlobalConfigCommand(bundleID),
         {QStringLiteral("GetGlobalConfig"), bundleID}},
        {"set global config",
         *VendelAPI::setGlobalConfigCommand(QStringLiteral("{\"g\":2}"), bundleID),
         {QStringLiteral("SetGlobalConfig"), QStringLiteral("{\"g\":2}"), bundleID}},
        {"get config",
         *VendelAPI::getConfigCommand(QStringLiteral("A-1")),
         {QStringLiteral("GetConfig"), QStringLiteral("A-1")}},
        {"set config",
         *VendelAPI::setConfigCommand(QStringLiteral("{\"a\":1}"), QStringLiteral("A-2")),
         {QStringLiteral("SetConfig"), QStringLiteral("{\"a\":1}"), QStringLiteral("A-2")}},
        {"get plugin folder path",
         VendelAPI::getPluginFolderPathCommand(),
         {QStringLiteral("GetPluginFolderPath")}},
        {"get path of plugin",
         *VendelAPI::getPathOfPluginCommand(QStringLiteral("org.vendel.other")),
         {QStringLiteral("GetPathOfPlugin"), QStringLiteral("org.vendel.other")}},
        {"is plugin installed",
         *VendelAPI::isPluginInstalledCommand(QStringLiteral("/opt/plugins/music")),
         {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("/opt/plugins/music")}},
        {"install plugin", VendelAPI::installPluginCommand(), {QStringLiteral("InstallPlugin")}},
    };
}

// Runs an SDK operation and gives the code of the SDK error it threw, or nothing when it threw none.
template <class Operation> std::optional<qint64> thrownCode(Operation operation)
{
    try {
        operation();
    } catch (const Error& error) {
        return error.domain() == QString::fromLatin1(sdkErrorDomain) ? error.code() : -1;
    }
    return std::nullopt;
}

} // namespace

class VendelHostApplicationTest : public QObject
{
    Q_OBJECT

private:
    bool startHost() { return m_host.start(); }
    bool stopHost() { return m_host.stop(); }

    TestHostProcess m_host;

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<QList<QStringList>>();
        // A call that left its time-out to the bus would wait an hour, far past the test's own limit: only the
        // engine's time-out can end a wait on a frozen host.
        qputenv("SYSTEMD_BUS_TIMEOUT", "3600");
    }

    void init()
    {
        QVERIFY2(startHost(), "the stand-in host did not claim its name");
        QVERIFY(TestHostProcess::controlled(QStringLiteral("Reset")));
    }

    void cleanup() { Platform::reset(); }

    void cleanupTestCase() { QVERIFY(stopHost()); }

    void eachCommandCallsItsMethodWithItsArguments_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("call");
        QTest::addColumn<ScriptOutcome>("expected");
        const QHash<QString, ScriptOutcome> answers{
            {QStringLiteral("GetGlobalConfig"), QStringLiteral("{\"global\":1}")},
            {QStringLiteral("GetConfig"), QStringLiteral("{\"action\":\"pause\"}")},
            {QStringLiteral("GetPluginFolderPath"), QStringLiteral("/home/test/.local/share/vendel/plugins")},
            {QStringLiteral("GetPathOfPlugin"),
             QStringLiteral("/home/test/.local/share/vendel/plugins/music")},
            {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("true")},
        };
        for (const CommandCase& command : commandCases()) {
            QTest::newRow(command.name) << command.source << command.call
                                        << answers.value(command.call.constFirst(), ScriptNoResult{});
        }
    }

    void eachCommandCallsItsMethodWithItsArguments()
    {
        QFETCH(QString, source);
        QFETCH(QStringList, call);
        QFETCH(ScriptOutcome, expected);
        QCOMPARE(tell(source), expected);
        QCOMPARE(TestHostProcess::calls(), QList<QStringList>{call});
    }

    void textAnswersComeBackUnchanged_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("text");
        const QString json = QStringLiteral("{\"name\":\"Quote \\\" and backslash \\\\\",\"café\":\"☕\"}");
        for (const CommandCase& command : commandCases()) {
            QTest::newRow(command.name) << command.source << command.call.constFirst() << json;
        }
        QTest::newRow("surrounding spaces and lines")
            << getConfigSource() << QStringLiteral("GetConfig") << QStringLiteral("  two\nlines  ");
        QTest::newRow("not quite true")
            << *VendelAPI::isPluginInstalledCommand(QStringLiteral("/p"))
            << QStringLiteral("IsPluginInstalledAtPath") << QStringLiteral("True");
    }

    void textAnswersComeBackUnchanged()
    {
        QFETCH(QString, source);
        QFETCH(QString, method);
        QFETCH(QString, text);
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerText"), {method, text}));
        QCOMPARE(tell(source), ScriptOutcome(text));
    }

    void anEmptyTextIsAResultNotNoResult()
    {
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                            {QStringLiteral("GetConfig"), QString()}));
        const ScriptOutcome outcome = tell(getConfigSource());
        QVERIFY2(std::holds_alternative<QString>(outcome), qPrintable(describe(outcome)));
        QVERIFY(std::get<QString>(outcome).isEmpty());
    }

    void aReplyWithoutArgumentsIsNoResult_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("method");
        for (const CommandCase& command : commandCases()) {
            QTest::newRow(command.name) << command.source << command.call.constFirst();
        }
    }

    void aReplyWithoutArgumentsIsNoResult()
    {
        QFETCH(QString, source);
        QFETCH(QString, method);
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerNothing"), {method}));
        QCOMPARE(tell(source), ScriptOutcome(ScriptNoResult{}));
    }

    void aHostErrorFailsWithItsOwnMessage_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("method");
        for (const CommandCase& command : commandCases()) {
            QTest::newRow(command.name) << command.source << command.call.constFirst();
        }
    }

    void aHostErrorFailsWithItsOwnMessage()
    {
        QFETCH(QString, source);
        QFETCH(QString, method);
        const QString message = QStringLiteral("The host refused “%1”.").arg(method);
        QVERIFY(
            TestHostProcess::controlled(QStringLiteral("AnswerError"),
                                        {method, QStringLiteral("org.vendel.test.Error.Refused"), message}));
        QCOMPARE(tell(source), ScriptOutcome(failure(VendelHostApplication::hostFailed, message)));
    }

    void aHostErrorWithoutMessageFailsWithItsName()
    {
        QVERIFY(TestHostProcess::controlled(
            QStringLiteral("AnswerError"),
            {QStringLiteral("GetConfig"), QStringLiteral("org.vendel.test.Error.Quiet"), QString()}));
        QCOMPARE(tell(getConfigSource()),
                 ScriptOutcome(failure(-10000, QStringLiteral("org.vendel.test.Error.Quiet"))));
    }

    void anUnknownPluginIsNoResult()
    {
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerError"),
                                            {QStringLiteral("GetPathOfPlugin"),
                                             QStringLiteral("org.vendel.Host1.Error.NoSuchPlugin"),
                                             QStringLiteral("No plugin “org.x”.")}));
        QCOMPARE(tell(*VendelAPI::getPathOfPluginCommand(QStringLiteral("org.x"))),
                 ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(TestHostProcess::calls(),
                 (QList<QStringList>{{QStringLiteral("GetPathOfPlugin"), QStringLiteral("org.x")}}));
    }

    void noSuchPluginFromAnotherMethodIsAFailure()
    {
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerError"),
                                            {QStringLiteral("GetConfig"),
                                             QStringLiteral("org.vendel.Host1.Error.NoSuchPlugin"),
                                             QStringLiteral("No plugin.")}));
        QCOMPARE(tell(getConfigSource()), ScriptOutcome(failure(-10000, QStringLiteral("No plugin."))));
    }

    void aHostThatIsNotRunningFailsWithApplicationIsntRunning_data()
    {
        QTest::addColumn<QString>("source");
        for (const CommandCase& command : commandCases()) {
            QTest::newRow(command.name) << command.source;
        }
    }

    void aHostThatIsNotRunningFailsWithApplicationIsntRunning()
    {
        QFETCH(QString, source);
        QVERIFY(stopHost());
        QCOMPARE(tell(source), ScriptOutcome(failure(-600, QStringLiteral("Application isn't running."))));
    }

    void aFrozenHostTimesOutWithAppleEventTimedOut()
    {
        QVERIFY(TestHostProcess::controlled(QStringLiteral("Freeze"), {QStringLiteral("GetConfig")}));
        const ScriptOutcome outcome = makeEngine(300ms)->execute(getConfigSource());
        QCOMPARE(outcome, ScriptOutcome(failure(-1712, QStringLiteral("AppleEvent timed out."))));
        QCOMPARE(TestHostProcess::calls(),
                 (QList<QStringList>{{QStringLiteral("GetConfig"), QStringLiteral("A-1")}}));
    }

    void configTextWithQuotesAndBackslashesArrivesUnchanged_data()
    {
        QTest::addColumn<QString>("config");
        QTest::newRow("json with escapes") << trickyConfig;
        QTest::newRow("backslash then quote") << QStringLiteral("\\\"");
        QTest::newRow("only backslashes") << QStringLiteral("\\\\\\");
        QTest::newRow("only quotes") << QStringLiteral("\"\"");
        QTest::newRow("empty") << QString();
        QTest::newRow("non-ASCII") << QStringLiteral("{\"name\":\"Café ☕ 日本 \\u00e9\"}");
    }

    void configTextWithQuotesAndBackslashesArrivesUnchanged()
    {
        QFETCH(QString, config);
        QCOMPARE(tell(*VendelAPI::setConfigCommand(config, QStringLiteral("A-1"))),
                 ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(tell(*VendelAPI::setGlobalConfigCommand(config, bundleID)), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(TestHostProcess::calls(),
                 (QList<QStringList>{{QStringLiteral("SetConfig"), config, QStringLiteral("A-1")},
                                     {QStringLiteral("SetGlobalConfig"), config, bundleID}}));
    }

    void aTextWithANulCharacterFailsInsteadOfArrivingCut()
    {
        const QString config = QStringLiteral("{\"a\":1}") + QChar(0) + QStringLiteral("tail");
        const ScriptOutcome outcome = tell(*VendelAPI::setConfigCommand(config, QStringLiteral("A-1")));
        QVERIFY2(std::holds_alternative<ScriptErrorRecord>(outcome), qPrintable(describe(outcome)));
        QCOMPARE(std::get<ScriptErrorRecord>(outcome).number, std::optional<qint64>(-10000));
        QCOMPARE(TestHostProcess::calls(), QList<QStringList>());
    }

    void installPluginLetsTheHostIdentifyTheCaller()
    {
        QCOMPARE(tell(VendelAPI::installPluginCommand()), ScriptOutcome(ScriptNoResult{}));
        const QDBusMessage reply = TestHostProcess::control(QStringLiteral("LastCallerPid"));
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.arguments().value(0).toLongLong(), QCoreApplication::applicationPid());
    }

    void thePlatformEngineAddressesTheHostAsVendel()
    {
        QCOMPARE(makePlatformScriptEngine()->execute(getConfigSource(QStringLiteral("B-7"))),
                 ScriptOutcome(QStringLiteral("{\"action\":\"pause\"}")));
        QCOMPARE(TestHostProcess::calls(),
                 (QList<QStringList>{{QStringLiteral("GetConfig"), QStringLiteral("B-7")}}));
    }

    void repliesReadAsOutcomes_data()
    {
        QTest::addColumn<int>("command");
        QTest::addColumn<VendelHostApplication::Reply>("reply");
        QTest::addColumn<ScriptOutcome>("expected");
        using Reply = VendelHostApplication::Reply;
        const auto text = [](const char* value) {
            return Reply{{}, {}, QStringLiteral("s"), QString::fromLatin1(value)};
        };
        const auto returned = [](const char* signature) {
            return Reply{{}, {}, QString::fromLatin1(signature), {}};
        };
        const auto error = [](const char* name, const char* message) {
            return Reply{QString::fromLatin1(name), QString::fromLatin1(message), {}, {}};
        };
        const ScriptOutcome notRunning = failure(-600, QStringLiteral("Application isn't running."));
        const ScriptOutcome wrongType =
            failure(-1700, QStringLiteral("Can’t make some data into the expected type."));
        const int getConfig = VendelHostApplication::getConfig;
        const int getPathOfPlugin = VendelHostApplication::getPathOfPlugin;

        QTest::newRow("one text") << getConfig << text("x") << ScriptOutcome(QStringLiteral("x"));
        QTest::newRow("nothing") << getConfig << returned("") << ScriptOutcome(ScriptNoResult{});
        QTest::newRow("service unknown")
            << getConfig << error("org.freedesktop.DBus.Error.ServiceUnknown", "not provided") << notRunning;
        QTest::newRow("name has no owner")
            << getConfig << error("org.freedesktop.DBus.Error.NameHasNoOwner", "no owner") << notRunning;
        QTest::newRow("no reply") << getConfig << error("org.freedesktop.DBus.Error.NoReply", "no reply")
                                  << ScriptOutcome(failure(-1712, QStringLiteral("AppleEvent timed out.")));
        QTest::newRow("access denied")
            << getConfig << error("org.freedesktop.DBus.Error.AccessDenied", "Rejected send message")
            << ScriptOutcome(failure(-10000, QStringLiteral("Rejected send message")));
        QTest::newRow("no such plugin")
            << getPathOfPlugin << error("org.vendel.Host1.Error.NoSuchPlugin", "No plugin.")
            << ScriptOutcome(ScriptNoResult{});
        QTest::newRow("two texts") << getConfig << returned("ss") << wrongType;
        QTest::newRow("a number") << getConfig << returned("i") << wrongType;
        QTest::newRow("a boolean") << getConfig << returned("b") << wrongType;
    }

    void repliesReadAsOutcomes()
    {
        QFETCH(int, command);
        QFETCH(VendelHostApplication::Reply, reply);
        QFETCH(ScriptOutcome, expected);
        QCOMPARE(VendelHostApplication::outcome(static_cast<VendelHostApplication::Command>(command), reply),
                 expected);
    }

    void withoutASessionBusACommandFailsAsDisconnected()
    {
        // A bus address where no bus listens: the process has no session bus at all.
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                           QStringLiteral("unix:path=/nonexistent/vendel-test-bus"));
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("-child-without-bus"), getConfigSource()});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(QString::fromUtf8(child.readAllStandardOutput()).trimmed(),
                 describe(failure(-10000, QStringLiteral("Not connected to D-Bus server"))));
    }

    // The host serves the committed interface description; the calls made here must keep to it.
    void eachCommandCallsAMethodOfTheHostInterfaceWithItsSignature()
    {
        const auto described =
            Testing::describedMethods(QStringLiteral("org.vendel.Host1.xml"), "org.vendel.Host1");
        QVERIFY(!described.isEmpty());
        QStringList called;
        for (const VendelHostApplication::Method& method : VendelHostApplication::methods()) {
            QVERIFY2(described.contains(method.name), qPrintable(method.name));
            QCOMPARE(described.value(method.name).in, method.signature);
            // The reply is read as one string or nothing; the description must promise no other shape.
            QVERIFY2(described.value(method.name).out.isEmpty() || described.value(method.name).out == u"s",
                     qPrintable(method.name));
            called.append(method.name);
        }
        // Every method the host offers is reachable from a command.
        QStringList offered = described.keys();
        offered.sort();
        called.sort();
        QCOMPARE(called, offered);
    }

    void vendelApiReadsAndWritesConfigurationThroughTheHost()
    {
        Platform::setScriptEngine(makeEngine());
        Platform::setMainBundle(Bundle(QStringLiteral("/opt/plugins/music"), bundleID, {}));
        VendelAPI api;
        api.setConfig(trickyConfig, QStringLiteral("A-1"));
        api.setGlobalConfig(trickyConfig);
        QCOMPARE(api.getConfig(QStringLiteral("A-1")), QStringLiteral("{\"action\":\"pause\"}"));
        QCOMPARE(api.getGlobalConfig(), QStringLiteral("{\"global\":1}"));
        QCOMPARE(api.getPluginFolderPath(), QStringLiteral("/home/test/.local/share/vendel/plugins"));
        QCOMPARE(TestHostProcess::calls(),
                 (QList<QStringList>{{QStringLiteral("SetConfig"), trickyConfig, QStringLiteral("A-1")},
                                     {QStringLiteral("SetGlobalConfig"), trickyConfig, bundleID},
                                     {QStringLiteral("GetConfig"), QStringLiteral("A-1")},
                                     {QStringLiteral("GetGlobalConfig"), bundleID},
                                     {QStringLiteral("GetPluginFolderPath")}}));
    }

    void vendelApiGetPathOfPluginIsNothingForAnUnknownPlugin()
    {
        Platform::setScriptEngine(makeEngine());
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerError"),
                                            {QStringLiteral("GetPathOfPlugin"),
                                             QStringLiteral("org.vendel.Host1.Error.NoSuchPlugin"),
                                             QStringLiteral("No plugin.")}));
        VendelAPI api;
        std::optional<QString> path = QStringLiteral("(not asked)");
        QCOMPARE(thrownCode([&] { path = api.getPathOfPlugin(QStringLiteral("org.x")); }),
                 std::optional<qint64>());
        QCOMPARE(path, std::optional<QString>());
    }

    void vendelApiIsPluginInstalledExactlyWhenTheHostSaysTrue()
    {
        Platform::setScriptEngine(makeEngine());
        VendelAPI api;
        QVERIFY(api.isPluginInstalled(QStringLiteral("/opt/plugins/music")));
        QVERIFY(TestHostProcess::controlled(
            QStringLiteral("AnswerText"),
            {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("false")}));
        QVERIFY(!api.isPluginInstalled(QStringLiteral("/opt/plugins/music")));
    }

    void vendelApiReportsAFailingHostAsCouldNotRunScript()
    {
        Platform::setScriptEngine(makeEngine());
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerError"),
                                            {QStringLiteral("InstallPlugin"),
                                             QStringLiteral("org.vendel.test.Error.Refused"),
                                             QStringLiteral("Refused.")}));
        VendelAPI api;
        QCOMPARE(thrownCode([&] { api.installPlugin(); }),
                 std::optional<qint64>(static_cast<qint64>(SdkErrorCode::couldNotRunScript)));
        QVERIFY(stopHost());
        QCOMPARE(thrownCode([&] { api.getConfig(QStringLiteral("A-1")); }),
                 std::optional<qint64>(static_cast<qint64>(SdkErrorCode::couldNotRunScript)));
    }

    void vendelApiReportsNoAnswerAsCouldNotReadScriptOutput()
    {
        Platform::setScriptEngine(makeEngine());
        QVERIFY(TestHostProcess::controlled(QStringLiteral("AnswerNothing"), {QStringLiteral("GetConfig")}));
        VendelAPI api;
        QCOMPARE(thrownCode([&] { api.getConfig(QStringLiteral("A-1")); }),
                 std::optional<qint64>(static_cast<qint64>(SdkErrorCode::couldNotReadScriptOutput)));
    }
};

int main(int argc, char* argv[])
{
    // The child that runs one command in a process without a session bus, and prints its outcome.
    if (argc == 3 && qstrcmp(argv[1], "-child-without-bus") == 0) {
        QCoreApplication app(argc, argv);
        std::puts(qPrintable(describe(tell(QString::fromUtf8(argv[2])))));
        return 0;
    }
    QCoreApplication app(argc, argv);
    VendelHostApplicationTest test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "VendelHostApplicationTest.moc"
