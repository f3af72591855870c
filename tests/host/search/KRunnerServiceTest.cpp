// Tests the served host's KRunner runner over a private session bus: matches, the translated "Edit" action,
// runs and edits that never wait, refusals, the interface against our description and the runner's desktop
// file, and failures told through a recording notification service, or on standard error without one.
#include "HostProcess.h"
#include "HostStorage.h"
#include "InterfaceMembers.h"
#include "RecordingNotifications.h"
#include "RemoteMatches.h"
#include "StubLaunches.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QSettings>
#include <QTest>

using namespace VendelHost;
using namespace VendelHost::Testing;

namespace {

constexpr int generousMs = 30000;

QDBusMessage runnerCall(const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.vendel.Host"), QStringLiteral("/runner"),
                                       QStringLiteral("org.kde.krunner1"), method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

template <typename Value> Value valueOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) {
        qWarning("%s: %s", qPrintable(reply.errorName()), qPrintable(reply.errorMessage()));
        return {};
    }
    return qdbus_cast<Value>(reply.arguments().constFirst());
}

} // namespace

class KRunnerServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerRemoteMatchTypes(); }

    void init()
    {
        m_stub = std::make_unique<StubLaunches>();
        m_stub->exportEnvironment();
        m_stub->installStub();
        HostStorage storage(m_stub->dataDirectory());
        for (const QString& title :
             {QStringLiteral("Road Trip"), QStringLiteral("Car Road"), QStringLiteral("road"),
              QStringLiteral("Railroad"), QStringLiteral("Focus")}) {
            m_ids.insert(title, storage.createAction(QStringLiteral("stub"), title));
        }
        QVERIFY(serve());
    }

    void cleanup()
    {
        if (m_host->server().state() == QProcess::Running) {
            QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        }
        QTRY_VERIFY_WITH_TIMEOUT(!HostProcess::isHostOnBus(), generousMs);
        m_host.reset();
        for (const char* name : {"VENDEL_STUB_EXIT", "LC_ALL", "LANGUAGE"}) {
            qunsetenv(name);
        }
        qputenv("LC_ALL", "C.UTF-8");
        m_ids.clear();
        m_stub.reset();
    }

    void matchesAreRankedWithTheirPluginAndTheEditAction()
    {
        const auto matches =
            valueOf<RemoteMatches>(runnerCall(QStringLiteral("Match"), {QStringLiteral("ROAD")}));
        QStringList titles;
        for (const RemoteMatch& match : matches) {
            titles.append(match.text);
            QCOMPARE(match.id, m_ids.value(match.text));
            QCOMPARE(match.iconName, QStringLiteral("stub-player"));
            QCOMPARE(match.properties.value(QStringLiteral("subtext")).toString(),
                     QStringLiteral("Stub Player"));
            QCOMPARE(match.properties.value(QStringLiteral("actions")).toStringList(),
                     QStringList{QStringLiteral("edit")});
            // Titles, display names and icons only: never a configuration.
            QCOMPARE(match.properties.size(), 2);
        }
        QCOMPARE(titles, (QStringList{QStringLiteral("road"), QStringLiteral("Road Trip"),
                                      QStringLiteral("Car Road"), QStringLiteral("Railroad")}));
        QCOMPARE(matches.at(0).type, 100);
        QCOMPARE(matches.at(1).type, 30);
        for (qsizetype index = 1; index < matches.size(); ++index) {
            QVERIFY(matches.at(index).relevance < matches.at(index - 1).relevance);
            QVERIFY(matches.at(index).relevance > 0);
        }
        QVERIFY(matches.at(0).relevance <= 1.0);
    }

    void queriesTooLongOrOfTooManyWordsMatchNothing()
    {
        QCOMPARE(valueOf<RemoteMatches>(
                     runnerCall(QStringLiteral("Match"), {QStringLiteral("road") + QString(253, u' ')}))
                     .size(),
                 0);
        QCOMPARE(valueOf<RemoteMatches>(runnerCall(QStringLiteral("Match"),
                                                   {QStringLiteral("r o a d r o a d r o a d r o a d r")}))
                     .size(),
                 0);
        QCOMPARE(valueOf<RemoteMatches>(
                     runnerCall(QStringLiteral("Match"), {QStringLiteral("road") + QString(252, u' ')}))
                     .size(),
                 4);
        QCOMPARE(valueOf<RemoteMatches>(runnerCall(QStringLiteral("Match"), {QString()})).size(), 0);
    }

    void theEditActionIsOfferedInTheServicesLanguage()
    {
        QCOMPARE(valueOf<RemoteActions>(runnerCall(QStringLiteral("Actions"))).size(), 1);
        QCOMPARE(valueOf<RemoteActions>(runnerCall(QStringLiteral("Actions"))).constFirst().text,
                 QStringLiteral("Edit"));
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        QTRY_VERIFY_WITH_TIMEOUT(!HostProcess::isHostOnBus(), generousMs);
        qputenv("LC_ALL", "de_DE.UTF-8");
        QVERIFY(serve());
        const auto actions = valueOf<RemoteActions>(runnerCall(QStringLiteral("Actions")));
        QCOMPARE(actions.size(), 1);
        QCOMPARE(actions.constFirst().id, QStringLiteral("edit"));
        QCOMPARE(actions.constFirst().text, QStringLiteral("Bearbeiten"));
        QCOMPARE(actions.constFirst().iconName, QStringLiteral("document-edit"));
    }

    void runAndEditStartThePluginAndAnswerAtOnce()
    {
        const QString id = m_ids.value(QStringLiteral("Road Trip"));
        QVERIFY(m_stub->held().hold());
        // The plugin is held: each answer comes while the plugin still runs.
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QString()}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://run/%1\n").arg(id), generousMs);
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QStringLiteral("edit")}).type(),
                 QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://run/%1\nvendelplugin://edit/%1\n").arg(id),
                                  generousMs);
        QCOMPARE(m_stub->contents(QStringLiteral("done")), QString());
        m_stub->held().release();
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("done")).count(u'\n'), 2, generousMs);
    }

    void onlyStoredActionsAndKnownActionIdsRun_data()
    {
        QTest::addColumn<QString>("matchId");
        QTest::addColumn<QString>("actionId");
        QTest::addColumn<QString>("error");
        QTest::newRow("unknown identifier") << QStringLiteral("nope") << QString()
                                            << QStringLiteral("org.vendel.Actions1.Error.NoSuchAction");
        QTest::newRow("empty identifier")
            << QString() << QString() << QStringLiteral("org.vendel.Actions1.Error.NoSuchAction");
        QTest::newRow("control characters") << QStringLiteral("\x1b[2J") << QStringLiteral("edit")
                                            << QStringLiteral("org.vendel.Actions1.Error.NoSuchAction");
        QTest::newRow("unknown action id") << QStringLiteral("ROAD") << QStringLiteral("delete")
                                           << QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
        QTest::newRow("action id in capitals") << QStringLiteral("ROAD") << QStringLiteral("Edit")
                                               << QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
    }

    void onlyStoredActionsAndKnownActionIdsRun()
    {
        QFETCH(QString, matchId);
        QFETCH(QString, actionId);
        QFETCH(QString, error);
        if (matchId == QStringLiteral("ROAD")) {
            matchId = m_ids.value(QStringLiteral("Road Trip"));
        }
        QCOMPARE(runnerCall(QStringLiteral("Run"), {matchId, actionId}).errorName(), error);
        // Nothing was started: a run of another action is the first the stub records.
        QCOMPARE(runnerCall(QStringLiteral("Run"), {m_ids.value(QStringLiteral("Focus")), QString()}).type(),
                 QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(
            m_stub->contents(QStringLiteral("record")),
            QStringLiteral("vendelplugin://run/%1\n").arg(m_ids.value(QStringLiteral("Focus"))), generousMs);
    }

    void teardownAndConfigAreAnswered()
    {
        QCOMPARE(runnerCall(QStringLiteral("Teardown")).type(), QDBusMessage::ReplyMessage);
        const QDBusMessage config = runnerCall(QStringLiteral("Config"));
        QCOMPARE(config.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(config.signature(), QStringLiteral("a{sv}"));
        QCOMPARE(qdbus_cast<QVariantMap>(config.arguments().constFirst()), QVariantMap());
    }

    void theServedInterfaceIsOurDescription()
    {
        QFile description(QStringLiteral(VENDEL_KRUNNER_DESCRIPTION));
        QVERIFY(description.open(QIODevice::ReadOnly));
        const QStringList described =
            interfaceMembers(description.readAll(), QStringLiteral("org.kde.krunner1"));
        QCOMPARE(described.size(), 5);
        QVERIFY(described.contains(QStringLiteral("method Config()(a{sv})")));
        QCOMPARE(interfaceMembers(introspection(QStringLiteral("org.vendel.Host"), QStringLiteral("/runner")),
                                  QStringLiteral("org.kde.krunner1")),
                 described);
    }

    void theRunnersDesktopFileNamesTheService()
    {
        QSettings entry(QStringLiteral(VENDEL_KRUNNER_DESKTOP_FILE), QSettings::IniFormat);
        entry.beginGroup(QStringLiteral("Desktop Entry"));
        QCOMPARE(entry.value(QStringLiteral("X-KDE-PluginInfo-Name")).toString(),
                 QStringLiteral("org.vendel.Actions"));
        QCOMPARE(entry.value(QStringLiteral("X-KDE-PluginInfo-EnabledByDefault")).toString(),
                 QStringLiteral("true"));
        QCOMPARE(entry.value(QStringLiteral("X-Plasma-API")).toString(), QStringLiteral("DBus"));
        QCOMPARE(entry.value(QStringLiteral("X-Plasma-DBusRunner-Service")).toString(),
                 QStringLiteral("org.vendel.Host"));
        QCOMPARE(entry.value(QStringLiteral("X-Plasma-DBusRunner-Path")).toString(),
                 QStringLiteral("/runner"));
    }

    void aRunThatCannotStartIsNotifiedNamingTheAction()
    {
        RecordingNotifications notifications;
        QVERIFY(notifications.start());
        const QString id = actionOfRemovedPlugin(QStringLiteral("Gone Tune"));
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QString()}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(notifications.notifications.size(), 1, generousMs);
        QCOMPARE(notifications.notifications.constFirst().summary,
                 QStringLiteral("“Gone Tune” did not run."));
        QCOMPARE(notifications.notifications.constFirst().body,
                 QStringLiteral("Its plugin's executable %1 is missing; install the plugin again.")
                     .arg(m_stub->path(QStringLiteral("gone"))));
    }

    void aSecondRunAndAFailureStatusAreNotified()
    {
        RecordingNotifications notifications;
        QVERIFY(notifications.start());
        const QString id = m_ids.value(QStringLiteral("Road Trip"));
        QVERIFY(m_stub->held().hold());
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QString()}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")).count(u'\n'), 1, generousMs);
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QString()}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(notifications.notifications.size(), 1, generousMs);
        QCOMPARE(notifications.notifications.constFirst().summary,
                 QStringLiteral("“Road Trip” did not run."));
        QCOMPARE(notifications.notifications.constFirst().body,
                 QStringLiteral("It is still running; it can run again when this run has ended."));
        m_stub->held().release();
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("done")).count(u'\n'), 1, generousMs);

        // A plugin that ends with a failure status, started anew so that it exits with 3.
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        QTRY_VERIFY_WITH_TIMEOUT(!HostProcess::isHostOnBus(), generousMs);
        qputenv("VENDEL_STUB_EXIT", "3");
        QVERIFY(serve());
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QString()}).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(notifications.notifications.size(), 2, generousMs);
        QCOMPARE(notifications.notifications.at(1).summary,
                 QStringLiteral("“Road Trip” failed: its plugin ended with exit status 3."));
        QCOMPARE(notifications.notifications.at(1).body,
                 QStringLiteral("%1 failed on vendelplugin://run/%2 (exit status 3).")
                     .arg(StubLaunches::stub(), id));
    }

    void withoutANotificationServiceTheFailureIsOnStandardError()
    {
        const QString id = actionOfRemovedPlugin(QStringLiteral("Gone Tune"));
        QCOMPARE(runnerCall(QStringLiteral("Run"), {id, QString()}).type(), QDBusMessage::ReplyMessage);
        QString output;
        const QString expected =
            QStringLiteral("vendel-host: “Gone Tune” did not run. Its plugin's executable %1 is "
                           "missing; install the plugin again.")
                .arg(m_stub->path(QStringLiteral("gone")));
        QTRY_VERIFY2_WITH_TIMEOUT((output += m_host->serverOutput()).contains(expected), qPrintable(output),
                                  generousMs);
        // And nothing else broke: the runner still answers.
        QCOMPARE(
            valueOf<RemoteMatches>(runnerCall(QStringLiteral("Match"), {QStringLiteral("focus")})).size(), 1);
    }

private:
    bool serve()
    {
        m_host = std::make_unique<HostProcess>(m_stub->dataDirectory());
        const bool serving = m_host->serve();
        if (!serving) {
            qWarning("%s", qPrintable(m_host->serverOutput()));
        }
        return serving;
    }

    // An action of a plugin whose executable is gone.
    QString actionOfRemovedPlugin(const QString& title)
    {
        HostStorage storage(m_stub->dataDirectory());
        storage.recordPlugin({QStringLiteral("gone"), m_stub->path(QStringLiteral("gone"))});
        return storage.createAction(QStringLiteral("gone"), title);
    }

    std::unique_ptr<StubLaunches> m_stub;
    std::unique_ptr<HostProcess> m_host;
    QHash<QString, QString> m_ids;
};

QTEST_GUILESS_MAIN(KRunnerServiceTest)
#include "KRunnerServiceTest.moc"
