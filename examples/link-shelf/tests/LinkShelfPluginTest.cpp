// The plugin's wiring as the SDK drives it: launch URLs, the start-up check, and later launches.
#include "LinkShelfPlugin.h"
#include "LinkSetEditor.h"
#include "LinkSetWindow.h"
#include "LinkShelfTesting.h"

#include <VendelSDK/VendelPlugin.h>

#include <QApplication>
#include <QLabel>
#include <QTableWidget>
#include <QTest>

using namespace LinkShelf;
using LinkShelf::Testing::Fixture;
using VendelSDK::Testing::ScriptedHost;

namespace {

VendelSDK::VendelPlugin::Config startUpCheck()
{
    return {.askToInstallPluginIfNotInstalled = true, .alertUserThatPluginMustBeRunByVendelAndQuit = true};
}

} // namespace

class LinkShelfPluginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRunUrlRunsTheActionAndTheStartUpCheckThenDoesNothing()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin(startUpCheck());
        LinkShelfPlugin linkShelf(plugin, false);
        f.host
            ->expectGetConfig(QStringLiteral("A1"),
                              ScriptedHost::text(QStringLiteral(
                                  "{\"links\":[{\"name\":\"N\",\"type\":\"url\",\"url\":\"x:y\"}]}")))
            .expectGetGlobalConfig(ScriptedHost::text(QString()));
        f.services.deliverLaunchURL(QStringLiteral("vendelplugin://run/A1"));
        f.services.finishLaunching();
        QCOMPARE(f.host->commandUrls().size(), 1);
        // No "is plugin installed" question: it would differ from the script.
        QCOMPARE(f.host->commands().size(), 2);
        QVERIFY(f.host->mismatches().isEmpty());
    }

    void startedByHandWhenNotInstalledItInstallsItself()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin(startUpCheck());
        LinkShelfPlugin linkShelf(plugin, false);
        f.host->expectIsPluginInstalled(Testing::bundlePath, ScriptedHost::text(QStringLiteral("false")))
            .expectInstallPlugin();
        f.services.finishLaunching();
        QCOMPARE(f.host->remaining(), 0);
        QCOMPARE(f.services.terminateRequests, 1);
    }

    void anEditWithoutADisplaySaysSoAsksTheHostNothingAndEnds()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin(startUpCheck());
        LinkShelfPlugin linkShelf(plugin, false);
        f.services.deliverLaunchURL(QStringLiteral("vendelplugin://edit/A1"));
        QCOMPARE(f.alerts.alerts.size(), 1);
        QCOMPARE(f.alerts.alerts.front().messageText, QStringLiteral("The window cannot be opened."));
        QVERIFY(f.host->commands().isEmpty());
        QCOMPARE(f.services.terminateRequests, 1);
        QVERIFY(linkShelf.windows().empty());
    }

    void aLaterLaunchThatNeedsWindowsIsRefusedWithoutADisplay()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin(startUpCheck());
        LinkShelfPlugin linkShelf(plugin, false);
        QVERIFY(!linkShelf.acceptLaunch(QStringLiteral("vendelplugin://configure/vendel-link-shelf")));
        QVERIFY(!linkShelf.acceptLaunch(QStringLiteral("vendelplugin://edit/A1")));
        QVERIFY(linkShelf.acceptLaunch(QStringLiteral("vendelplugin://run/A1")));
        f.services.terminate();
        QVERIFY(!linkShelf.acceptLaunch(QStringLiteral("vendelplugin://run/A1")));
    }

    void theConfigureUrlOpensThePreferencesWithTheLinksEveryActionAdds()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin(startUpCheck());
        LinkShelfPlugin linkShelf(plugin, true);
        f.host->expectGetGlobalConfig(ScriptedHost::text(QStringLiteral(
            "{\"links\":[{\"name\":\"Home\",\"type\":\"folder\",\"url\":\"file:///home/me\"}]}")));
        f.services.deliverLaunchURL(QStringLiteral("vendelplugin://configure/vendel-link-shelf"));
        f.services.finishLaunching();
        QCOMPARE(linkShelf.windows().size(), std::size_t{1});
        LinkSetWindow& window = *linkShelf.windows().front();
        QVERIFY(window.isVisible());
        QCOMPARE(window.windowTitle(), QStringLiteral("Link Shelf Preferences"));
        QCOMPARE(window.editor().table().rowCount(), 1);
        QCOMPARE(window.editor().table().item(0, 1)->text(), QStringLiteral("Home"));
        QCOMPARE(window.findChild<QLabel*>(QStringLiteral("about"))->text(),
                 QStringLiteral("Link Shelf 1.0"));
        QVERIFY(f.alerts.alerts.isEmpty());
    }

    void aRunCommandUrlAlsoOpensThePreferences()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin(startUpCheck());
        LinkShelfPlugin linkShelf(plugin, true);
        f.host->expectGetGlobalConfig(ScriptedHost::text(QString()));
        f.services.deliverLaunchURL(QStringLiteral("vendelplugin://runCommand"));
        QCOMPARE(linkShelf.windows().size(), std::size_t{1});
        QCOMPARE(linkShelf.windows().front()->windowTitle(), QStringLiteral("Link Shelf Preferences"));
        QCOMPARE(linkShelf.windows().front()->editor().table().rowCount(), 0);
        QCOMPARE(f.host->remaining(), 0);
    }
};

QTEST_MAIN(LinkShelfPluginTest)
#include "LinkShelfPluginTest.moc"
