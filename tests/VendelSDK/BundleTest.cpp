// Tests the bundle values and the identity that a plugin's build gives its executable.
#include <VendelSDK/Bundle.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

using namespace VendelSDK;

namespace {

void forgetBuiltIdentity()
{
    setBuiltBundleIdentity("", nullptr, 0);
}

} // namespace

class BundleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { forgetBuiltIdentity(); }
    void cleanupTestCase() { forgetBuiltIdentity(); }

    void bareExecutableWithoutBuiltIdentityHasNone()
    {
        const Bundle bundle = makePlatformMainBundle();
        QVERIFY(bundle.identifier().isEmpty());
        QVERIFY(bundle.info().isEmpty());
    }

    void bareExecutableCarriesTheBuiltIdentity()
    {
        const BundleInfoEntry info[] = {{Bundle::nameKey, "Sample \xc2\xb7 \xc3\xa9"},
                                        {Bundle::shortVersionKey, "2.3"}};
        setBuiltBundleIdentity("org.example.Sample", info, 2);
        const Bundle bundle = makePlatformMainBundle();
        QCOMPARE(bundle.identifier(), QStringLiteral("org.example.Sample"));
        // The texts are UTF-8.
        QCOMPARE(bundle.infoText(Bundle::nameKey), QStringLiteral("Sample · é"));
        QCOMPARE(bundle.infoText(Bundle::shortVersionKey), QStringLiteral("2.3"));
        QCOMPARE(bundle.infoText(Bundle::versionKey), QString());
        // The path is still the executable's, by which the host knows the plugin.
        QCOMPARE(bundle.path(), QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
    }

    void aLaterIdentityReplacesTheEarlierOne()
    {
        const BundleInfoEntry first[] = {{Bundle::nameKey, "First"}};
        setBuiltBundleIdentity("org.example.First", first, 1);
        setBuiltBundleIdentity("org.example.Second", nullptr, 0);
        const Bundle bundle = makePlatformMainBundle();
        QCOMPARE(bundle.identifier(), QStringLiteral("org.example.Second"));
        QVERIFY(bundle.info().isEmpty());
    }

    void aBundleWithItsOwnIdentifierKeepsIt()
    {
        setBuiltBundleIdentity("org.example.Built", nullptr, 0);
        const Bundle own(QStringLiteral("/Applications/Own.app"), QStringLiteral("org.example.Own"),
                         {{QString::fromLatin1(Bundle::nameKey), QStringLiteral("Own")}});
        const Bundle kept = own.withBuiltIdentity();
        QCOMPARE(kept.identifier(), QStringLiteral("org.example.Own"));
        QCOMPARE(kept.infoText(Bundle::nameKey), QStringLiteral("Own"));
        QCOMPARE(kept.path(), QStringLiteral("/Applications/Own.app"));
    }

    void infoTextIsEmptyForValuesThatAreNotText()
    {
        const Bundle bundle(QString(), QString(), {{QStringLiteral("Number"), 3}});
        QCOMPARE(bundle.infoText("Number"), QString());
        QCOMPARE(bundle.infoText("Missing"), QString());
    }
};

QTEST_GUILESS_MAIN(BundleTest)
#include "BundleTest.moc"
