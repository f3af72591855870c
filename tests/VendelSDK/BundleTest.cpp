// Tests the bundle values and the identity that a plugin's build gives its executable.
#include <VendelSDK/Bundle.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

using namespace VendelSDK;

class BundleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Bundle::setBuiltIdentity(QString(), {}); }
    void cleanupTestCase() { Bundle::setBuiltIdentity(QString(), {}); }

    void bareExecutableWithoutBuiltIdentityHasNone()
    {
        const Bundle bundle = makePlatformMainBundle();
        QVERIFY(bundle.identifier().isEmpty());
        QVERIFY(bundle.info().isEmpty());
    }

    void bareExecutableCarriesTheBuiltIdentity()
    {
        Bundle::setBuiltIdentity(QStringLiteral("org.example.Sample"),
                                 {{QString::fromLatin1(Bundle::nameKey), QStringLiteral("Sample")},
                                  {QString::fromLatin1(Bundle::shortVersionKey), QStringLiteral("2.3")}});
        const Bundle bundle = makePlatformMainBundle();
        QCOMPARE(bundle.identifier(), QStringLiteral("org.example.Sample"));
        QCOMPARE(bundle.infoText(Bundle::nameKey), QStringLiteral("Sample"));
        QCOMPARE(bundle.infoText(Bundle::shortVersionKey), QStringLiteral("2.3"));
        QCOMPARE(bundle.infoText(Bundle::versionKey), QString());
        // The path is still the executable's, by which the host knows the plugin.
        QCOMPARE(bundle.path(), QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
    }

    void aLaterIdentityReplacesTheEarlierOne()
    {
        Bundle::setBuiltIdentity(QStringLiteral("org.example.First"),
                                 {{QString::fromLatin1(Bundle::nameKey), QStringLiteral("First")}});
        Bundle::setBuiltIdentity(QStringLiteral("org.example.Second"), {});
        const Bundle bundle = makePlatformMainBundle();
        QCOMPARE(bundle.identifier(), QStringLiteral("org.example.Second"));
        QVERIFY(bundle.info().isEmpty());
    }

    void aBundleWithItsOwnIdentifierKeepsIt()
    {
        Bundle::setBuiltIdentity(QStringLiteral("org.example.Built"), {});
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
