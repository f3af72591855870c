// Tests the window's client of the served host on a private session bus: listings, changes, launches, and
// every failure as the sentence the window shows, naming the action.
#include "ActionsClient.h"
#include "HostProcess.h"
#include "HostStorage.h"
#include "StubLaunches.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace VendelHost;
using namespace VendelHost::Testing;

namespace {

const QString stub = StubLaunches::stub();
constexpr int generousMs = 30000;

// Counts the host's LaunchEnded signals, whoever's launches they end.
class LaunchEndCount : public QObject
{
    Q_OBJECT

public:
    LaunchEndCount()
    {
        QDBusConnection::sessionBus().connect(
            QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host"),
            QStringLiteral("org.vendel.Actions1"), QStringLiteral("LaunchEnded"), this, SLOT(ended()));
    }
    int count = 0;

public Q_SLOTS:
    void ended() { ++count; }
};

} // namespace

class ActionsClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_stub = std::make_unique<StubLaunches>();
        m_stub->exportEnvironment();
        m_stub->installStub();
        m_host = std::make_unique<HostProcess>(m_stub->dataDirectory());
        QVERIFY2(m_host->serve(), qPrintable(m_host->serverOutput()));
        m_client = std::make_unique<ActionsClient>(QDBusConnection::sessionBus());
        m_failures = std::make_unique<QSignalSpy>(m_client.get(), &ActionsClient::failed);
        m_statuses = std::make_unique<QSignalSpy>(m_client.get(), &ActionsClient::status);
    }

    void cleanup()
    {
        m_failures.reset();
        m_statuses.reset();
        m_client.reset();
        if (m_host->server().state() == QProcess::Running) {
            QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        }
        QTRY_VERIFY_WITH_TIMEOUT(!HostProcess::isHostOnBus(), generousMs);
        m_host.reset();
        for (const char* name : {"VENDEL_STUB_EXIT", "VENDEL_STUB_CRASH"}) {
            qunsetenv(name);
        }
        m_stub.reset();
    }

    void listsTheActionsAndPlugins()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        QCOMPARE(m_client->actions(),
                 (ActionEntries{{id, QStringLiteral("Road Trip"), 1, QStringLiteral("stub"),
                                 QStringLiteral("Stub Player"), QStringLiteral("stub-player")}}));
        QCOMPARE(m_client->plugins(), (PluginEntries{{QStringLiteral("stub"), QStringLiteral("Stub Player"),
                                                      QStringLiteral("stub-player"), stub}}));
        QCOMPARE(m_failures->size(), 0);
    }

    void creatingMakesTheActionAndOpensItsEditor()
    {
        QVERIFY(list());
        QSignalSpy created(m_client.get(), &ActionsClient::created);
        m_client->create(QStringLiteral("stub"), QStringLiteral("Road Trip"));
        QVERIFY(created.wait(generousMs));
        const QString id = created.constFirst().constFirst().toString();
        const auto action = HostStorage(m_stub->dataDirectory()).action(id);
        QVERIFY(action);
        QCOMPARE(action->ownTitle, QStringLiteral("Road Trip"));
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://edit/%1\n").arg(id), generousMs);
        QTRY_VERIFY_WITH_TIMEOUT(m_client->action(id).has_value(), generousMs);
    }

    void renamingKeepsTheTitleAndAnEmptyOneGivesTheDefaultBack()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        m_client->rename(id, QStringLiteral("Focus"));
        QTRY_COMPARE_WITH_TIMEOUT(HostStorage(m_stub->dataDirectory()).action(id)->ownTitle,
                                  QStringLiteral("Focus"), generousMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_client->action(id)->title, QStringLiteral("Focus"), generousMs);
        m_client->rename(id, QStringLiteral("  "));
        QTRY_COMPARE_WITH_TIMEOUT(HostStorage(m_stub->dataDirectory()).action(id)->ownTitle, QString(),
                                  generousMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_client->action(id)->title, QStringLiteral("Stub Player 1"), generousMs);
        QCOMPARE(m_failures->size(), 0);
    }

    void deletingRemovesTheAction()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        const QString other = newAction(QStringLiteral("Focus"));
        QVERIFY(list());
        m_client->remove(id);
        QTRY_VERIFY_WITH_TIMEOUT(!HostStorage(m_stub->dataDirectory()).action(id), generousMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_client->actions().size(), 1, generousMs);
        QCOMPARE(m_client->actions().constFirst().id, other);
    }

    void aRunIsToldWhenItStartsAndWhenItHasRun()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        QVERIFY(m_stub->held().hold());
        m_client->run(id);
        QTRY_COMPARE_WITH_TIMEOUT(lastStatus(), QStringLiteral("Running “Road Trip”…"), generousMs);
        QTRY_VERIFY_WITH_TIMEOUT(m_client->isRunning(id), generousMs);
        m_stub->held().release();
        QTRY_COMPARE_WITH_TIMEOUT(lastStatus(), QStringLiteral("“Road Trip” has run."), generousMs);
        QVERIFY(!m_client->isRunning(id));
        QCOMPARE(m_stub->contents(QStringLiteral("record")),
                 QStringLiteral("vendelplugin://run/%1\n").arg(id));
        QCOMPARE(m_failures->size(), 0);
    }

    void aMissingExecutableIsNamed()
    {
        const QString copy = m_stub->path(QStringLiteral("gone-plugin"));
        QVERIFY(QFile::copy(stub, copy));
        const QString id = newAction(QStringLiteral("Road Trip"), copy);
        QVERIFY(list());
        QVERIFY(QFile::remove(copy));
        m_client->run(id);
        QCOMPARE(failure(), QStringLiteral("“Road Trip” did not run. Its plugin's executable %1 is missing; "
                                           "install the plugin again.")
                                .arg(copy));
    }

    void anExecutableThatCannotRunIsNamed()
    {
        const QString text = m_stub->path(QStringLiteral("text-plugin"));
        QFile file(text);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        const QString id = newAction(QStringLiteral("Road Trip"), text);
        QVERIFY(list());
        m_client->edit(id);
        QCOMPARE(failure(), QStringLiteral("“Road Trip” could not be opened in its editor. Its plugin's "
                                           "executable %1 cannot be run.")
                                .arg(text));
    }

    void aPluginThatIsNotInstalledIsNamed()
    {
        const QString id = HostStorage(m_stub->dataDirectory())
                               .createAction(QStringLiteral("elsewhere"), QStringLiteral("Far"));
        QVERIFY(list());
        m_client->run(id);
        QCOMPARE(failure(),
                 QStringLiteral("“Far” did not run. Its plugin elsewhere is not installed; plugins "
                                "install themselves when started on their own."));
    }

    void aSecondRunWhileTheFirstIsUnderWayIsRefused()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        QVERIFY(m_stub->held().hold());
        m_client->run(id);
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")).count(u'\n'), 1, generousMs);
        m_client->run(id);
        QCOMPARE(failure(),
                 QStringLiteral("“Road Trip” did not run. It is still running; it can run again when "
                                "this run has ended."));
        m_stub->held().release();
        QTRY_COMPARE_WITH_TIMEOUT(lastStatus(), QStringLiteral("“Road Trip” has run."), generousMs);
        QCOMPARE(m_stub->contents(QStringLiteral("record")).count(u'\n'), 1);
    }

    void theLaunchBeyondTheLimitIsRefused()
    {
        QStringList ids;
        for (int index = 0; index < 9; ++index) {
            ids.append(newAction(QStringLiteral("Action %1").arg(index)));
        }
        QVERIFY(list());
        QVERIFY(m_stub->held().hold());
        for (int index = 0; index < 8; ++index) {
            m_client->run(ids.at(index));
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")).count(u'\n'), 8, generousMs);
        m_client->run(ids.at(8));
        QCOMPARE(failure(),
                 QStringLiteral("“Action 8” did not run. The host is running as many plugins as it "
                                "runs at once; try again when one has ended."));
    }

    void aFailureStatusIsNamed()
    {
        restartHostWith("VENDEL_STUB_EXIT", "3");
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        m_client->run(id);
        QCOMPARE(failure(),
                 QStringLiteral("“Road Trip” failed: its plugin ended with exit status 3. %1 failed on "
                                "vendelplugin://run/%2 (exit status 3).")
                     .arg(stub, id));
        QCOMPARE(lastStatus(), QString());
    }

    void aRunThatDidNotEndByItselfIsNamed()
    {
        restartHostWith("VENDEL_STUB_CRASH", "1");
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        m_client->run(id);
        const QString message = failure();
        QVERIFY2(message.startsWith(QStringLiteral("“Road Trip” did not finish by itself. %1 crashed while "
                                                   "handling vendelplugin://run/%2")
                                        .arg(stub, id)),
                 qPrintable(message));
    }

    void anActionDeletedElsewhereIsNamedAndTheListFollows()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        QVERIFY(HostStorage(m_stub->dataDirectory()).deleteAction(id));
        QSignalSpy listed(m_client.get(), &ActionsClient::listed);
        m_client->edit(id);
        QCOMPARE(failure(),
                 QStringLiteral("“Road Trip” could not be opened in its editor. It no longer exists."));
        QVERIFY(listed.wait(generousMs));
        QVERIFY(m_client->actions().isEmpty());
    }

    void aHostThatCannotBeReachedIsSaid()
    {
        const QString id = newAction(QStringLiteral("Road Trip"));
        QVERIFY(list());
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        QTRY_VERIFY_WITH_TIMEOUT(!HostProcess::isHostOnBus(), generousMs);
        m_client->run(id);
        const QString message = failure();
        QVERIFY2(
            message.startsWith(QStringLiteral("“Road Trip” did not run. The host could not be reached: ")),
            qPrintable(message));
    }

    void theEndsOfOtherClientsLaunchesAreNotOurs()
    {
        restartHostWith("VENDEL_STUB_EXIT", "3");
        const QString theirs = newAction(QStringLiteral("Theirs"));
        const QString ours = newAction(QStringLiteral("Ours"));
        QVERIFY(list());
        LaunchEndCount ends;
        QDBusMessage run = QDBusMessage::createMethodCall(
            QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host"),
            QStringLiteral("org.vendel.Actions1"), QStringLiteral("RunAction"));
        run.setArguments({theirs});
        QDBusConnection other =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("another client"));
        QCOMPARE(other.call(run).type(), QDBusMessage::ReplyMessage);
        QDBusConnection::disconnectFromBus(QStringLiteral("another client"));
        // The client sees that end before ours, which comes later on the same connection.
        QTRY_COMPARE_WITH_TIMEOUT(ends.count, 1, generousMs);
        m_client->run(ours);
        QVERIFY(failure().startsWith(QStringLiteral("“Ours” failed")));
        QTRY_COMPARE_WITH_TIMEOUT(ends.count, 2, generousMs);
        QCOMPARE(m_failures->size(), 0);
    }

