// Tests the plugin's bundle: the platform's path, and this build's identity where the platform gives none.
#include "AppBundle.h"

#include "AppBundleInfo.h"

#include <QFileInfo>
#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;

class AppBundleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bareExecutableIsGivenThisBuildsIdentity()
    {
        // A test executable is no application bundle on any platform, so it carries no identity.
        QVERIFY(makePlatformMainBundle().identifier().isEmpty());
        const Bundle bundle = appBundle();
        QCOMPARE(bundle.identifier(), QStringLiteral(VENDEL_BUNDLE_IDENTIFIER));
        QCOMPARE(bundle.infoText(Bundle::nameKey), QStringLiteral(VENDEL_BUNDLE_NAME));
        QCOMPARE(bundle.infoText(Bundle::copyrightKey), QStringLiteral(VENDEL_BUNDLE_COPYRIGHT));
        QCOMPARE(bundle.infoText(Bundle::shortVersionKey), QStringLiteral(VENDEL_BUNDLE_SHORT_VERSION));
        QCOMPARE(bundle.infoText(Bundle::versionKey), QStringLiteral(VENDEL_BUNDLE_VERSION));
    }

    void pathIsThePlatformsMainBundlePath()
    {
        QVERIFY(!makePlatformMainBundle().path().isEmpty());
        QCOMPARE(appBundle().path(), makePlatformMainBundle().path());
    }
};

QTEST_GUILESS_MAIN(AppBundleTest)
#include "AppBundleTest.moc"
