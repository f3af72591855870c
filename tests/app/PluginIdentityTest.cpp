// Tests the identity that vendel_add_plugin compiles into the music plugin's executable: this test is built
// with the same generated source, which gives it to the SDK before main() runs.
#include <VendelSDK/Bundle.h>
#include <VendelSDK/Platform.h>

#include <QTest>

using namespace VendelSDK;

class PluginIdentityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bareExecutableIsGivenTheBuildsIdentity()
    {
        const Bundle bundle = makePlatformMainBundle();
        QCOMPARE(bundle.identifier(), QStringLiteral(VENDEL_BUNDLE_IDENTIFIER));
        QCOMPARE(bundle.infoText(Bundle::nameKey), QStringLiteral(VENDEL_BUNDLE_NAME));
        QCOMPARE(bundle.infoText(Bundle::copyrightKey), QStringLiteral(VENDEL_BUNDLE_COPYRIGHT));
        QCOMPARE(bundle.infoText(Bundle::shortVersionKey), QStringLiteral(VENDEL_BUNDLE_SHORT_VERSION));
        QCOMPARE(bundle.infoText(Bundle::versionKey), QStringLiteral(VENDEL_BUNDLE_VERSION));
    }

    void platformsMainBundleCarriesIt()
    {
        Platform::reset();
        QCOMPARE(Platform::mainBundle().identifier(), QStringLiteral(VENDEL_BUNDLE_IDENTIFIER));
        QVERIFY(!Platform::mainBundle().path().isEmpty());
        Platform::reset();
    }
};

QTEST_GUILESS_MAIN(PluginIdentityTest)
#include "PluginIdentityTest.moc"
