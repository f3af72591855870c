// Tests the plugin-wide provider against a fake host: the "global config" commands under the bundle
// identifier, the type's own default, coalesced writes, the alerts and the write at termination.
#include <VendelSDK/GlobalConfigProvider.h>

#include "FakeHost.h"
#include "SampleConfig.h"
#include "TestPlatform.h"

#include <QTest>

#include <memory>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

namespace {

const QString bundleID = QStringLiteral("org.vendel.test-plugin");
const QString readTitle = QStringLiteral("Could not read action data in Vendel.");

} // namespace

class GlobalConfigProviderTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestPlatform> platform;
    std::unique_ptr<FakeHost> host;

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

    void creationAsksTheHostForTheConfigurationOfTheBundle()
    {
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        QVERIFY(provider);
        QCOMPARE(platform->engine->sources,
                 QStringList{QStringLiteral(
                     "    tell application \"Vendel\" to get global config \"org.vendel.test-plugin\"")});
        QVERIFY(provider->appTerminationObserver());
        QVERIFY(!provider->writeAction());
    }

    void hostsTextIsDecodedIntoConfig()
    {
        host->globalConfigs.insert(bundleID, QStringLiteral("{\"count\":2,\"text\":\"global\"}"));
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        QVERIFY(provider);
        QCOMPARE(provider->config, (SampleConfig{QStringLiteral("global"), 2}));
    }

    void hostAnsweringTheEmptyTextGivesTheTypesDefaultAndNoAlert()
    {
        host->globalConfigs.insert(bundleID, QString());
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        QVERIFY(provider);
        QCOMPARE(provider->config, SampleConfig{});
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void jsonOfAnotherShapeGivesTheTypesDefaultSilently()
    {
        host->globalConfigs.insert(bundleID, QStringLiteral("{\"action\":0,\"shouldShuffle\":true}"));
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        QVERIFY(provider);
        QCOMPARE(provider->config, SampleConfig{});
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void unreachableHostShowsTheReadAlertAndYieldsNoProvider()
    {
        host->failReads = true;
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        QVERIFY(!provider);
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.first(),
                 (Alert{readTitle, QStringLiteral("Could not run script"), {QStringLiteral("OK")}}));
    }

    void savesAreWrittenOnceASecondAfterTheLastUnderTheBundleIdentifier()
    {
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        provider->config.count = 1;
        provider->save();
        QCOMPARE(provider->writeAction()->interval, 1.0);
        platform->scheduler->advance(300ms);
        provider->config.count = 2;
        provider->save();
        platform->scheduler->advance(999ms);
        QVERIFY(host->writes.isEmpty());
        platform->scheduler->advance(1ms);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(platform->engine->sources.last(),
                 QStringLiteral("    tell application \"Vendel\" to set global config "
                                "\"{\\\"count\\\":2,\\\"text\\\":\\\"\\\"}\" action bundle id "
                                "\"org.vendel.test-plugin\""));
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.first().key, bundleID);
    }

    void failedDelayedWriteShowsTheReadTitleNotTheSaveTitle()
    {
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        host->failWrites = true;
        provider->save();
        platform->scheduler->advance(1s);
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.first().messageText, readTitle);
        QVERIFY(platform->engine->sources.last().contains(QStringLiteral("set global config")));
    }

    void writeAtTerminationIsSynchronousAndSwallowsErrors()
    {
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        provider->config.text = QStringLiteral("last");
        platform->services->terminateNow();
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).text, QStringLiteral("last"));

        const auto failing = GlobalConfigProvider<SampleConfig>::create();
        host->failWrites = true;
        const qsizetype sourcesBefore = platform->engine->sources.size();
        platform->services->terminateNow();
        QCOMPARE(platform->engine->sources.size(), sourcesBefore + 1);
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void providerDroppedByItsOwnerLivesUntilTerminationAndIsThenReleased()
    {
        std::weak_ptr<GlobalConfigProvider<SampleConfig>> watched;
        {
            const auto provider = GlobalConfigProvider<SampleConfig>::create();
            provider->config.count = 5;
            provider->save();
            watched = provider;
        }
        QVERIFY(!watched.expired());
        platform->services->terminateNow();
        QVERIFY(watched.expired());
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(decodeConfig(host->writes.first().text, SampleConfig{}).count, 5);
    }

    void providerIsLetGoWhenTheServicesEndWithoutAnnouncingTermination()
    {
        std::weak_ptr<GlobalConfigProvider<SampleConfig>> watched =
            GlobalConfigProvider<SampleConfig>::create();
        QVERIFY(!watched.expired());
        auto replacement = std::make_unique<TestApplicationServices>();
        platform->services = replacement.get();
        Platform::setApplicationServices(std::move(replacement));
        QVERIFY(watched.expired());
        QVERIFY(host->writes.isEmpty());
    }
};

QTEST_GUILESS_MAIN(GlobalConfigProviderTest)
#include "GlobalConfigProviderTest.moc"
