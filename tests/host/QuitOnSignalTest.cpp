// Tests that a served host ends normally, with its database closed, on SIGTERM and SIGINT.
#include "HostProcess.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace VendelHost::Testing;

class QuitOnSignalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsNormallyOnSignal_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
    }

    void endsNormallyOnSignal()
    {
        QFETCH(int, signal);
        QTemporaryDir directory;
        HostProcess host(directory.path());
        QVERIFY2(host.serve(), qPrintable(host.serverOutput()));
        QVERIFY(::kill(static_cast<pid_t>(host.server().processId()), signal) == 0);
        QVERIFY(host.server().waitForFinished(30000));
        QCOMPARE(host.server().exitStatus(), QProcess::NormalExit);
        QVERIFY2(host.server().exitCode() == 0, qPrintable(host.serverOutput()));
        QTRY_VERIFY(!HostProcess::isHostOnBus());
    }
};

QTEST_GUILESS_MAIN(QuitOnSignalTest)
#include "QuitOnSignalTest.moc"
