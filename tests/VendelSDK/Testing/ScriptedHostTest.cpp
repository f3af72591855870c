// Tests the scripted host: answers from the script and the table, failures, the records of commands and
// command URLs, and that a command other than the scripted one fails the test that sent it.
#include <VendelSDK/Testing/ScriptedHost.h>

#include <VendelSDK/Command.h>
#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include "ErrorCode.h"

#include <QProcess>
#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString prefix = QStringLiteral("    tell application \"Vendel\" to ");

struct ProbeRun
{
    int exitCode = -1;
    QString output;
};

// Runs one test function of the probe in a process of its own.
ProbeRun runProbe(const QString& function)
{
    QProcess probe;
    probe.setProcessChannelMode(QProcess::MergedChannels);
    probe.start(QStringLiteral(SCRIPTED_HOST_PROBE), {function});
    if (!probe.waitForFinished(60000)) {
        probe.kill();
        probe.waitForFinished();
        return {};
    }
    return {probe.exitStatus() == QProcess::NormalExit ? probe.exitCode() : -1,
            QString::fromLocal8Bit(probe.readAll())};
}

} // namespace

class ScriptedHostTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Platform::setMainBundle(Bundle(QStringLiteral("/plugins/p"), QStringLiteral("org.example.p"), {}));
    }
    void cleanup() { Platform::reset(); }

    void scriptedStepsAreAnsweredInOrder()
    {
        ScriptedHost host;
        host.install();
        host.expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(QStringLiteral("{\"n\":1}")))
            .expectSetConfig(QStringLiteral("{\"n\":2}"), QStringLiteral("A1"))
            .expectGetGlobalConfig(ScriptedHost::text(QStringLiteral("{}")))
            .expectIsPluginInstalled(QStringLiteral("/plugins/p"),
                                     ScriptedHost::text(QStringLiteral("true")));
        QCOMPARE(host.remaining(), 4);
        VendelAPI api;
        QCOMPARE(api.getConfig(QStringLiteral("A1")), QStringLiteral("{\"n\":1}"));
        api.setConfig(QStringLiteral("{\"n\":2}"), QStringLiteral("A1"));
        QCOMPARE(api.getGlobalConfig(), QStringLiteral("{}"));
        QVERIFY(api.isPluginInstalled(QStringLiteral("/plugins/p")));
        QCOMPARE(host.remaining(), 0);
        QVERIFY(host.mismatches().isEmpty());
    }

    void commandsAreRecordedExactlyAsSentWithTheirEscaping()
    {
        ScriptedHost host;
        host.install();
        const QString config = QStringLiteral("{\"name\":\"a\\\\b\"}");
        host.expectSetGlobalConfig(config).expectInstallPlugin();
        VendelAPI api;
        api.setGlobalConfig(config);
        api.installPlugin();
        QCOMPARE(
            host.commands(),
            (QStringList{prefix + QStringLiteral("set global config \"{\\\"name\\\":\\\"a\\\\\\\\b\\\"}\" "
                                                 "action bundle id \"org.example.p\""),
                         prefix + QStringLiteral("install plugin")}));
    }

    void tableAnswersItsCommandsAnyNumberOfTimesBesideTheScript()
    {
        ScriptedHost host;
        host.install();
        host.allow(prefix + QStringLiteral("get plugin folder path"),
                   ScriptedHost::text(QStringLiteral("/pl")));
        host.expectInstallPlugin();
        VendelAPI api;
        QCOMPARE(api.getPluginFolderPath(), QStringLiteral("/pl"));
        api.installPlugin();
        QCOMPARE(api.getPluginFolderPath(), QStringLiteral("/pl"));
        QCOMPARE(host.commands().size(), 3);
        QCOMPARE(host.remaining(), 0);
        QVERIFY(host.mismatches().isEmpty());
    }

    void scriptedFailureReachesTheCallerAsAFailedScript()
    {
        ScriptedHost host;
        host.install();
        host.expectGetConfig(QStringLiteral("A1"), ScriptedHost::failure());
        QCOMPARE(errorCodeOf([] { VendelAPI().getConfig(QStringLiteral("A1")); }), qint64(1));
        QVERIFY(host.mismatches().isEmpty());
    }

    void scriptedNothingReachesAReadingCommandAsNoOutput()
    {
        ScriptedHost host;
        host.install();
        host.expectGetConfig(QStringLiteral("A1"), ScriptedHost::nothing());
        QCOMPARE(errorCodeOf([] { VendelAPI().getConfig(QStringLiteral("A1")); }), qint64(2));
    }

    void commandUrlsAreRecordedInsteadOfOpened()
    {
        ScriptedHost host;
        host.install();
        Command(QStringLiteral("ping"), std::nullopt).send();
        Command(QList<Resource>{}).send();
        QCOMPARE(host.commandUrls(), (QStringList{QStringLiteral("vendel://ping"),
                                                  QStringLiteral("vendel://add-resources/%5B%5D")}));
        QVERIFY(host.commands().isEmpty());
    }

    void differingCommandFailsTheRunningTest()
    {
        const ProbeRun run = runProbe(QStringLiteral("differingCommand"));
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("FAIL!  : ScriptedHostProbe::differingCommand()")),
                 qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("get config \"B2\"\" where the script expected")),
                 qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("get config \"A1\"")), qPrintable(run.output));
    }

    void commandBeyondTheScriptFailsTheRunningTest()
    {
        const ProbeRun run = runProbe(QStringLiteral("commandBeyondTheScript"));
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("where the script expected no more commands")),
                 qPrintable(run.output));
    }

    void matchingCommandLeavesTheRunningTestPassing()
    {
        const ProbeRun run = runProbe(QStringLiteral("matchingCommand"));
        QVERIFY2(run.exitCode == 0, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("PASS   : ScriptedHostProbe::matchingCommand()")),
                 qPrintable(run.output));
    }

    void hostThatIsGoneAnswersEveryCommandAsAFailure()
    {
        {
            ScriptedHost host;
            host.install();
            host.allow(prefix + QStringLiteral("install plugin"), ScriptedHost::nothing());
        }
        QCOMPARE(errorCodeOf([] { VendelAPI().installPlugin(); }), qint64(1));
    }
};

QTEST_GUILESS_MAIN(ScriptedHostTest)
#include "ScriptedHostTest.moc"
