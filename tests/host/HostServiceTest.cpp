// Tests the served host over a private session bus: each method of both interfaces, installs by bus
// credentials, concurrent writers, durability across kill -9, the plugin's own client, launches that never
// hold up a call, and activation on demand.
#include "HostService.h"
#include "ActionEntries.h"
#include "DatabaseLock.h"
#include "HeldLaunches.h"
#include "HostError.h"
#include "HostInput.h"
#include "HostProcess.h"
#include "HostStorage.h"
#include "InterfaceMembers.h"
#include "XdgDataFolders.h"

#include "TellScriptEngine.h"
#include "VendelHostApplication.h"

#include <VendelSDK/Bundle.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

using namespace VendelHost;
using namespace VendelHost::Testing;

Q_DECLARE_METATYPE(QVariantList)

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);

QDBusMessage methodCall(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host"),
                                       QStringLiteral("org.vendel.Host1"), method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage call(const QString& method, const QVariantList& arguments = {},
                  QDBusConnection bus = QDBusConnection::sessionBus())
{
    return bus.call(methodCall(method, arguments));
}

QDBusMessage actionsCall(const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host"),
                                       QStringLiteral("org.vendel.Actions1"), method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

template <typename Entries> Entries entriesOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) {
        qWarning("%s: %s", qPrintable(reply.errorName()), qPrintable(reply.errorMessage()));
        return {};
    }
    return qdbus_cast<Entries>(reply.arguments().constFirst());
}

// The launch number of a reply, or 0 when it was an error.
qulonglong launchOf(const QDBusMessage& reply)
{
    return reply.type() == QDBusMessage::ReplyMessage && reply.arguments().size() == 1
               ? reply.arguments().constFirst().toULongLong()
               : 0;
}

// The launches' ends as the bus broadcasts them.
class LaunchEnds : public QObject
{
    Q_OBJECT

public:
    struct End
    {
        qulonglong launch;
        QString verb;
        QString actionID;
        QString plugin;
        int exitStatus;
        QString failure;
    };

    LaunchEnds()
    {
        QDBusConnection::sessionBus().connect(
            QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host"),
            QStringLiteral("org.vendel.Actions1"), QStringLiteral("LaunchEnded"), this,
            SLOT(ended(qulonglong, QString, QString, QString, int, QString)));
    }

    QList<End> ends;
    std::optional<End> of(qulonglong launch) const
    {
        for (const End& end : ends) {
            if (end.launch == launch) {
                return end;
            }
        }
        return std::nullopt;
    }

public Q_SLOTS:
    void ended(qulonglong launch, const QString& verb, const QString& actionID, const QString& plugin,
               int exitStatus, const QString& failure)
    {
        ends.append({launch, verb, actionID, plugin, exitStatus, failure});
    }
};

// The one text of a reply, or a description of what came instead.
QString text(const QDBusMessage& reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage) {
        return QStringLiteral("error %1: %2").arg(reply.errorName(), reply.errorMessage());
    }
    if (reply.arguments().size() != 1) {
        return QStringLiteral("%1 arguments").arg(reply.arguments().size());
    }
    return reply.arguments().constFirst().toString();
}

bool isEmptyReply(const QDBusMessage& reply)
{
    return reply.type() == QDBusMessage::ReplyMessage && reply.arguments().isEmpty();
}

} // namespace

class HostServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerEntryTypes(); }

    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        // The served host and the plugins it starts see these: the stub records its launches, waits while
        // the test holds them, and has a desktop entry.
        m_held = std::make_unique<HeldLaunches>(m_directory->filePath(QStringLiteral("hold")));
        qputenv("VENDEL_STUB_RECORD", QFile::encodeName(recordPath()));
        qputenv("VENDEL_STUB_DONE", QFile::encodeName(m_directory->filePath(QStringLiteral("done"))));
        qputenv("VENDEL_STUB_HOLD", QFile::encodeName(m_held->path()));
        m_xdg = std::make_unique<XdgDataFolders>();
        m_xdg->writeEntry(XdgDataFolders::FirstSystem,
                          QFileInfo(stub).fileName() + QStringLiteral(".desktop"),
                          XdgDataFolders::entry("Stub Player", "stub-player"));
        m_host = std::make_unique<HostProcess>(dataDirectory());
        QVERIFY2(m_host->serve(), qPrintable(m_host->serverOutput()));
    }

    void cleanup()
    {
        VendelSDK::Platform::reset();
        // A normal exit after SIGTERM also lets the sanitizers check the host for leaks.
        if (m_host->server().state() == QProcess::Running) {
            QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        }
        QTRY_VERIFY(!HostProcess::isHostOnBus());
        m_host.reset();
        m_held.reset();
        m_xdg.reset();
        for (const char* name :
             {"VENDEL_STUB_RECORD", "VENDEL_STUB_DONE", "VENDEL_STUB_HOLD", "VENDEL_STUB_EXIT"}) {
            qunsetenv(name);
        }
        m_directory.reset();
    }

    void configIsKeptPerAction()
    {
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("music"));
        QCOMPARE(text(call(QStringLiteral("GetConfig"), {id})), QString());
        const QString json = QStringLiteral("{\"name\":\"Ünï \\\"x\\\"\"}");
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {json, id})));
        QCOMPARE(text(call(QStringLiteral("GetConfig"), {id})), json);
        QCOMPARE(HostStorage(dataDirectory()).action(id)->config, json);
    }

    void anUnknownActionHasNoConfigAndTakesNone()
    {
        QCOMPARE(text(call(QStringLiteral("GetConfig"), {QStringLiteral("nope")})), QString());
        const QDBusMessage reply =
            call(QStringLiteral("SetConfig"), {QStringLiteral("{}"), QStringLiteral("nope")});
        QCOMPARE(reply.errorName(), QStringLiteral("org.vendel.Host1.Error.NoSuchAction"));
        QVERIFY(reply.errorMessage().contains(QStringLiteral("nope")));
        QVERIFY(HostStorage(dataDirectory()).actions().isEmpty());
    }

    void globalConfigIsKeptPerBundle()
    {
        QCOMPARE(text(call(QStringLiteral("GetGlobalConfig"), {QStringLiteral("org.vendel.a")})), QString());
        QVERIFY(isEmptyReply(call(QStringLiteral("SetGlobalConfig"),
                                  {QStringLiteral("{\"a\":1}"), QStringLiteral("org.vendel.a")})));
        QVERIFY(isEmptyReply(call(QStringLiteral("SetGlobalConfig"),
                                  {QStringLiteral("{\"b\":2}"), QStringLiteral("org.vendel.b")})));
        QCOMPARE(text(call(QStringLiteral("GetGlobalConfig"), {QStringLiteral("org.vendel.a")})),
                 QStringLiteral("{\"a\":1}"));
        QCOMPARE(call(QStringLiteral("SetGlobalConfig"), {QStringLiteral("{}"), QString()}).errorName(),
                 QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    }

    void anEmptyConfigurationClears()
    {
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("music"));
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {QStringLiteral("{\"a\":1}"), id})));
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {QString(), id})));
        QCOMPARE(text(call(QStringLiteral("GetConfig"), {id})), QString());
        QVERIFY(isEmptyReply(call(QStringLiteral("SetGlobalConfig"),
                                  {QStringLiteral("[1]"), QStringLiteral("org.vendel.a")})));
        QVERIFY(isEmptyReply(
            call(QStringLiteral("SetGlobalConfig"), {QString(), QStringLiteral("org.vendel.a")})));
        QCOMPARE(text(call(QStringLiteral("GetGlobalConfig"), {QStringLiteral("org.vendel.a")})), QString());
    }

    void refusedInputIsNamedAndStoresNothing_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("config");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("error");
        const QString invalidConfig = QStringLiteral("org.vendel.Host1.Error.InvalidConfig");
        const QString invalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
        const QString bundle = QStringLiteral("org.vendel.a");
        const QString tooLong = QStringLiteral("[\"%1\"]").arg(QString(HostInput::maxConfigBytes, u'x'));
        // The action's key is filled in by the test: the one action it makes.
        QTest::newRow("action, not JSON") << "SetConfig"
                                          << "pause" << QString() << invalidConfig;
        QTest::newRow("action, a number") << "SetConfig"
                                          << "1" << QString() << invalidConfig;
        QTest::newRow("action, over 1 MiB") << "SetConfig" << tooLong << QString() << invalidConfig;
        QTest::newRow("global, not JSON") << "SetGlobalConfig"
                                          << "{'a':1}" << bundle << invalidConfig;
        QTest::newRow("global, over 1 MiB") << "SetGlobalConfig" << tooLong << bundle << invalidConfig;
        QTest::newRow("global, parent folder") << "SetGlobalConfig"
                                               << "{}"
                                               << "../org.vendel.a" << invalidArgs;
        QTest::newRow("global, newline") << "SetGlobalConfig"
                                         << "{}"
                                         << "org.vendel\n.a" << invalidArgs;
        QTest::newRow("global, one label") << "SetGlobalConfig"
                                           << "{}"
                                           << "music" << invalidArgs;
        QTest::newRow("read, parent folder")
            << "GetGlobalConfig" << QString() << "../org.vendel.a" << invalidArgs;
    }

    void refusedInputIsNamedAndStoresNothing()
    {
        QFETCH(QString, method);
        QFETCH(QString, config);
        QFETCH(QString, key);
        QFETCH(QString, error);
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("music"));
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {QStringLiteral("{\"kept\":1}"), id})));
        const QVariantList arguments =
            method == u"GetGlobalConfig" ? QVariantList{key} : QVariantList{config, key.isEmpty() ? id : key};
        const QDBusMessage reply = call(method, arguments);
        QCOMPARE(reply.errorName(), error);
        QVERIFY(!reply.errorMessage().isEmpty());
        HostStorage storage(dataDirectory());
        QCOMPARE(storage.action(id)->config, QStringLiteral("{\"kept\":1}"));
        QCOMPARE(storage.globalConfig(key), QString());
    }

    void getConfigIsAnsweredWhileAWriterWaitsForTheLock()
    {
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("music"));
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {QStringLiteral("{\"old\":1}"), id})));
        DatabaseLock lock(dataDirectory() + QStringLiteral("/host.sqlite"), DatabaseLock::Kind::Write);
        QVERIFY(lock.isHeld());
        QDBusConnection writer =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("writer"));
        QDBusConnection reader =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("reader"));
        const auto disconnect = qScopeGuard([] {
            QDBusConnection::disconnectFromBus(QStringLiteral("writer"));
            QDBusConnection::disconnectFromBus(QStringLiteral("reader"));
        });

        QDBusPendingCall write =
            writer.asyncCall(methodCall(QStringLiteral("SetConfig"), {QStringLiteral("{\"new\":1}"), id}));
        // The same client reads next: its read must see its own write, so it is answered after it.
        QDBusPendingCall ownRead = writer.asyncCall(methodCall(QStringLiteral("GetConfig"), {id}));
        // Once the bus has answered the writer, it has passed the writer's calls on to the host first.
        QVERIFY(writer.interface()->isServiceRegistered(QStringLiteral("org.vendel.Host")).value());
        QCOMPARE(text(call(QStringLiteral("GetConfig"), {id}, reader)), QStringLiteral("{\"old\":1}"));
        QVERIFY(!write.isFinished());
        QVERIFY(!ownRead.isFinished());

        lock.release();
        write.waitForFinished();
        QVERIFY2(!write.isError(), qPrintable(write.error().message()));
        ownRead.waitForFinished();
        QCOMPARE(text(ownRead.reply()), QStringLiteral("{\"new\":1}"));
        QCOMPARE(text(call(QStringLiteral("GetConfig"), {id}, reader)), QStringLiteral("{\"new\":1}"));
    }

    void aWriteAheadLogDeletedUnderTheHostIsReported()
    {
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("music"));
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {QStringLiteral("{\"a\":1}"), id})));
        const QString log = dataDirectory() + QStringLiteral("/host.sqlite-wal");
        QVERIFY(QFile::remove(log));
        const QDBusMessage reply = call(QStringLiteral("SetConfig"), {QStringLiteral("{\"a\":2}"), id});
        QCOMPARE(reply.errorName(), QStringLiteral("org.vendel.Host1.Error.StorageFailed"));
        QVERIFY2(reply.errorMessage().contains(QStringLiteral("write-ahead log %1 was deleted").arg(log)),
                 qPrintable(reply.errorMessage()));
    }

    void theFirstStartWaitsForALockHeldByAnotherProcess()
    {
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        QTRY_VERIFY(!HostProcess::isHostOnBus());
        const QString first = m_directory->filePath(QStringLiteral("first"));
        QVERIFY(QDir().mkpath(first));
        // A database still in its first journal mode, written by someone else: the host's switch to its
        // log must wait.
        DatabaseLock lock(first + QStringLiteral("/host.sqlite"), DatabaseLock::Kind::Exclusive);
        QVERIFY(lock.isHeld());
        m_host = std::make_unique<HostProcess>(first);
        QVERIFY(m_host->startServing());
        QString output;
        QTRY_VERIFY2((output += m_host->serverOutput()).contains(QStringLiteral("locked by another process")),
                     qPrintable(output));
        QCOMPARE(m_host->server().state(), QProcess::Running);
        lock.release();
        QTRY_VERIFY2(HostProcess::isHostOnBus(), qPrintable(output + m_host->serverOutput()));
        QCOMPARE(text(call(QStringLiteral("GetPluginFolderPath"))), first + QStringLiteral("/plugins"));
    }

    void anyFailureOfAJobIsAnsweredAsAnError_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("storage") << 0 << QStringLiteral("org.vendel.Host1.Error.StorageFailed")
                                 << QStringLiteral("locked");
        QTest::newRow("standard exception") << 1 << QStringLiteral("org.freedesktop.DBus.Error.Failed")
                                            << QStringLiteral("The host failed: bad");
        QTest::newRow("anything else") << 2 << QStringLiteral("org.freedesktop.DBus.Error.Failed")
                                       << QStringLiteral("The host failed for an unknown reason.");
    }

    void anyFailureOfAJobIsAnsweredAsAnError()
    {
        QFETCH(int, kind);
        QFETCH(QString, name);
        QFETCH(QString, message);
        HostStorage storage(m_directory->filePath(QStringLiteral("other")));
        const auto outcome = WriterThread::run(
            [kind](HostStorage&) -> QVariantList {
                if (kind == 0) {
                    throw HostError(QStringLiteral("locked"));
                }
                if (kind == 1) {
                    throw std::runtime_error("bad");
                }
                throw 1;
            },
            [&storage]() -> HostStorage& { return storage; });
        const QDBusMessage reply = HostService::replyTo(methodCall(QStringLiteral("SetConfig"), {}), outcome);
        QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
        QCOMPARE(reply.errorName(), name);
        QCOMPARE(reply.errorMessage(), message);
    }

    void actionsAreCreatedListedTitledAndDeleted()
    {
        HostStorage(dataDirectory())
            .recordPlugin(
                {QStringLiteral("stub"), stub, QStringLiteral("Stub Player"), QStringLiteral("stub-player")});
        const QString titled = text(actionsCall(QStringLiteral("CreateAction"),
                                                {QStringLiteral("stub"), QStringLiteral("Road Trip 🚗")}));
        const QString plain =
            text(actionsCall(QStringLiteral("CreateAction"), {QStringLiteral("stub"), QString()}));
        QCOMPARE(plain.size(), 36);
        QCOMPARE(entriesOf<ActionEntries>(actionsCall(QStringLiteral("ListActions"))),
                 (ActionEntries{{titled, QStringLiteral("Road Trip 🚗"), 1, QStringLiteral("stub"),
                                 QStringLiteral("Stub Player"), QStringLiteral("stub-player")},
                                {plain, QStringLiteral("Stub Player 2"), 2, QStringLiteral("stub"),
                                 QStringLiteral("Stub Player"), QStringLiteral("stub-player")}}));
        QVERIFY(
            isEmptyReply(actionsCall(QStringLiteral("SetActionTitle"), {plain, QStringLiteral("Focus")})));
        QCOMPARE(HostStorage(dataDirectory()).action(plain)->title(), QStringLiteral("Focus"));
        // The empty title gives the default one back.
        QVERIFY(isEmptyReply(actionsCall(QStringLiteral("SetActionTitle"), {plain, QString()})));
        QCOMPARE(HostStorage(dataDirectory()).action(plain)->title(), QStringLiteral("Stub Player 2"));
        QVERIFY(isEmptyReply(actionsCall(QStringLiteral("DeleteAction"), {titled})));
        QCOMPARE(entriesOf<ActionEntries>(actionsCall(QStringLiteral("ListActions"))).size(), 1);
        QCOMPARE(HostStorage(dataDirectory()).actions().constFirst().id, plain);
    }

    void refusedActionCallsNameTheProblemAndChangeNothing_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("message");
        const QString invalidTitle = QStringLiteral("org.vendel.Actions1.Error.InvalidTitle");
        const QString noSuchAction = QStringLiteral("org.vendel.Actions1.Error.NoSuchAction");
        QTest::newRow("create, unknown plugin")
            << "CreateAction" << QVariantList{QStringLiteral("nope"), QString()}
            << QStringLiteral("org.vendel.Actions1.Error.NoSuchPlugin")
            << QStringLiteral("There is no plugin \"nope\"");
        QTest::newRow("create, title with a line break")
            << "CreateAction" << QVariantList{QStringLiteral("stub"), QStringLiteral("a\nb")} << invalidTitle
            << QStringLiteral("The title has a control character or line break (\\n) at character 2");
        QTest::newRow("create, title too long")
            << "CreateAction" << QVariantList{QStringLiteral("stub"), QString(201, u'x')} << invalidTitle
            << QStringLiteral("The title has 201 characters");
        QTest::newRow("title, unknown action")
            << "SetActionTitle" << QVariantList{QStringLiteral("nope"), QStringLiteral("x")} << noSuchAction
            << QStringLiteral("There is no action \"nope\"");
        QTest::newRow("title, tab") << "SetActionTitle"
                                    << QVariantList{QStringLiteral("KEPT"), QStringLiteral("a\tb")}
                                    << invalidTitle << QStringLiteral("(\\t)");
        QTest::newRow("delete, unknown action") << "DeleteAction" << QVariantList{QStringLiteral("nope")}
                                                << noSuchAction << QStringLiteral("\"nope\"");
        QTest::newRow("run, unknown action") << "RunAction" << QVariantList{QStringLiteral("nope")}
                                             << noSuchAction << QStringLiteral("\"nope\"");
        QTest::newRow("edit, control characters")
            << "EditAction" << QVariantList{QStringLiteral("\x1b[2J")} << noSuchAction
            << QStringLiteral("There is no action \"\\x1b[2J\"");
        QTest::newRow("configure, unknown plugin")
            << "ConfigurePlugin" << QVariantList{QStringLiteral("nope")}
            << QStringLiteral("org.vendel.Actions1.Error.NoSuchPlugin") << QStringLiteral("\"nope\"");
    }

    void refusedActionCallsNameTheProblemAndChangeNothing()
    {
        QFETCH(QString, method);
        QFETCH(QVariantList, arguments);
        QFETCH(QString, error);
        QFETCH(QString, message);
        QString kept;
        {
            HostStorage storage(dataDirectory());
            storage.recordPlugin({QStringLiteral("stub"), stub});
            kept = storage.createAction(QStringLiteral("stub"), QStringLiteral("Kept"));
        }
        for (QVariant& argument : arguments) {
            if (argument == QStringLiteral("KEPT")) {
                argument = kept;
            }
        }
        const QDBusMessage reply = actionsCall(method, arguments);
        QCOMPARE(reply.errorName(), error);
        QVERIFY2(reply.errorMessage().contains(message), qPrintable(reply.errorMessage()));
        HostStorage storage(dataDirectory());
        QCOMPARE(storage.actions().size(), 1);
        QCOMPARE(storage.action(kept)->title(), QStringLiteral("Kept"));
        QVERIFY(record().isEmpty());
    }

    void aPluginInstallsWithItsDesktopEntrysNameAndIcon()
    {
        QProcess plugin;
        plugin.setProcessEnvironment(m_host->environment());
        plugin.setProcessChannelMode(QProcess::MergedChannels);
        plugin.start(stub, {});
        QVERIFY(plugin.waitForFinished(30000));
        QVERIFY2(plugin.exitCode() == 0, plugin.readAll().constData());
        // The test itself installs too, and has no entry.
        QVERIFY(isEmptyReply(call(QStringLiteral("InstallPlugin"))));
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
        QCOMPARE(entriesOf<PluginEntries>(actionsCall(QStringLiteral("ListPlugins"))),
                 (PluginEntries{{QFileInfo(self).fileName(), QFileInfo(self).fileName(),
                                 QStringLiteral("application-x-executable"), self},
                                {QFileInfo(stub).fileName(), QStringLiteral("Stub Player"),
                                 QStringLiteral("stub-player"), QFileInfo(stub).canonicalFilePath()}}));
    }

    // While a plugin is held, every other call is answered: a plugin never holds up the service.
    void aRunningPluginHoldsUpNoCall()
    {
        const QString first = newStubAction();
        const QString second = newStubAction();
        LaunchEnds launchEnds;
        QVERIFY(m_held->hold());
        const qulonglong firstLaunch = launchOf(actionsCall(QStringLiteral("RunAction"), {first}));
        QVERIFY(firstLaunch > 0);
        QTRY_COMPARE_WITH_TIMEOUT(record(), QStringLiteral("vendelplugin://run/%1\n").arg(first), generousMs);

        QCOMPARE(text(call(QStringLiteral("GetConfig"), {first})), QString());
        QCOMPARE(entriesOf<ActionEntries>(actionsCall(QStringLiteral("ListActions"))).size(), 2);
        QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {QStringLiteral("{\"a\":1}"), second})));
        QCOMPARE(m_host->run({QStringLiteral("actions")}).exitCode, 0);
        QCOMPARE(m_host->run({QStringLiteral("config"), QStringLiteral("get"), second}).out,
                 QStringLiteral("{\"a\":1}\n"));
        const qulonglong secondLaunch = launchOf(actionsCall(QStringLiteral("RunAction"), {second}));
        QVERIFY(secondLaunch > firstLaunch);
        QTRY_COMPARE_WITH_TIMEOUT(record().count(u'\n'), 2, generousMs);

        const QDBusMessage again = actionsCall(QStringLiteral("RunAction"), {first});
        QCOMPARE(again.errorName(), QStringLiteral("org.vendel.Actions1.Error.AlreadyRunning"));
        QCOMPARE(again.errorMessage(),
                 QStringLiteral("\"stub 1\" is running already; it can run again when this run has ended."));
        QVERIFY(launchEnds.ends.isEmpty());

        m_held->release();
        QTRY_COMPARE_WITH_TIMEOUT(launchEnds.ends.size(), 2, generousMs);
        const auto end = launchEnds.of(firstLaunch);
        QVERIFY(end);
        QCOMPARE(end->verb, QStringLiteral("run"));
        QCOMPARE(end->actionID, first);
        QCOMPARE(end->plugin, QStringLiteral("stub"));
        QCOMPARE(end->exitStatus, 0);
        QCOMPARE(end->failure, QString());
        // Once ended, the action runs again.
        QVERIFY(launchOf(actionsCall(QStringLiteral("RunAction"), {first})) > secondLaunch);
        QTRY_COMPARE_WITH_TIMEOUT(launchEnds.ends.size(), 3, generousMs);
    }

    void theNinthPluginAtOnceIsRefused()
    {
        QStringList ids;
        for (int index = 0; index < 8; ++index) {
            ids.append(newStubAction());
        }
        LaunchEnds launchEnds;
        QVERIFY(m_held->hold());
        for (int index = 0; index < 6; ++index) {
            QVERIFY(launchOf(actionsCall(QStringLiteral("RunAction"), {ids.at(index)})) > 0);
        }
        QVERIFY(launchOf(actionsCall(QStringLiteral("EditAction"), {ids.at(6)})) > 0);
        QVERIFY(launchOf(actionsCall(QStringLiteral("ConfigurePlugin"), {QStringLiteral("stub")})) > 0);
        QTRY_COMPARE_WITH_TIMEOUT(record().count(u'\n'), 8, generousMs);
        const QDBusMessage ninth = actionsCall(QStringLiteral("RunAction"), {ids.at(7)});
        QCOMPARE(ninth.errorName(), QStringLiteral("org.vendel.Actions1.Error.TooManyLaunches"));
        QVERIFY2(ninth.errorMessage().startsWith(QStringLiteral("8 plugins are running")),
                 qPrintable(ninth.errorMessage()));
        QCOMPARE(actionsCall(QStringLiteral("EditAction"), {ids.at(7)}).errorName(),
                 QStringLiteral("org.vendel.Actions1.Error.TooManyLaunches"));
        QCOMPARE(record().count(u'\n'), 8);
        m_held->release();
        QTRY_COMPARE_WITH_TIMEOUT(launchEnds.ends.size(), 8, generousMs);
        QVERIFY(launchOf(actionsCall(QStringLiteral("RunAction"), {ids.at(7)})) > 0);
        QTRY_COMPARE_WITH_TIMEOUT(launchEnds.ends.size(), 9, generousMs);
    }

    void aPluginThatCannotStartIsAnErrorToTheCaller()
    {
        HostStorage storage(dataDirectory());
        storage.recordPlugin({QStringLiteral("gone"), m_directory->filePath(QStringLiteral("gone"))});
        const QString gone = storage.createAction(QStringLiteral("gone"));
        const QString uninstalled = storage.createAction(QStringLiteral("uninstalled"));
        const QDBusMessage missing = actionsCall(QStringLiteral("RunAction"), {gone});
        QCOMPARE(missing.errorName(), QStringLiteral("org.vendel.Actions1.Error.LaunchFailed"));
        QCOMPARE(missing.errorMessage(),
                 QStringLiteral("The plugin's executable %1 is missing; install the plugin again.")
                     .arg(m_directory->filePath(QStringLiteral("gone"))));
        QCOMPARE(actionsCall(QStringLiteral("ConfigurePlugin"), {QStringLiteral("gone")}).errorName(),
                 QStringLiteral("org.vendel.Actions1.Error.LaunchFailed"));
        const QDBusMessage notInstalled = actionsCall(QStringLiteral("EditAction"), {uninstalled});
        QCOMPARE(notInstalled.errorName(), QStringLiteral("org.vendel.Actions1.Error.NoSuchPlugin"));
        QVERIFY2(notInstalled.errorMessage().contains(QStringLiteral("There is no plugin \"uninstalled\"")),
                 qPrintable(notInstalled.errorMessage()));
    }

    void aFailedEndIsBroadcastAndLogged()
    {
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        QTRY_VERIFY(!HostProcess::isHostOnBus());
        qputenv("VENDEL_STUB_EXIT", "3");
        QVERIFY2(m_host->serve(), qPrintable(m_host->serverOutput()));
        const QString id = newStubAction();
        LaunchEnds launchEnds;
        const qulonglong launch = launchOf(actionsCall(QStringLiteral("RunAction"), {id}));
        QTRY_COMPARE_WITH_TIMEOUT(launchEnds.ends.size(), 1, generousMs);
        const QString expected =
            QStringLiteral("%1 failed on vendelplugin://run/%2 (exit status 3).").arg(stub, id);
        QCOMPARE(launchEnds.ends.constFirst().launch, launch);
        QCOMPARE(launchEnds.ends.constFirst().exitStatus, 3);
        QCOMPARE(launchEnds.ends.constFirst().failure, expected);
        QString output;
        QTRY_VERIFY2_WITH_TIMEOUT(
            (output += m_host->serverOutput()).contains(QStringLiteral("vendel-host: ") + expected),
            qPrintable(output), generousMs);
    }

    void aPluginGoesOnWhenTheHostEnds()
    {
        const QString id = newStubAction();
        QVERIFY(m_held->hold());
        QVERIFY(launchOf(actionsCall(QStringLiteral("RunAction"), {id})) > 0);
        QTRY_COMPARE_WITH_TIMEOUT(record().count(u'\n'), 1, generousMs);
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        m_held->release();
        QTRY_COMPARE_WITH_TIMEOUT(done(), QStringLiteral("vendelplugin://run/%1\n").arg(id), generousMs);
    }

    // The committed descriptions are what the service serves, so clients built from them cannot drift.
    void theServedInterfacesAreTheirDescriptions_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("interface");
        QTest::newRow("plugins") << QStringLiteral(VENDEL_HOST1_DESCRIPTION)
                                 << QStringLiteral("org.vendel.Host1");
        QTest::newRow("host's clients")
            << QStringLiteral(VENDEL_ACTIONS1_DESCRIPTION) << QStringLiteral("org.vendel.Actions1");
    }

    void theServedInterfacesAreTheirDescriptions()
    {
        QFETCH(QString, file);
        QFETCH(QString, interface);
        QFile description(file);
        QVERIFY(description.open(QIODevice::ReadOnly));
        const QStringList described = interfaceMembers(description.readAll(), interface);
        QVERIFY(described.size() > 3);
        QCOMPARE(interfaceMembers(
                     introspection(QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host")),
                     interface),
                 described);
    }

    void thePluginFolderIsInTheDataFolder()
    {
        QCOMPARE(text(call(QStringLiteral("GetPluginFolderPath"))),
                 dataDirectory() + QStringLiteral("/plugins"));
    }

    void theCallerIsInstalledFromItsBusCredentials()
    {
        QVERIFY(isEmptyReply(call(QStringLiteral("InstallPlugin"))));
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
        const QString name = QFileInfo(self).fileName();
        QCOMPARE(text(call(QStringLiteral("GetPathOfPlugin"), {name})), self);
        QCOMPARE(text(call(QStringLiteral("IsPluginInstalledAtPath"), {self})), QStringLiteral("true"));
        QCOMPARE(text(call(QStringLiteral("IsPluginInstalledAtPath"),
                           {dataDirectory() + QStringLiteral("/plugins/") + name})),
                 QStringLiteral("true"));
        QCOMPARE(text(call(QStringLiteral("IsPluginInstalledAtPath"), {stub})), QStringLiteral("false"));
        QCOMPARE(text(call(QStringLiteral("IsPluginInstalledAtPath"), {QString()})), QStringLiteral("false"));

        const QDBusMessage unknown = call(QStringLiteral("GetPathOfPlugin"), {QStringLiteral("nope")});
        QCOMPARE(unknown.errorName(), QStringLiteral("org.vendel.Host1.Error.NoSuchPlugin"));
    }

    void anotherProcessIsInstalledAsItself()
    {
        QProcess plugin;
        plugin.setProcessEnvironment(m_host->environment());
        plugin.setProcessChannelMode(QProcess::MergedChannels);
        plugin.start(stub, {});
        QVERIFY(plugin.waitForFinished(30000));
        QVERIFY2(plugin.exitCode() == 0, plugin.readAll().constData());
        const auto installed = HostStorage(dataDirectory()).plugin(QFileInfo(stub).fileName());
        QVERIFY(installed);
        QCOMPARE(installed->path, QFileInfo(stub).canonicalFilePath());
        QCOMPARE(text(call(QStringLiteral("IsPluginInstalledAtPath"), {stub})), QStringLiteral("true"));
    }

    // The plugin's own client, with its command texts and reply handling, against the real host.
    void thePluginsClientReadsAndWritesThroughTheHost()
    {
        using namespace VendelSDK;
        auto engine = std::make_unique<TellScriptEngine>();
        engine->registerApplication(QStringLiteral("Vendel"), std::make_unique<VendelHostApplication>());
        Platform::setScriptEngine(std::move(engine));
        Platform::setMainBundle(Bundle(stub, QStringLiteral("org.vendel.stub"), {}));
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("stub"));

        VendelAPI api;
        const QString json = QStringLiteral("{\"name\":\"A \\\"quoted\\\" \\\\ name\"}");
        api.setConfig(json, id);
        QCOMPARE(api.getConfig(id), json);
        api.setGlobalConfig(json);
        QCOMPARE(HostStorage(dataDirectory()).globalConfig(QStringLiteral("org.vendel.stub")), json);
        QCOMPARE(api.getGlobalConfig(), json);
        QCOMPARE(api.getPluginFolderPath(), dataDirectory() + QStringLiteral("/plugins"));
        QVERIFY(!api.isPluginInstalled(stub));
        QVERIFY(!api.getPathOfPlugin(QStringLiteral("nope")));
        api.installPlugin();
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
        QVERIFY(api.isPluginInstalled(self));
        QCOMPARE(api.getPathOfPlugin(QFileInfo(self).fileName()), std::optional<QString>(self));
    }

    void twoClientsSetConfigAtTheSameTime()
    {
        HostStorage storage(dataDirectory());
        const QString shared = storage.createAction(QStringLiteral("music"));
        const QStringList own{storage.createAction(QStringLiteral("music")),
                              storage.createAction(QStringLiteral("music"))};
        QList<QDBusConnection> clients;
        for (int client = 0; client < 2; ++client) {
            clients.append(QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                                         QStringLiteral("client%1").arg(client)));
            QVERIFY(clients.last().isConnected());
        }

        // Every call of both clients is on its way before the first reply is looked at.
        constexpr int calls = 50;
        QList<QDBusPendingCall> pending;
        for (int index = 0; index < calls; ++index) {
            for (int client = 0; client < 2; ++client) {
                const QString value = QStringLiteral("{\"client\":%1,\"n\":%2}").arg(client).arg(index);
                pending.append(
                    clients[client].asyncCall(methodCall(QStringLiteral("SetConfig"), {value, shared})));
                pending.append(
                    clients[client].asyncCall(methodCall(QStringLiteral("SetConfig"), {value, own[client]})));
            }
        }
        for (QDBusPendingCall& reply : pending) {
            reply.waitForFinished();
            QVERIFY2(!reply.isError(), qPrintable(reply.error().message()));
        }
        for (int client = 0; client < 2; ++client) {
            QCOMPARE(text(call(QStringLiteral("GetConfig"), {own[client]})),
                     QStringLiteral("{\"client\":%1,\"n\":%2}").arg(client).arg(calls - 1));
            QDBusConnection::disconnectFromBus(QStringLiteral("client%1").arg(client));
        }
        const QString last = text(call(QStringLiteral("GetConfig"), {shared}));
        QVERIFY2(last == QStringLiteral("{\"client\":0,\"n\":49}") ||
                     last == QStringLiteral("{\"client\":1,\"n\":49}"),
                 qPrintable(last));
        QCOMPARE(storage.action(shared)->config, last);
    }

    void aRepliedWriteSurvivesKillMinusNine()
    {
        const QString id = HostStorage(dataDirectory()).createAction(QStringLiteral("music"));
        for (int round = 0; round < 3; ++round) {
            const QString value = QStringLiteral("{\"round\":%1}").arg(round);
            QVERIFY(isEmptyReply(call(QStringLiteral("SetConfig"), {value, id})));
            QVERIFY(isEmptyReply(
                call(QStringLiteral("SetGlobalConfig"), {value, QStringLiteral("org.vendel.x")})));
            m_host->kill();
            QCOMPARE(m_host->server().exitStatus(), QProcess::CrashExit);
            QTRY_VERIFY(!HostProcess::isHostOnBus());
            QVERIFY2(m_host->serve(), qPrintable(m_host->serverOutput()));
            QCOMPARE(text(call(QStringLiteral("GetConfig"), {id})), value);
            QCOMPARE(text(call(QStringLiteral("GetGlobalConfig"), {QStringLiteral("org.vendel.x")})), value);
        }
    }

    void aSecondHostLeavesTheFirstInPlace()
    {
        const auto second = HostProcess(dataDirectory()).run({QStringLiteral("serve")});
        QCOMPARE(second.exitCode, 1);
        QVERIFY2(second.err.contains(QStringLiteral("Another host already serves org.vendel.Host")),
                 qPrintable(second.err));
        QCOMPARE(text(call(QStringLiteral("GetPluginFolderPath"))),
                 dataDirectory() + QStringLiteral("/plugins"));
    }

    // A bus of its own whose only service directory is the build's: the first call starts the host, which
    // ends again when that bus goes away.
    void theBusStartsTheHostOnDemand()
    {
        const QString busDirectory = m_directory->filePath(QStringLiteral("bus"));
        QVERIFY(QDir().mkpath(busDirectory));
        const QString configPath = busDirectory + QStringLiteral("/session.conf");
        {
            QFile config(configPath);
            QVERIFY(config.open(QIODevice::WriteOnly));
            config.write(
                QStringLiteral(
                    "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
                    " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                    "<busconfig>\n  <type>session</type>\n  <listen>unix:dir=%1</listen>\n"
                    "  <servicedir>%2</servicedir>\n"
                    "  <policy context=\"default\">\n"
                    "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                    "    <allow eavesdrop=\"true\"/>\n"
                    "    <allow own=\"*\"/>\n"
                    "  </policy>\n"
                    "</busconfig>\n")
                    .arg(busDirectory, QStringLiteral(VENDEL_HOST_SERVICE_DIRECTORY))
                    .toUtf8());
        }
        const QString activatedData = m_directory->filePath(QStringLiteral("activated"));
        QProcess daemon;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("VENDEL_HOST_DATA_DIR"), activatedData);
        daemon.setProcessEnvironment(environment);
        daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        daemon.start(QStringLiteral("dbus-daemon"),
                     {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                      QStringLiteral("--config-file=") + configPath});
        QVERIFY(daemon.waitForStarted());
        QTRY_VERIFY(daemon.canReadLine());
        const QString address = QString::fromUtf8(daemon.readLine()).trimmed();

        qint64 hostPid = 0;
        {
            QDBusConnection bus = QDBusConnection::connectToBus(address, QStringLiteral("own bus"));
            QVERIFY2(bus.isConnected(), qPrintable(bus.lastError().message()));
            QCOMPARE(text(call(QStringLiteral("GetPluginFolderPath"), {}, bus)),
                     activatedData + QStringLiteral("/plugins"));
            hostPid = bus.interface()->servicePid(QStringLiteral("org.vendel.Host")).value();
            QVERIFY(hostPid > 0);
            QVERIFY(hostPid != m_host->server().processId());
        }
        QDBusConnection::disconnectFromBus(QStringLiteral("own bus"));

        daemon.terminate();
        QVERIFY(daemon.waitForFinished());
        const QString stat = QStringLiteral("/proc/%1/stat").arg(hostPid);
        QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(stat) || processState(stat) == 'Z', 20000);
    }

private:
    static constexpr int generousMs = 30000;

    QString dataDirectory() const { return m_directory->filePath(QStringLiteral("data")); }
    QString recordPath() const { return m_directory->filePath(QStringLiteral("record")); }

    QString record() const { return contents(recordPath()); }
    QString done() const { return contents(m_directory->filePath(QStringLiteral("done"))); }

    static QString contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    // An action of the stub plugin, installed under the name "stub".
    QString newStubAction()
    {
        HostStorage storage(dataDirectory());
        storage.recordPlugin({QStringLiteral("stub"), stub});
        return storage.createAction(QStringLiteral("stub"));
    }

    static char processState(const QString& statPath)
    {
        QFile file(statPath);
        if (!file.open(QIODevice::ReadOnly)) {
            return 0;
        }
        const QByteArray line = file.readAll();
        const qsizetype end = line.lastIndexOf(')');
        return end >= 0 && end + 2 < line.size() ? line.at(end + 2) : 0;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<HeldLaunches> m_held;
    std::unique_ptr<XdgDataFolders> m_xdg;
    std::unique_ptr<HostProcess> m_host;
};

QTEST_GUILESS_MAIN(HostServiceTest)
#include "HostServiceTest.moc"
