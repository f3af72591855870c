// Tests the application object: its one plugin with both start-up flags on, and the count of shown windows.
#include "App.h"

#include "TestPlatform.h"

#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

class AppTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sharedPluginOffersInstallationAndTellsToRunByHost()
    {
        TestPlatform platform;
        App& app = App::shared();
        QCOMPARE(&app, &App::shared());
        QVERIFY(app.vendelPlugin().config.askToInstallPluginIfNotInstalled);
        QVERIFY(app.vendelPlugin().config.alertUserThatPluginMustBeRunByVendelAndQuit);
        QVERIFY(!app.vendelPlugin().actionController.didPerformAction);
    }

    void visibleAndMiniaturisedWindowsBothCount()
    {
        TestPlatform platform;
        platform.services->windowList = {{true, false}, {false, true}};
        QCOMPARE(App::visibleWindowsCount(), 2);
    }

    void orderedOutWindowIsNotCounted()
    {
        TestPlatform platform;
        platform.services->windowList = {{true, false}, {false, false}};
        QCOMPARE(App::visibleWindowsCount(), 1);
        platform.services->windowList = {};
        QCOMPARE(App::visibleWindowsCount(), 0);
    }
};

QTEST_GUILESS_MAIN(AppTest)
#include "AppTest.moc"
