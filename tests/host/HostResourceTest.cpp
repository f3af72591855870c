// Tests the decoding of resource lists: both spellings of a slash, URLs that fit their kind, script URLs,
// and every way a list can be wrong.
#include "HostResource.h"
#include "HostError.h"
#include "HostInput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <QTest>

using namespace VendelHost;

class HostResourceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesEveryTypeInOrder()
    {
        const QStringList urls{
            QStringLiteral("file:///home/u/a.txt"),  QStringLiteral("file://localhost/srv/music"),
            QStringLiteral("https://example.test/"), QStringLiteral("ssh://user@example.test/srv"),
            QStringLiteral("file:///usr/bin/app"),   QStringLiteral("mailto:a@example.test")};
        QByteArray json = "[";
        for (qsizetype index = 0; index < HostResource::types.size(); ++index) {
            const QByteArray type = HostResource::types.at(index).toUtf8();
            json += "{\"type\":\"" + type + "\",\"name\":\"" + type + "\",\"url\":\"" +
                    urls.at(index).toUtf8() + "\"},";
        }
        json.chop(1);
        json += "]";
        const QList<HostResource> resources = HostResource::decodeList(json);
        QCOMPARE(resources.size(), 6);
        for (qsizetype index = 0; index < resources.size(); ++index) {
            QCOMPARE(resources.at(index).type, HostResource::types.at(index));
            QCOMPARE(resources.at(index).url, urls.at(index));
        }
    }

    void eachKindTakesTheUrlsThatFitIt_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("accepted");
        const auto row = [](const char* name, const char* type, const char* url, bool accepted) {
            QTest::newRow(name) << QString::fromLatin1(type) << QString::fromLatin1(url) << accepted;
        };
        row("file, local", "file", "file:///tmp/a", true);
        row("file, capitalised scheme", "file", "FILE:///tmp/a", true);
        row("file, web", "file", "https://example.test/a", false);
        row("file, another host", "file", "file://server/share/a", false);
        row("folder, local", "folder", "file:///tmp/", true);
        row("folder, ftp", "folder", "ftp://example.test/pub", false);
        row("application, local", "application", "file:///usr/bin/x", true);
        row("application, other scheme", "application", "appstream://org.example.App", false);
        row("website, https", "website", "https://example.test/a?b#c", true);
        row("website, http", "website", "HTTP://Example.test", true);
        row("website, no host", "website", "https:///a", false);
        row("website, file", "website", "file:///etc/passwd", false);
        row("website, mail", "website", "mailto:a@example.test", false);
        row("terminal, local folder", "terminal", "file:///home/u", true);
        row("terminal, ssh", "terminal", "ssh://example.test", true);
        row("terminal, web", "terminal", "https://example.test", false);
        row("url, any scheme", "url", "irc://example.test/channel", true);
    }

    void eachKindTakesTheUrlsThatFitIt()
    {
        QFETCH(QString, type);
        QFETCH(QString, url);
        QFETCH(bool, accepted);
        const QByteArray json =
            QStringLiteral("[{\"type\":\"%1\",\"name\":\"Entry\",\"url\":\"%2\"}]").arg(type, url).toUtf8();
        try {
            const auto resources = HostResource::decodeList(json);
            QVERIFY2(accepted, "accepted");
            QCOMPARE(resources.constFirst().url, url);
        } catch (const HostError& error) {
            QVERIFY2(!accepted, qPrintable(error.message()));
            QVERIFY2(error.message().startsWith(QStringLiteral("Resource 1 (\"Entry\"): a ")),
                     qPrintable(error.message()));
            QVERIFY2(error.message().contains(url), qPrintable(error.message()));
        }
    }

    // A script URL is refused for every kind, however a browser or desktop would still find its scheme.
    void scriptUrlsAreRefusedWhateverTheKind_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("scheme");
        for (const QString& type : HostResource::types) {
            const QByteArray kind = type.toUtf8();
            QTest::addRow("%s, javascript", kind.constData())
                << type << QStringLiteral("javascript:alert(1)") << QStringLiteral("javascript");
            QTest::addRow("%s, data", kind.constData())
                << type << QStringLiteral("data:text/html,<script>alert(1)</script>")
                << QStringLiteral("data");
            QTest::addRow("%s, vbscript", kind.constData())
                << type << QStringLiteral("vbscript:msgbox(1)") << QStringLiteral("vbscript");
        }
        QTest::newRow("mixed case") << QStringLiteral("url") << QStringLiteral("JaVaScRiPt:alert(1)")
                                    << QStringLiteral("javascript");
        QTest::newRow("capitals") << QStringLiteral("website") << QStringLiteral("DATA:,x")
                                  << QStringLiteral("data");
        QTest::newRow("VBScript") << QStringLiteral("url") << QStringLiteral("VBScript:x")
                                  << QStringLiteral("vbscript");
        QTest::newRow("leading space")
            << QStringLiteral("url") << QStringLiteral("  javascript:x") << QStringLiteral("javascript");
        QTest::newRow("leading control characters")
            << QStringLiteral("url") << QStringLiteral("\u0001\u001f\u0000javascript:x")
            << QStringLiteral("javascript");
        QTest::newRow("leading no-break space and byte order mark")
            << QStringLiteral("url") << QStringLiteral("\u00a0\ufeffdata:,x") << QStringLiteral("data");
        QTest::newRow("tab and line breaks inside")
            << QStringLiteral("url") << QStringLiteral("java\tscr\nip\rt:x") << QStringLiteral("javascript");
    }

    void scriptUrlsAreRefusedWhateverTheKind()
    {
        QFETCH(QString, type);
        QFETCH(QString, url);
        QFETCH(QString, scheme);
        QJsonObject entry{{QStringLiteral("type"), type},
                          {QStringLiteral("name"), QStringLiteral("Bad one")},
                          {QStringLiteral("url"), url}};
        const QByteArray json = QJsonDocument(QJsonArray{entry}).toJson();
        try {
            HostResource::decodeList(json);
            QFAIL("accepted");
        } catch (const HostError& error) {
            QVERIFY2(error.message().startsWith(
                         QStringLiteral("Resource 1 (\"Bad one\"): \"%1\" is a %2: URL, which runs a script")
                             .arg(HostInput::escaped(url), scheme)),
                     qPrintable(error.message()));
        }
    }

    void aMixedListIsRefusedWholeAndEveryBadEntryNamed()
    {
        const QByteArray json = "[{\"type\":\"website\",\"name\":\"Good\",\"url\":\"https://example.test\"},"
                                "{\"type\":\"url\",\"name\":\"Evil\",\"url\":\"JavaScript:alert(1)\"},"
                                "{\"type\":\"folder\",\"name\":\"Docs\",\"url\":\"file:///tmp\"},"
                                "{\"type\":\"website\",\"name\":\"Data\",\"url\":\"data:,x\"}]";
        try {
            HostResource::decodeList(json);
            QFAIL("accepted");
        } catch (const HostError& error) {
            QCOMPARE(error.message(),
                     QStringLiteral(
                         "Resource 2 (\"Evil\"): \"JavaScript:alert(1)\" is a javascript: URL, which runs "
                         "a script; the host never keeps one.\n"
                         "Resource 4 (\"Data\"): \"data:,x\" is a data: URL, which runs a script; the "
                         "host never keeps one.\n"
                         "They were refused, so nothing was added."));
        }
    }

    void aNameIsShownEscapedInAnError()
    {
        try {
            HostResource::decodeList(
                "[{\"type\":\"file\",\"name\":\"a\\nb\\u001b[2J\",\"url\":\"https://x\"}]");
            QFAIL("accepted");
        } catch (const HostError& error) {
            QVERIFY2(error.message().startsWith(QStringLiteral("Resource 1 (\"a\\nb\\x1b[2J\"):")),
                     qPrintable(error.message()));
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
        QTest::newRow("not an object")
            << QByteArray("[{\"type\":\"file\",\"name\":\"a\",\"url\":\"file:///a\"},3]")
            << QStringLiteral("Resource 2: not a JSON object");
        QTest::newRow("no url") << QByteArray("[{\"type\":\"file\",\"name\":\"a\"}]")
                                << QStringLiteral("Resource 1 (\"a\"): \"url\" is missing");
        QTest::newRow("no type") << QByteArray("[{\"name\":\"a\",\"url\":\"a:b\"}]")
                                 << QStringLiteral("Resource 1: \"type\" is missing");
        QTest::newRow("number name") << QByteArray("[{\"type\":\"file\",\"name\":1,\"url\":\"a:b\"}]")
                                     << QStringLiteral("Resource 1: \"name\" is not text");
        QTest::newRow("null url") << QByteArray("[{\"type\":\"file\",\"name\":\"a\",\"url\":null}]")
                                  << QStringLiteral("Resource 1 (\"a\"): \"url\" is not text");
        QTest::newRow("capitalised type")
            << QByteArray("[{\"type\":\"Folder\",\"name\":\"a\",\"url\":\"a:b\"}]")
            << QStringLiteral("Resource 1 (\"a\"): unknown type \"Folder\"");
        QTest::newRow("relative url")
            << QByteArray("[{\"type\":\"file\",\"name\":\"a\",\"url\":\"/tmp/a\"}]")
            << QStringLiteral("Resource 1 (\"a\"): \"/tmp/a\" is not an absolute URL");
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