private:
    QString newAction(const QString& title, const QString& executable = {})
    {
        HostStorage storage(m_stub->dataDirectory());
        if (!executable.isEmpty()) {
            storage.recordPlugin({QStringLiteral("other"), executable});
            return storage.createAction(QStringLiteral("other"), title);
        }
        return storage.createAction(QStringLiteral("stub"), title);
    }

    bool list()
    {
        QSignalSpy listed(m_client.get(), &ActionsClient::listed);
        m_client->refresh();
        return listed.wait(generousMs);
    }

    // The one failure reported next.
    QString failure()
    {
        if (m_failures->isEmpty() && !m_failures->wait(generousMs)) {
            return QStringLiteral("(no failure reported)");
        }
        return m_failures->takeFirst().constFirst().toString();
    }

    QString lastStatus() const
    {
        return m_statuses->isEmpty() ? QStringLiteral("(none)")
                                     : m_statuses->constLast().constFirst().toString();
    }

    void restartHostWith(const char* name, const char* value)
    {
        QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        QTRY_VERIFY_WITH_TIMEOUT(!HostProcess::isHostOnBus(), generousMs);
        qputenv(name, value);
        QVERIFY2(m_host->serve(), qPrintable(m_host->serverOutput()));
    }

    std::unique_ptr<StubLaunches> m_stub;
    std::unique_ptr<HostProcess> m_host;
    std::unique_ptr<ActionsClient> m_client;
    std::unique_ptr<QSignalSpy> m_failures;
    std::unique_ptr<QSignalSpy> m_statuses;
};

QTEST_GUILESS_MAIN(ActionsClientTest)
#include "ActionsClientTest.moc"
