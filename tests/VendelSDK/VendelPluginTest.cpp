// Tests the start-up check: what a plugin started without a launch URL does when launching finishes.
#include <VendelSDK/VendelPlugin.h>

#include "TestPlatform.h"

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString installedQuery = QStringLiteral(
    "    tell application \"Vendel\" to get is plugin installed at path \"/opt/vendel/plugins/test-plugin\"");
const QString installCommand = QStringLiteral("    tell application \"Vendel\" to install plugin");

VendelPlugin::Config musicPluginConfig()
{
    VendelPlugin::Config config;
    config.askToInstallPluginIfNotInstalled = true;
    config.alertUserThatPluginMustBeRunByVendelAndQuit = true;
    return config;
}

void assignHandlers(VendelPlugin& plugin, int& handled)
{
    plugin.actionController.onEdit = [&handled](const QString&) { ++handled; };
    plugin.actionController.onRun = [&handled](const QString&) { ++handled; };
    plugin.actionController.onConfigure = [&handled] { ++handled; };
}

} // namespace

class VendelPluginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void configDefaultsAreBothOff()
    {
        const VendelPlugin::Config config;
        QVERIFY(!config.askToInstallPluginIfNotInstalled);
        QVERIFY(!config.alertUserThatPluginMustBeRunByVendelAndQuit);
        TestPlatform platform;
        const VendelPlugin plugin;
        QVERIFY(!plugin.actionController.didPerformAction);
    }

    void editUrlBeforeLaunchFinishesSkipsTheCheck()
    {
        TestPlatform platform;
        VendelPlugin plugin(musicPluginConfig());
        int handled = 0;
        assignHandlers(plugin, handled);
        plugin.actionController.handle(QStringLiteral("vendelplugin://edit/X"));
        platform.services->finishLaunching();
        QCOMPARE(handled, 1);
        QVERIFY(platform.engine->sources.isEmpty());
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void installedPluginStartedByHandShowsMustBeRunAlertThenQuits()
    {
        TestPlatform platform;
        platform.engine->answers = {QStringLiteral("true")};
        int terminatesDuringAlert = -1;
        platform.alerts->onAlert = [&](const Alert&) {
            terminatesDuringAlert = platform.services->terminateRequests;
        };
        VendelPlugin plugin(musicPluginConfig());
        platform.services->finishLaunching();
        QCOMPARE(platform.engine->sources, QStringList{installedQuery});
        QCOMPARE(platform.alerts->alerts.size(), 1);
        const Alert& alert = platform.alerts->alerts.constFirst();
        QCOMPARE(alert.messageText, QStringLiteral("This plugin must be run by Vendel app."));
        QCOMPARE(alert.informativeText, QString());
        QCOMPARE(alert.buttons, QStringList{QStringLiteral("OK")});
        QCOMPARE(terminatesDuringAlert, 0);
        QVERIFY(platform.services->terminateRequests >= 1);
    }

    void anyOtherAnswerAttemptsInstallationThenQuits_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::newRow("false") << QStringLiteral("false");
        QTest::newRow("empty") << QString();
        QTest::newRow("capitalised") << QStringLiteral("True");
    }

    void anyOtherAnswerAttemptsInstallationThenQuits()
    {
        QFETCH(QString, answer);
        TestPlatform platform;
        platform.engine->answers = {answer, ScriptNoResult{}};
        VendelPlugin plugin(musicPluginConfig());
        platform.services->finishLaunching();
        QCOMPARE(platform.engine->sources, (QStringList{installedQuery, installCommand}));
        QVERIFY(platform.alerts->alerts.isEmpty());
        QVERIFY(platform.services->terminateRequests >= 1);
    }

    void runWithoutIdentifierOrUnknownVerbProceedsWithTheCheck_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("run without identifier") << QStringLiteral("vendelplugin://run");
        QTest::newRow("unknown verb") << QStringLiteral("vendelplugin://play/X");
    }

    void runWithoutIdentifierOrUnknownVerbProceedsWithTheCheck()
    {
        QFETCH(QString, url);
        TestPlatform platform;
        platform.engine->answers = {QStringLiteral("true")};
        VendelPlugin plugin(musicPluginConfig());
        int handled = 0;
        assignHandlers(plugin, handled);
        QVERIFY(!plugin.actionController.handle(url));
        platform.services->finishLaunching();
        QCOMPARE(handled, 0);
        QCOMPARE(platform.engine->sources, QStringList{installedQuery});
        QCOMPARE(platform.alerts->alerts.size(), 1);
    }

    void urlAfterLaunchIsDispatchedAndCheckDoesNotRunAgain()
    {
        TestPlatform platform;
        platform.engine->answers = {QStringLiteral("true")};
        VendelPluginConfig config;
        config.askToInstallPluginIfNotInstalled = true;
        VendelPlugin plugin(config);
        int handled = 0;
        assignHandlers(plugin, handled);
        platform.services->finishLaunching();
        QCOMPARE(platform.engine->sources.size(), 1);
        QVERIFY(plugin.actionController.handle(QStringLiteral("vendelplugin://edit/Y")));
        QCOMPARE(handled, 1);
        QCOMPARE(platform.engine->sources.size(), 1);
        QVERIFY(platform.alerts->alerts.isEmpty());
    }

    void installedWithoutMustBeRunFlagStaysIdle()
    {
        TestPlatform platform;
        platform.engine->answers = {QStringLiteral("true")};
        VendelPluginConfig config;
        config.askToInstallPluginIfNotInstalled = true;
        VendelPlugin plugin(config);
        platform.services->finishLaunching();
        QCOMPARE(platform.engine->sources.size(), 1);
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void installFlagOffSkipsTheWholeCheck()
    {
        TestPlatform platform;
        VendelPluginConfig config;
        config.alertUserThatPluginMustBeRunByVendelAndQuit = true;
        VendelPlugin plugin(config);
        platform.services->finishLaunching();
        QVERIFY(platform.engine->sources.isEmpty());
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void failedInstalledQueryShowsTheErrorThenQuits()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptErrorRecord{-600, QStringLiteral("x"), QStringLiteral("x")}};
        VendelPlugin plugin(musicPluginConfig());
        platform.services->finishLaunching();
        QCOMPARE(platform.engine->sources.size(), 1);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst().messageText, QStringLiteral("Could not run script"));
        QVERIFY(
            platform.alerts->alerts.constFirst().informativeText.startsWith(QStringLiteral("It looks like")));
        QVERIFY(platform.services->terminateRequests >= 1);
    }

    void noResultToInstalledQueryShowsCodeTwoThenQuits()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptNoResult{}};
        VendelPlugin plugin(musicPluginConfig());
        platform.services->finishLaunching();
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst().messageText,
                 QStringLiteral("Could not read data from script output"));
        QVERIFY(platform.services->terminateRequests >= 1);
    }

    void destroyedPluginNoLongerObservesLaunching()
    {
        TestPlatform platform;
        {
            VendelPlugin plugin(musicPluginConfig());
        }
        platform.services->finishLaunching();
        QVERIFY(platform.engine->sources.isEmpty());
    }
};

QTEST_GUILESS_MAIN(VendelPluginTest)
#include "VendelPluginTest.moc"
