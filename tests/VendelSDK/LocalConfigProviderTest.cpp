// Tests the per-action provider against a fake host: reading once, coalesced writes, the alerts, the write
// at termination, and that a provider outlives its owner until termination and no longer.
#include <VendelSDK/LocalConfigProvider.h>

#include "FakeHost.h"
#include "SampleConfig.h"
#include "TestPlatform.h"

#include <QTest>

#include <memory>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

namespace {

const QString actionID = QStringLiteral("A-1");
const QString readTitle = QStringLiteral("Could not read action data in Vendel.");
const SampleConfig fallback{QStringLiteral("fallback"), -1};

} // namespace

class LocalConfigProviderTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestPlatform> platform;
    std::unique_ptr<FakeHost> host;

    std::shared_ptr<LocalConfigProvider<SampleConfig>> makeProvider()
    {
        return LocalConfigProvider<SampleConfig>::create(actionID, fallback);
    }

private Q_SLOTS:
    void init()
    {
        platform = std::make_unique<TestPlatform>();
        host = std::make_unique<FakeHost>(*platform->engine);
    }

    // Termination lets go of every provider that a test left behind.
    void cleanup()
    {
        platform->services->terminateNow();
        platform.reset();
        host.reset();
    }

    void creationAsksTheHostForTheActionsConfiguration()
    {
        const auto provider = makeProvider();
        QVERIFY(provider);
        QCOMPARE(platform->engine->sources,
                 QStringList{QStringLiteral("    tell application \"Vendel\" to get config \"A-1\"")});
        QCOMPARE(provider->actionID(), actionID);
        QCOMPARE(provider->defaultConfig(), fallback);
        QVERIFY(provider->appTerminationObserver());
        QVERIFY(!provider->writeAction());
    }

    void hostsTextIsDecodedIntoConfig()
    {
        host->configs.insert(actionID, QStringLiteral("{\"count\":7,\"text\":\"stored\"}"));
        const auto provider = makeProvider();
        QVERIFY(provider);
        QCOMPARE(provider->config, (SampleConfig{QStringLiteral("stored"), 7}));
    }

    void hostAnsweringTheEmptyTextGivesTheDefaultAndNoAlert()
    {
        const auto provider = makeProvider();
        QVERIFY(provider);
        QCOMPARE(provider->config, fallback);
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void hostTextHoldingNoConfigurationGivesTheDefaultSilently_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("not JSON") << QStringLiteral("{oops");
        QTest::newRow("array") << QStringLiteral("[]");
        QTest::newRow("other shape") << QStringLiteral("{\"action\":1}");
        QTest::newRow("wrong type") << QStringLiteral("{\"text\":\"a\",\"count\":\"1\"}");
    }

    void hostTextHoldingNoConfigurationGivesTheDefaultSilently()
    {
        QFETCH(QString, text);
        host->configs.insert(actionID, text);
        const auto provider = makeProvider();
        QVERIFY(provider);
        QCOMPARE(provider->config, fallback);
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void unreachableHostShowsTheReadAlertAndYieldsNoProvider()
    {
        host->failReads = true;
        const auto provider = makeProvider();
        QVERIFY(!provider);
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.first(),
                 (Alert{readTitle, QStringLiteral("Could not run script"), {QStringLiteral("OK")}}));
    }

    void hostAnsweringNothingShowsTheReadAlertAndYieldsNoProvider()
    {
        host->answerReadsWithNothing = true;
        const auto provider = makeProvider();
        QVERIFY(!provider);
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.first().messageText, readTitle);
        QCOMPARE(platform->alerts->alerts.first().informativeText,
                 QStringLiteral("Could not read data from script output"));
    }

    void actionIDThatCouldEndTheStringShowsTheReadAlertAndYieldsNoProvider()
    {
        const auto provider = LocalConfigProvider<SampleConfig>::create(QStringLiteral("A\"1"), fallback);
        QVERIFY(!provider);
        QVERIFY(platform->engine->sources.isEmpty());
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.first().messageText, readTitle);
    }

    void assigningConfigWritesNothing()
    {
        const auto provider = makeProvider();
        provider->config.count = 5;
        platform->scheduler->advance(60s);
        QVERIFY(host->writes.isEmpty());
    }

    void firstSaveMakesTheWriteActionWithAnIntervalOfOneSecond()
    {
        const auto provider = makeProvider();
        QVERIFY(!provider->writeAction());
        provider->save();
        QVERIFY(provider->writeAction());
        QCOMPARE(provider->writeAction()->interval, 1.0);
        auto* const made = provider->writeAction();
        provider->save();
        QCOMPARE(provider->writeAction(), made);
    }

    void tenSavesHundredMsApartWriteOnceASecondAfterTheLastWithTheFinalValue()
    {
        const auto provider = makeProvider();
        for (int save = 0; save < 10; ++save) {
            if (save > 0) {
                platform->scheduler->advance(100ms);
            }
            provider->config.count = save;
            provider->save();
        }
        platform->scheduler->advance(999ms);
        QVERIFY(host->writes.isEmpty());
        platform->scheduler->advance(1ms);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.first().key, actionID);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}),
                 (SampleConfig{QStringLiteral("fallback"), 9}));
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
    }

    void savesAt0And300And600MsWriteOnceAt1600Ms()
    {
        const auto provider = makeProvider();
        provider->save();
        platform->scheduler->advance(300ms);
        provider->save();
        platform->scheduler->advance(300ms);
        provider->save();
        platform->scheduler->advance(999ms);
        QVERIFY(host->writes.isEmpty());
        platform->scheduler->advance(1ms);
        QCOMPARE(host->writes.size(), 1);
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
    }

    void twoSavesInTheSameInstantWriteTwice()
    {
        const auto provider = makeProvider();
        provider->save();
        provider->save();
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 2);
    }

    void mainThreadHeldUpPastTheChecksOfEarlierSavesWritesForEachOfThem()
    {
        const auto provider = makeProvider();
        provider->save();
        platform->scheduler->advance(300ms);
        provider->save();
        platform->scheduler->holdUp(1500ms);
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 2);
    }

    void providerReleasedBeforeItsWriteIsDueStillWritesOnce()
    {
        std::weak_ptr<LocalConfigProvider<SampleConfig>> watched;
        {
            const auto provider = makeProvider();
            provider->config.count = 3;
            provider->save();
            watched = provider;
        }
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
        QVERIFY(!watched.expired());
    }

    void writeCarriesTheValueAssignedAfterTheLastSave()
    {
        const auto provider = makeProvider();
        provider->config.text = QStringLiteral("at save");
        provider->save();
        provider->config.text = QStringLiteral("after save");
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).text, QStringLiteral("after save"));
    }

    void quotesAndBackslashesReachTheHostEscapedAndComeBackUnchanged()
    {
        const SampleConfig tricky{QStringLiteral("say \"hi\" to C:\\dir\\ and \\\"both\\\""), 3};
        {
            const auto provider = makeProvider();
            provider->config = tricky;
            provider->save();
            platform->scheduler->advance(1s);
            QCOMPARE(host->writes.size(), 1);
        }
        // The JSON text escapes once; the script literal escapes that again.
        QCOMPARE(platform->engine->sources.last(),
                 QStringLiteral("    tell application \"Vendel\" to set config "
                                "\"{\\\"count\\\":3,\\\"text\\\":\\\"say \\\\\\\"hi\\\\\\\" to "
                                "C:\\\\\\\\dir\\\\\\\\ and \\\\\\\\\\\\\\\"both\\\\\\\\\\\\\\\"\\\"}\" "
                                "action \"A-1\""));
        QCOMPARE(host->configs.value(actionID), encodeConfig(tricky));
        const auto reread = makeProvider();
        QVERIFY(reread);
        QCOMPARE(reread->config, tricky);
    }

    void failedDelayedWriteShowsTheReadTitleNotTheSaveTitleAndKeepsTheValue()
    {
        const auto provider = makeProvider();
        host->failWrites = true;
        provider->config.count = 11;
        provider->save();
        platform->scheduler->advance(1s);
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.first(),
                 (Alert{readTitle, QStringLiteral("Could not run script"), {QStringLiteral("OK")}}));
        QCOMPARE(provider->config.count, 11);
        QVERIFY(platform->engine->sources.last().contains(QStringLiteral("set config")));
    }

    void unencodableConfigIsWrittenAsTheEmptyText()
    {
        const auto provider = LocalConfigProvider<UnencodableConfig>::create(actionID, UnencodableConfig{});
        QVERIFY(provider);
        provider->save();
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(platform->engine->sources.last(),
                 QStringLiteral("    tell application \"Vendel\" to set config \"\" action \"A-1\""));
        QCOMPARE(host->writes.first().text, QString());
    }

    void writeAtTerminationIsSynchronousAndCarriesTheCurrentValue()
    {
        const auto provider = makeProvider();
        provider->config.count = 21;
        platform->services->terminateNow();
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.first().key, actionID);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).count, 21);
    }

    void failedWriteAtTerminationShowsNoAlert()
    {
        const auto provider = makeProvider();
        host->failWrites = true;
        platform->services->terminateNow();
        QVERIFY(platform->engine->sources.last().contains(QStringLiteral("set config")));
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void savePendingAtTerminationIsWrittenOnceByTheTerminationWrite()
    {
        const auto provider = makeProvider();
        provider->config.count = 4;
        provider->save();
        platform->services->terminateNow();
        QCOMPARE(host->writes.size(), 1);
        provider->save();
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
    }

    void pendingSaveIsWrittenAtOnceWhenPendingWritesAreCarriedOut()
    {
        const auto provider = makeProvider();
        provider->config.count = 12;
        provider->save();
        ConfigWriteBack::carryOutPendingWrites();
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).count, 12);
        QVERIFY(platform->alerts->alerts.isEmpty());
        // Carried out once: asking again finds nothing pending.
        ConfigWriteBack::carryOutPendingWrites();
        QCOMPARE(host->writes.size(), 1);
    }

    void carryingOutPendingWritesWritesNothingWithoutASave()
    {
        const auto provider = makeProvider();
        provider->config.count = 13;
        ConfigWriteBack::carryOutPendingWrites();
        QVERIFY(host->writes.isEmpty());
    }

    void failedPendingWriteCarriedOutShowsNoAlert()
    {
        const auto provider = makeProvider();
        provider->save();
        host->failWrites = true;
        ConfigWriteBack::carryOutPendingWrites();
        QVERIFY(platform->engine->sources.last().contains(QStringLiteral("set config")));
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void providerDroppedByItsOwnerLivesUntilTerminationAndIsThenReleased()
    {
        std::weak_ptr<LocalConfigProvider<SampleConfig>> watched;
        {
            const auto provider = makeProvider();
            provider->config.count = 8;
            watched = provider;
        }
        QVERIFY(!watched.expired());
        platform->services->terminateNow();
        QVERIFY(watched.expired());
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).count, 8);
    }

    void providerWithAPendingSaveDroppedByItsOwnerStillWrites()
    {
        std::weak_ptr<LocalConfigProvider<SampleConfig>> watched;
        {
            const auto provider = makeProvider();
            provider->config.count = 6;
            provider->save();
            watched = provider;
        }
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).count, 6);
        platform->services->terminateNow();
        QVERIFY(watched.expired());
    }

    void providerIsLetGoWithoutAWriteWhenTheServicesEndWithoutAnnouncingTermination()
    {
        std::weak_ptr<LocalConfigProvider<SampleConfig>> watched;
        {
            const auto provider = makeProvider();
            provider->save();
            watched = provider;
        }
        auto replacement = std::make_unique<TestApplicationServices>();
        platform->services = replacement.get();
        Platform::setApplicationServices(std::move(replacement));
        QVERIFY(watched.expired());
        platform->scheduler->advance(60s);
        QVERIFY(host->writes.isEmpty());
    }

    void providerKeptByItsOwnerAfterTerminationIsReleasedWithTheOwner()
    {
        auto provider = makeProvider();
        provider->save();
        platform->services->terminateNow();
        const std::weak_ptr<LocalConfigProvider<SampleConfig>> watched = provider;
        provider.reset();
        QVERIFY(watched.expired());
    }
};

QTEST_GUILESS_MAIN(LocalConfigProviderTest)
#include "LocalConfigProviderTest.moc"
