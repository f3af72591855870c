// Tests the plugin-wide provider against a fake host: the "global config" commands under the bundle
// identifier, the type's own default, coalesced writes, the alerts and the write at termination.
#include <VendelSDK/GlobalConfigProvider.h>

#include "FakeHost.h"
#include "SampleConfig.h"
#include "TestPlatform.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

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

    void savesAreWrittenOnceAboutASecondAfterTheLastUnderTheBundleIdentifier()
    {
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        QSignalSpy written(host.get(), &FakeHost::written);
        QElapsedTimer clock;
        qint64 lastSaveMs = -1;
        clock.start();
        provider->config.count = 1;
        provider->save();
        QCOMPARE(provider->writeAction()->interval, 1.0);
        QTimer::singleShot(300, Qt::PreciseTimer, this, [&] {
            provider->config.count = 2;
            provider->save();
            lastSaveMs = clock.elapsed();
        });
        QVERIFY(written.wait(5000));
        const qint64 delay = clock.elapsed() - lastSaveMs;
        QVERIFY2(lastSaveMs >= 0 && delay >= 900 && delay <= 3000, qPrintable(QString::number(delay)));
        QCOMPARE(platform->engine->sources.last(),
                 QStringLiteral("    tell application \"Vendel\" to set global config "
                                "\"{\\\"count\\\":2,\\\"text\\\":\\\"\\\"}\" action bundle id "
                                "\"org.vendel.test-plugin\""));
        QVERIFY(!written.wait(1200));
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.first().key, bundleID);
    }

    void failedDelayedWriteShowsTheReadTitleNotTheSaveTitle()
    {
        const auto provider = GlobalConfigProvider<SampleConfig>::create();
        host->failWrites = true;
        provider->save();
        QTRY_COMPARE_WITH_TIMEOUT(platform->alerts->alerts.size(), 1, 5000);
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
        auto replacement = std::make_unique<FakeApplicationServices>();
        platform->services = replacement.get();
        Platform::setApplicationServices(std::move(replacement));
        QVERIFY(watched.expired());
        QVERIFY(host->writes.isEmpty());
    }
};

QTEST_GUILESS_MAIN(GlobalConfigProviderTest)
#include "GlobalConfigProviderTest.moc"
