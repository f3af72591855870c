// Tests parsing of launch URLs: exact scheme, host as verb, one path segment as identifier.
#include <VendelSDK/VendelPluginURL.h>

#include <QTest>

using namespace VendelSDK;

class VendelPluginURLTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runWithIdentifierParsesVerbAndIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/ABC"));
        QVERIFY(url.has_value());
        QCOMPARE(url->scheme, QStringLiteral("vendelplugin"));
        QCOMPARE(url->action, QStringLiteral("run"));
        QCOMPARE(url->actionID, std::optional<QString>(QStringLiteral("ABC")));
    }

    void configureWithoutPathHasNoIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://configure"));
        QVERIFY(url.has_value());
        QCOMPARE(url->action, QStringLiteral("configure"));
        QVERIFY(!url->actionID.has_value());
    }

    void twoPathSegmentsGiveNoIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/a/b"));
        QVERIFY(url.has_value());
        QCOMPARE(url->action, QStringLiteral("run"));
        QVERIFY(!url->actionID.has_value());
    }

    void capitalisedSchemeYieldsNoValue()
    {
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("VENDELPLUGIN://run/X")).has_value());
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("VendelPlugin://run/X")).has_value());
    }

    void verbKeepsItsCase()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://Run/X"));
        QVERIFY(url.has_value());
        QCOMPARE(url->action, QStringLiteral("Run"));
    }

    void otherSchemeYieldsNoValue()
    {
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("vendel://run/X")).has_value());
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("https://run/X")).has_value());
    }

    void missingSchemeYieldsNoValue()
    {
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("//run/X")).has_value());
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("run/X")).has_value());
    }

    void missingOrEmptyHostYieldsNoValue()
    {
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("vendelplugin:run/X")).has_value());
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("vendelplugin:///X")).has_value());
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("vendelplugin://")).has_value());
    }

    void textThatIsNotAURLYieldsNoValue()
    {
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("vendelplugin://run/A B")).has_value());
        QVERIFY(!VendelPluginURL::parse(QStringLiteral("vendelplugin://run/%zz")).has_value());
        QVERIFY(!VendelPluginURL::parse(QString()).has_value());
    }

    void trailingAndDoubledSlashesAreIgnored()
    {
        for (const auto text :
             {u"vendelplugin://run/ABC/", u"vendelplugin://run//ABC", u"vendelplugin://run/ABC//"}) {
            const auto url = VendelPluginURL::parse(QString::fromUtf16(text));
            QVERIFY(url.has_value());
            QCOMPARE(url->actionID, std::optional<QString>(QStringLiteral("ABC")));
        }
    }

    void slashOnlyPathHasNoIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/"));
        QVERIFY(url.has_value());
        QVERIFY(!url->actionID.has_value());
    }

    void identifierIsPercentDecodedAsUtf8()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://edit/Road%20Trip%20%C3%A9"));
        QVERIFY(url.has_value());
        QCOMPARE(url->actionID, std::optional<QString>(QStringLiteral("Road Trip \u00e9")));
    }

    void encodedSlashStaysInsideTheIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/a%2Fb"));
        QVERIFY(url.has_value());
        QCOMPARE(url->actionID, std::optional<QString>(QStringLiteral("a/b")));
    }

    void encodedNulGivesNoIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/a%00b"));
        QVERIFY(url.has_value());
        QCOMPARE(url->action, QStringLiteral("run"));
        QVERIFY(!url->actionID.has_value());
    }

    void invalidUtf8GivesNoIdentifier()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/%FF%FE"));
        QVERIFY(url.has_value());
        QVERIFY(!url->actionID.has_value());
    }

    void queryAndFragmentAreIgnored()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://run/ABC?x=1/2#frag/ment"));
        QVERIFY(url.has_value());
        QCOMPARE(url->action, QStringLiteral("run"));
        QCOMPARE(url->actionID, std::optional<QString>(QStringLiteral("ABC")));
    }

    void unknownVerbStillParses()
    {
        const auto url = VendelPluginURL::parse(QStringLiteral("vendelplugin://delete/ABC"));
        QVERIFY(url.has_value());
        QCOMPARE(url->action, QStringLiteral("delete"));
        QCOMPARE(url->actionID, std::optional<QString>(QStringLiteral("ABC")));
    }

    void hostileIdentifierIsParsedVerbatim()
    {
        // Parsing does not judge identifiers; the host bridge refuses to send this one.
        const auto url = VendelPluginURL::parse(
            QStringLiteral("vendelplugin://run/x%22%20%26%20(do%20shell%20script%20%22id%22)%20%26%20%22"));
        QVERIFY(url.has_value());
        QCOMPARE(url->actionID,
                 std::optional<QString>(QStringLiteral("x\" & (do shell script \"id\") & \"")));
    }
};

QTEST_GUILESS_MAIN(VendelPluginURLTest)
#include "VendelPluginURLTest.moc"
