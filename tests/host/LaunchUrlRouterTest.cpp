// Tests how the host finds the plugin that a vendelplugin:// launch URL belongs to, with two plugins
// installed.
#include "LaunchUrlRouter.h"

#include "HostError.h"
#include "HostStorage.h"

#include <QTemporaryDir>
#include <QTest>

using namespace VendelHost;

class LaunchUrlRouterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_storage = std::make_unique<HostStorage>(m_directory->path());
        m_storage->recordPlugin({QStringLiteral("music"), QStringLiteral("/opt/music/bin/music")});
        m_storage->recordPlugin({QStringLiteral("links"), QStringLiteral("/opt/links/bin/links")});
        m_musicAction = m_storage->createAction(QStringLiteral("music"));
        m_linksAction = m_storage->createAction(QStringLiteral("links"));
    }

    void cleanup()
    {
        m_storage.reset();
        m_directory.reset();
    }

    void eachActionGoesToThePluginThatOwnsIt()
    {
        const LaunchUrlRouter router(*m_storage);
        const auto music = router.route(QStringLiteral("vendelplugin://run/%1").arg(m_musicAction));
        QCOMPARE(music.verb, LaunchUrlRouter::Verb::run);
        QCOMPARE(music.plugin, QStringLiteral("music"));
        QCOMPARE(music.executable, QStringLiteral("/opt/music/bin/music"));
        const auto links = router.route(QStringLiteral("vendelplugin://edit/%1").arg(m_linksAction));
        QCOMPARE(links.verb, LaunchUrlRouter::Verb::edit);
        QCOMPARE(links.plugin, QStringLiteral("links"));
        QCOMPARE(links.executable, QStringLiteral("/opt/links/bin/links"));
    }

    void aConfigureUrlGoesToThePluginItNames()
    {
        const LaunchUrlRouter router(*m_storage);
        const auto route = router.route(QStringLiteral("vendelplugin://configure/links"));
        QCOMPARE(route.verb, LaunchUrlRouter::Verb::configure);
        QCOMPARE(route.executable, QStringLiteral("/opt/links/bin/links"));
    }

    void theUrlGoesOnExactlyAsItCame_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("plain") << QStringLiteral("vendelplugin://run/ID");
        QTest::newRow("scheme in capitals") << QStringLiteral("VENDELPLUGIN://run/ID");
        QTest::newRow("query and fragment") << QStringLiteral("vendelplugin://run/ID?a=B#C");
        QTest::newRow("trailing slash") << QStringLiteral("vendelplugin://run/ID/");
        QTest::newRow("escaped letters")
            << QStringLiteral("vendelplugin://run/ID").replace(u'-', QStringLiteral("%2d"));
    }

    void theUrlGoesOnExactlyAsItCame()
    {
        QFETCH(QString, url);
        url.replace(QStringLiteral("ID"), m_musicAction);
        const auto route = LaunchUrlRouter(*m_storage).route(url);
        QCOMPARE(route.url, url);
        QCOMPARE(route.plugin, QStringLiteral("music"));
    }

    void anIdentifierIsPercentDecodedAsPluginsDecodeIt()
    {
        const LaunchUrlRouter router(*m_storage);
        QCOMPARE(router.route(QStringLiteral("vendelplugin://configure/%6Cinks")).executable,
                 QStringLiteral("/opt/links/bin/links"));
    }

    void whatCannotBeRoutedIsRefusedWithItsReason_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no identifier") << QStringLiteral("vendelplugin://run")
                                       << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("empty identifier") << QStringLiteral("vendelplugin://edit/")
                                          << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("two identifiers") << QStringLiteral("vendelplugin://run/ID/ID")
                                         << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("identifier with a NUL")
            << QStringLiteral("vendelplugin://run/a%00b")
            << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("identifier not UTF-8")
            << QStringLiteral("vendelplugin://run/%FF")
            << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("unknown action")
            << QStringLiteral("vendelplugin://run/unknown")
            << QStringLiteral("names the action \"unknown\", which this host does not know");
        QTest::newRow("configure without plugin")
            << QStringLiteral("vendelplugin://configure") << QStringLiteral("names no plugin");
        QTest::newRow("unknown plugin")
            << QStringLiteral("vendelplugin://configure/Music")
            << QStringLiteral("names the plugin \"Music\", which is not installed");
        QTest::newRow("run command") << QStringLiteral("vendelplugin://runCommand")
                                     << QStringLiteral("\"runCommand\" is no launch it knows the plugin of");
        QTest::newRow("verb in capitals") << QStringLiteral("vendelplugin://RUN/ID")
                                          << QStringLiteral("\"RUN\" is no launch it knows the plugin of");
        QTest::newRow("no authority")
            << QStringLiteral("vendelplugin:run/ID") << QStringLiteral("names no launch");
        QTest::newRow("another scheme")
            << QStringLiteral("vendel://run/ID") << QStringLiteral("is not a vendelplugin:// launch URL");
        QTest::newRow("not a URL") << QStringLiteral("vendelplugin://run/<ID>")
                                   << QStringLiteral("is not a URL (invalid at character 20)");
    }

    void whatCannotBeRoutedIsRefusedWithItsReason()
    {
        QFETCH(QString, url);
        QFETCH(QString, reason);
        url.replace(QStringLiteral("ID"), m_musicAction);
        try {
            LaunchUrlRouter(*m_storage).route(url);
            QFAIL("routed");
        } catch (const HostError& error) {
            QVERIFY2(error.message().contains(reason), qPrintable(error.message()));
        }
    }

    void onlyTheLaunchSchemeIsALaunchUrl()
    {
        QVERIFY(LaunchUrlRouter::isLaunchUrl(QStringLiteral("vendelplugin://run/a")));
        QVERIFY(LaunchUrlRouter::isLaunchUrl(QStringLiteral("VendelPlugin:x")));
        QVERIFY(!LaunchUrlRouter::isLaunchUrl(QStringLiteral("vendel://add-resources/%5B%5D")));
        QVERIFY(!LaunchUrlRouter::isLaunchUrl(QStringLiteral("vendelplugins://run/a")));
        QVERIFY(!LaunchUrlRouter::isLaunchUrl(QStringLiteral(" vendelplugin://run/a")));
        QVERIFY(!LaunchUrlRouter::isLaunchUrl(QStringLiteral("vendelplugin")));
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<HostStorage> m_storage;
    QString m_musicAction;
    QString m_linksAction;
};

QTEST_GUILESS_MAIN(LaunchUrlRouterTest)
#include "LaunchUrlRouterTest.moc"
