// Tests the player's exact scripts, their order, and how a failed script becomes the alert the user sees.
#include "MusicAppController.h"

#include "TestPlatform.h"

#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

class MusicAppControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void playRunsShuffleThenPlayScripts()
    {
        TestPlatform platform;
        MusicAppController().play(QStringLiteral("Focus"), true);
        QCOMPARE(platform.engine->sources,
                 (QStringList{QStringLiteral("tell application \"Music\" to set shuffle enabled to true"),
                              QStringLiteral("tell application \"Music\" to play playlist \"Focus\"")}));
        QVERIFY(platform.alerts->alerts.isEmpty());
    }

    void shuffleOffEndsInFalse()
    {
        TestPlatform platform;
        MusicAppController().play(QStringLiteral("Focus"), false);
        QCOMPARE(platform.engine->sources.constFirst(),
                 QStringLiteral("tell application \"Music\" to set shuffle enabled to false"));
    }

    void emptyNameIsPlayedAsEmptyLiteral()
    {
        TestPlatform platform;
        MusicAppController().play(QString(), false);
        QCOMPARE(platform.engine->sources.constLast(),
                 QStringLiteral("tell application \"Music\" to play playlist \"\""));
    }

    void pauseScriptIsExact()
    {
        QCOMPARE(MusicAppController::pauseScript(), QStringLiteral("tell application \"Music\" to pause"));
    }

    void quotedNameRunsNoPlayScriptAndAlertsAfterShuffle()
    {
        TestPlatform platform;
        int scriptsBeforeAlert = -1;
        platform.alerts->onAlert = [&](const Alert&) {
            scriptsBeforeAlert = int(platform.engine->sources.size());
        };
        MusicAppController().play(QStringLiteral("My \"Best\""), true);
        QCOMPARE(platform.engine->sources,
                 QStringList{QStringLiteral("tell application \"Music\" to set shuffle enabled to true")});
        QCOMPARE(scriptsBeforeAlert, 1);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QVERIFY(platform.alerts->alerts.constFirst().messageText.startsWith(
            QStringLiteral("Expected end of line")));
    }

    void injectingNameNeverReachesTheEngine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("quote") << QStringLiteral("x\" & (do shell script \"id\") & \"");
        QTest::newRow("backslash") << QStringLiteral("a\\");
        QTest::newRow("line break") << QStringLiteral("a\ntell application \"Vendel\" to install plugin");
    }

    void injectingNameNeverReachesTheEngine()
    {
        QFETCH(QString, name);
        TestPlatform platform;
        MusicAppController().play(name, false);
        QCOMPARE(platform.engine->sources.size(), 1);
        QCOMPARE(platform.alerts->alerts.size(), 1);
    }

    void failedShuffleIsFollowedByPlayAnyway()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptErrorRecord{-600, QStringLiteral("Application isn’t running."),
                                                      QStringLiteral("Application isn’t running.")}};
        MusicAppController().play(QStringLiteral("Focus"), true);
        QCOMPARE(platform.engine->sources.size(), 2);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst().messageText,
                 QStringLiteral("Application isn’t running."));
    }

    void failureWhoseRecordIsNotKeyedByTextShowsNothingAndReturns()
    {
        TestPlatform platform;
        ScriptErrorRecord unreadable{-1728, QStringLiteral("Can’t get playlist."), std::nullopt};
        unreadable.keyedByText = false;
        platform.engine->fallback = unreadable;
        MusicAppController().play(QStringLiteral("Focus"), true);
        QCOMPARE(platform.engine->sources.size(), 2);
        QVERIFY(platform.alerts->alerts.isEmpty());
    }

    void failureBecomesAnOsStatusErrorWithRecordTexts()
    {
        const Error error = MusicAppController::errorFrom(
            {-1728, QStringLiteral("Music got an error: Can’t get playlist \"X\"."),
             QStringLiteral("Can’t get playlist \"X\".")});
        QCOMPARE(error.domain(), QStringLiteral("NSOSStatusErrorDomain"));
        QCOMPARE(error.code(), -1728);
        QCOMPARE(error.localizedDescription(), QStringLiteral("Can’t get playlist \"X\"."));
        QCOMPARE(error.localizedFailureReason(),
                 QStringLiteral("Music got an error: Can’t get playlist \"X\"."));
    }

    void messageWithoutBriefMessageLeavesNoDescriptionKey()
    {
        const Error error = MusicAppController::errorFrom({-10000, QStringLiteral("refused"), std::nullopt});
        QVERIFY(error.userInfo().contains(QString::fromLatin1(localizedFailureReasonKey)));
        QVERIFY(!error.userInfo().contains(QString::fromLatin1(localizedDescriptionKey)));
        QCOMPARE(error.localizedFailureReason(), QStringLiteral("refused"));
    }

    void recordWithoutNumberGivesCodeMinus1753()
    {
        const Error error = MusicAppController::errorFrom({std::nullopt, std::nullopt, std::nullopt});
        QCOMPARE(error.code(), -1753);
        QVERIFY(!error.userInfo().contains(QString::fromLatin1(localizedFailureReasonKey)));
    }

    void successShowsNoAlert()
    {
        TestPlatform platform;
        MusicAppController().runScript(MusicAppController::pauseScript());
        QCOMPARE(platform.engine->sources, QStringList{MusicAppController::pauseScript()});
        QVERIFY(platform.alerts->alerts.isEmpty());
    }
};

QTEST_GUILESS_MAIN(MusicAppControllerTest)
#include "MusicAppControllerTest.moc"
