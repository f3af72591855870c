// Tests the decoding of resource lists: both spellings of a slash, and every way a list can be wrong.
#include "HostResource.h"
#include "HostError.h"

#include <QTest>

using namespace VendelHost;

class HostResourceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesEveryTypeInOrder()
    {
        QByteArray json = "[";
        for (const QString& type : HostResource::types) {
            json += "{\"type\":\"" + type.toUtf8() + "\",\"name\":\"" + type.toUtf8() + "\",\"url\":\"x-" +
                    type.toUtf8() + ":1\"},";
        }
        json.chop(1);
        json += "]";
        const QList<HostResource> resources = HostResource::decodeList(json);
        QCOMPARE(resources.size(), 6);
        for (qsizetype index = 0; index < resources.size(); ++index) {
            QCOMPARE(resources.at(index).type, HostResource::types.at(index));
            QCOMPARE(resources.at(index).url, QStringLiteral("x-%1:1").arg(HostResource::types.at(index)));
        }
    }

    void acceptsBothSpellingsOfASlash()
    {
        const auto escaped = HostResource::decodeList(
            "[{\"type\":\"folder\",\"name\":\"A\\/B\",\"url\":\"file:\\/\\/\\/tmp\\/a\"}]");
        const auto plain =
            HostResource::decodeList("[{\"type\":\"folder\",\"name\":\"A/B\",\"url\":\"file:///tmp/a\"}]");
        QCOMPARE(escaped, plain);
        QCOMPARE(plain.constFirst().url, QStringLiteral("file:///tmp/a"));
        QCOMPARE(plain.constFirst().name, QStringLiteral("A/B"));
    }

    void keepsNonAsciiNamesAndIgnoresUnknownKeys()
    {
        const auto resources = HostResource::decodeList(
            "[{\"type\":\"file\",\"name\":\"Ünïcødé 🎵\",\"url\":\"file:///x\",\"extra\":[1]}]");
        QCOMPARE(resources.constFirst().name, QStringLiteral("Ünïcødé 🎵"));
    }

    void anEmptyListIsNoResources() { QVERIFY(HostResource::decodeList("[]").isEmpty()); }

    void refusesBadLists_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty text") << QByteArray() << QStringLiteral("not JSON");
        QTest::newRow("truncated") << QByteArray("[{\"type\":\"file\"") << QStringLiteral("not JSON");
        QTest::newRow("trailing text") << QByteArray("[] x") << QStringLiteral("not JSON");
        QTest::newRow("invalid UTF-8")
            << QByteArray("[{\"type\":\"file\",\"name\":\"\xff\",\"url\":\"a:b\"}]")
            << QStringLiteral("not JSON");
        QTest::newRow("object") << QByteArray("{\"type\":\"file\",\"name\":\"a\",\"url\":\"a:b\"}")
                                << QStringLiteral("not a JSON array");
        QTest::newRow("not an object") << QByteArray("[{\"type\":\"file\",\"name\":\"a\",\"url\":\"a:b\"},3]")
                                       << QStringLiteral("Resource 2: not a JSON object");
        QTest::newRow("no url") << QByteArray("[{\"type\":\"file\",\"name\":\"a\"}]")
                                << QStringLiteral("Resource 1: \"url\" is missing");
        QTest::newRow("no type") << QByteArray("[{\"name\":\"a\",\"url\":\"a:b\"}]")
                                 << QStringLiteral("Resource 1: \"type\" is missing");
        QTest::newRow("number name") << QByteArray("[{\"type\":\"file\",\"name\":1,\"url\":\"a:b\"}]")
                                     << QStringLiteral("Resource 1: \"name\" is not text");
        QTest::newRow("null url") << QByteArray("[{\"type\":\"file\",\"name\":\"a\",\"url\":null}]")
                                  << QStringLiteral("Resource 1: \"url\" is not text");
        QTest::newRow("capitalised type")
            << QByteArray("[{\"type\":\"Folder\",\"name\":\"a\",\"url\":\"a:b\"}]")
            << QStringLiteral("Resource 1: unknown type \"Folder\"");
        QTest::newRow("relative url") << QByteArray("[{\"type\":\"file\",\"name\":\"a\",\"url\":\"/tmp/a\"}]")
                                      << QStringLiteral("Resource 1: \"/tmp/a\" is not an absolute URL");
        QTest::newRow("invalid url") << QByteArray(
                                            "[{\"type\":\"website\",\"name\":\"a\",\"url\":\"http://a b/\"}]")
                                     << QStringLiteral("is not an absolute URL");
        QTest::newRow("deeply nested") << QByteArray(100000, '[') << QStringLiteral("not JSON");
    }

    void refusesBadLists()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, expected);
        try {
            HostResource::decodeList(json);
            QFAIL("decoded");
        } catch (const HostError& error) {
            QVERIFY2(error.message().contains(expected), qPrintable(error.message()));
        }
    }
};

QTEST_GUILESS_MAIN(HostResourceTest)
#include "HostResourceTest.moc"
