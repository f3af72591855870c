// Tests the served host's launch rules in one process: one run per action, at most eight plugins, the run
// time limit, and failures to start, with the stub plugin held on a FIFO while a test looks.
#include "Launches.h"
#include "HeldLaunches.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace VendelHost;
using namespace std::chrono_literals;

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);
constexpr int generousMs = 30000;

Launches::Request run(const QString& actionID, const QString& executable = stub)
{
    return {Launches::Verb::Run, actionID, QStringLiteral("stub"), executable,
            QStringLiteral("Title ") + actionID};
}

// What start() refused with, or -1 when it started.
int refusalOf(Launches& launches, const Launches::Request& request, QString* message = nullptr)
{
    try {
        launches.start(request);
        return -1;
    } catch (const Launches::Refusal& refusal) {
        if (message != nullptr) {
            *message = refusal.message;
        }
        return refusal.kind;
    }
}

} // namespace

class LaunchesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_held = std::make_unique<Testing::HeldLaunches>(m_directory->filePath(QStringLiteral("hold")));
        qputenv("VENDEL_STUB_RECORD", QFile::encodeName(recordPath()));
        qputenv("VENDEL_STUB_HOLD", QFile::encodeName(m_held->path()));
    }

    void cleanup()
    {
        m_held.reset();
        for (const char* name : {"VENDEL_STUB_RECORD", "VENDEL_STUB_HOLD", "VENDEL_STUB_EXIT"}) {
            qunsetenv(name);
        }
        m_directory.reset();
    }

    void eachLaunchIsReportedOnceWithItsUrlAndStatus()
    {
        Launches launches(60s);
        QSignalSpy ended(&launches, &Launches::ended);
        const quint64 run = launches.start(::run(QStringLiteral("A")));
        const quint64 configure = launches.start(
            {Launches::Verb::Configure, {}, QStringLiteral("stub"), stub, QStringLiteral("Stub")});
        QVERIFY(configure != run);
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 2, generousMs);
        QCOMPARE(launches.running(), 0);
        QStringList seen;
        for (const QList<QVariant>& signal : ended) {
            const auto outcome = signal.constFirst().value<Launches::Outcome>();
            QCOMPARE(outcome.exitStatus, 0);
            QCOMPARE(outcome.failure, QString());
            seen.append(QStringLiteral("%1 %2").arg(outcome.launch).arg(Launches::url(outcome.request)));
        }
        seen.sort();
        QCOMPARE(seen, (QStringList{QStringLiteral("%1 vendelplugin://run/A").arg(run),
                                    QStringLiteral("%1 vendelplugin://configure/stub").arg(configure)}));
    }

    void aFailedEndIsReportedWithItsStatus()
    {
        qputenv("VENDEL_STUB_EXIT", "2");
        Launches launches(60s);
        QSignalSpy ended(&launches, &Launches::ended);
        launches.start(
            {Launches::Verb::Edit, QStringLiteral("A"), QStringLiteral("stub"), stub, QStringLiteral("A")});
        QVERIFY(ended.wait(generousMs));
        const auto outcome = ended.constFirst().constFirst().value<Launches::Outcome>();
        QCOMPARE(outcome.exitStatus, 2);
        QCOMPARE(outcome.failure,
                 QStringLiteral("%1 failed on vendelplugin://edit/A (exit status 2).").arg(stub));
    }

    void aSecondRunOfTheSameActionIsRefusedWhileTheFirstRuns()
    {
        QVERIFY(m_held->hold());
        Launches launches(60s);
        QSignalSpy ended(&launches, &Launches::ended);
        launches.start(run(QStringLiteral("A")));
        QTRY_COMPARE_WITH_TIMEOUT(record(), QStringLiteral("vendelplugin://run/A\n"), generousMs);
        QString message;
        QCOMPARE(refusalOf(launches, run(QStringLiteral("A")), &message), Launches::Refusal::AlreadyRunning);
        QCOMPARE(message,
                 QStringLiteral("\"Title A\" is running already; it can run again when this run has ended."));
        // Another action runs, and the same action may still be edited.
        QCOMPARE(refusalOf(launches, run(QStringLiteral("B"))), -1);
        QCOMPARE(refusalOf(launches, {Launches::Verb::Edit, QStringLiteral("A"), QStringLiteral("stub"), stub,
                                      QStringLiteral("A")}),
                 -1);
        QVERIFY(launches.isRunning(QStringLiteral("A")));
        QCOMPARE(launches.running(), 3);
        m_held->release();
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 3, generousMs);
        QVERIFY(!launches.isRunning(QStringLiteral("A")));
        QCOMPARE(refusalOf(launches, run(QStringLiteral("A"))), -1);
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 4, generousMs);
    }

    void theNinthPluginAtOnceIsRefused()
    {
        QVERIFY(m_held->hold());
        Launches launches(60s);
        QSignalSpy ended(&launches, &Launches::ended);
        for (int index = 0; index < Launches::maxProcesses; ++index) {
            QCOMPARE(refusalOf(launches, run(QString::number(index))), -1);
        }
        QTRY_COMPARE_WITH_TIMEOUT(record().count(u'\n'), Launches::maxProcesses, generousMs);
        QString message;
        QCOMPARE(refusalOf(launches, run(QStringLiteral("ninth")), &message), Launches::Refusal::TooMany);
        QCOMPARE(message,
                 QStringLiteral("8 plugins are running, the most the host starts at once, so \"Title ninth\" "
                                "was not started; try again when one has ended."));
        QCOMPARE(
            refusalOf(launches,
                      {Launches::Verb::Configure, {}, QStringLiteral("stub"), stub, QStringLiteral("Stub")}),
            Launches::Refusal::TooMany);
        QCOMPARE(record().count(u'\n'), Launches::maxProcesses);
        m_held->release();
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), Launches::maxProcesses, generousMs);
        QCOMPARE(refusalOf(launches, run(QStringLiteral("ninth"))), -1);
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), Launches::maxProcesses + 1, generousMs);
    }

    void aRunPastTheTimeLimitIsStoppedAndReported()
    {
        QVERIFY(m_held->hold());
        Launches launches(50ms);
        QSignalSpy ended(&launches, &Launches::ended);
        launches.start(run(QStringLiteral("A")));
        // An edit has no time limit: it is still running when the run has been stopped.
        launches.start(
            {Launches::Verb::Edit, QStringLiteral("B"), QStringLiteral("stub"), stub, QStringLiteral("B")});
        QVERIFY(ended.wait(generousMs));
        const auto outcome = ended.constFirst().constFirst().value<Launches::Outcome>();
        QCOMPARE(Launches::url(outcome.request), QStringLiteral("vendelplugin://run/A"));
        QCOMPARE(outcome.exitStatus, -1);
        QCOMPARE(outcome.failure,
                 QStringLiteral("%1 did not finish vendelplugin://run/A within 0.05 s; it was stopped.")
                     .arg(stub));
        QCOMPARE(launches.running(), 1);
        QVERIFY(!launches.isRunning(QStringLiteral("A")));
        m_held->release();
        QVERIFY(ended.wait(generousMs));
        QCOMPARE(ended.at(1).constFirst().value<Launches::Outcome>().failure, QString());
    }

    void aPluginThatCannotStartIsRefusedAndCountsNothing_data()
    {
        QTest::addColumn<QString>("executable");
        QTest::addColumn<QString>("expected");
        QTest::newRow("missing") << QStringLiteral("/nonexistent/plugin")
                                 << QStringLiteral(
                                        "The plugin's executable /nonexistent/plugin is missing; install the "
                                        "plugin again.");
        QTest::newRow("a folder") << QStringLiteral("/")
                                  << QStringLiteral("The plugin's executable / cannot be run.");
    }

    void aPluginThatCannotStartIsRefusedAndCountsNothing()
    {
        QFETCH(QString, executable);
        QFETCH(QString, expected);
        Launches launches(60s);
        QString message;
        QCOMPARE(refusalOf(launches, run(QStringLiteral("A"), executable), &message),
                 Launches::Refusal::FailedToStart);
        QCOMPARE(message, expected);
        QCOMPARE(launches.running(), 0);
        QVERIFY(!launches.isRunning(QStringLiteral("A")));
    }

private:
    QString recordPath() const { return m_directory->filePath(QStringLiteral("record")); }

    QString record() const
    {
        QFile file(recordPath());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Testing::HeldLaunches> m_held;
};

QTEST_GUILESS_MAIN(LaunchesTest)
#include "LaunchesTest.moc"
