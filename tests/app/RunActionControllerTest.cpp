// Tests a run from the stored record to the player's scripts, its two messages, and the final termination.
#include "RunActionController.h"

#include "TestPlatform.h"

#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString getConfig = QStringLiteral("    tell application \"Vendel\" to get config \"A1\"");

// A host that stores one record and a player that does what it is told.
void answerWithRecord(TestPlatform& platform, const QString& record)
{
    platform.engine->responder = [record](const QString& source) -> ScriptOutcome {
        if (source.contains(QStringLiteral("get config"))) {
            return record;
        }
        return ScriptNoResult{};
    };
}

QStringList musicScripts(const TestPlatform& platform)
{
    QStringList scripts;
    for (const QString& source : platform.engine->sources) {
        if (source.startsWith(QStringLiteral("tell application \"Music\""))) {
            scripts.append(source);
        }
    }
    return scripts;
}

} // namespace

class RunActionControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pauseRecordRunsOnlyThePauseScriptThenTerminates()
    {
        TestPlatform platform;
        answerWithRecord(platform, QStringLiteral("{\"action\":1,\"shouldShuffle\":false}"));
        RunActionController(QStringLiteral("A1")).run();
        QCOMPARE(platform.engine->sources.constFirst(), getConfig);
        QCOMPARE(musicScripts(platform), QStringList{QStringLiteral("tell application \"Music\" to pause")});
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void playRecordRunsShuffleOffThenPlayThenTerminates()
    {
        TestPlatform platform;
        answerWithRecord(platform,
                         QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":false}"));
        RunActionController(QStringLiteral("A1")).run();
        QCOMPARE(musicScripts(platform),
                 (QStringList{QStringLiteral("tell application \"Music\" to set shuffle enabled to false"),
                              QStringLiteral("tell application \"Music\" to play playlist \"Focus\"")}));
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void recordWithoutNameShowsPlaylistCouldNotBeRead_data()
    {
        QTest::addColumn<QString>("record");
        QTest::newRow("no name") << QStringLiteral("{\"action\":0,\"shouldShuffle\":true}");
        QTest::newRow("new action, empty text") << QString();
        QTest::newRow("undecodable") << QStringLiteral("{\"action\":5}");
    }

    void recordWithoutNameShowsPlaylistCouldNotBeRead()
    {
        QFETCH(QString, record);
        TestPlatform platform;
        answerWithRecord(platform, record);
        RunActionController(QStringLiteral("A1")).run();
        QVERIFY(musicScripts(platform).isEmpty());
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst().messageText,
                 QStringLiteral("Playlist could not be read"));
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void unreachableHostShowsTwoAlertsInTurnAndNoScript()
    {
        TestPlatform platform;
        platform.engine->fallback = ScriptErrorRecord{-600, QStringLiteral("x"), QStringLiteral("x")};
        RunActionController(QStringLiteral("A1")).run();
        QVERIFY(musicScripts(platform).isEmpty());
        QCOMPARE(platform.alerts->alerts.size(), 2);
        QCOMPARE(platform.alerts->alerts.at(0).messageText,
                 QStringLiteral("Could not read action data in Vendel."));
        QCOMPARE(platform.alerts->alerts.at(1).messageText,
                 QStringLiteral("Could not read action configuration"));
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void failedPlayerScriptStillTerminates()
    {
        TestPlatform platform;
        platform.engine->responder = [](const QString& source) -> ScriptOutcome {
            if (source.contains(QStringLiteral("get config"))) {
                return QStringLiteral("{\"action\":0,\"name\":\"Gone\",\"shouldShuffle\":true}");
            }
            if (source.contains(QStringLiteral("play playlist"))) {
                return ScriptErrorRecord{-1728,
                                         QStringLiteral("Music got an error: Can’t get playlist \"Gone\"."),
                                         QStringLiteral("Can’t get playlist \"Gone\".")};
            }
            return ScriptNoResult{};
        };
        RunActionController(QStringLiteral("A1")).run();
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst().messageText,
                 QStringLiteral("Can’t get playlist \"Gone\"."));
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void runErrorIsInTheApplicationsDomainWithCodeZero()
    {
        TestPlatform platform;
        RunActionController::showRunError(QStringLiteral("Playlist could not be read"));
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst().messageText,
                 QStringLiteral("Playlist could not be read"));
        QCOMPARE(platform.alerts->alerts.constFirst().informativeText, QString());
    }

    void recordIsWrittenBackUnchangedAtTermination()
    {
        TestPlatform platform;
        answerWithRecord(platform, QStringLiteral("{\"action\":1,\"shouldShuffle\":false}"));
        RunActionController(QStringLiteral("A1")).run();
        platform.services->terminateNow();
        QCOMPARE(platform.engine->sources.constLast(),
                 QStringLiteral("    tell application \"Vendel\" to set config "
                                "\"{\\\"action\\\":1,\\\"shouldShuffle\\\":false}\" action \"A1\""));
    }
};

QTEST_GUILESS_MAIN(RunActionControllerTest)
#include "RunActionControllerTest.moc"
