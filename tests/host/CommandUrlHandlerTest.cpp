// Tests the handling of command URLs against real storage: what is stored, and that bad URLs store nothing.
#include "CommandUrlHandler.h"
#include "HostError.h"
#include "HostStorage.h"

#include <QTemporaryDir>
#include <QTest>

using namespace VendelHost;

namespace {

// What a plugin sends: the list's JSON, percent-encoded except for the characters a URL path allows.
QString addResourcesUrl(const QByteArray& json)
{
    return QStringLiteral("vendel://add-resources/") +
           QString::fromLatin1(json.toPercentEncoding("!$&'()*+,;=:@/"));
}

} // namespace

class CommandUrlHandlerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_storage = std::make_unique<HostStorage>(m_directory->path());
    }

    void cleanup()
    {
        m_storage.reset();
        m_directory.reset();
    }

    void addsResourcesWrittenEitherWay()
    {
        CommandUrlHandler handler(*m_storage);
        const QStringList lines = handler.handle(
            addResourcesUrl("[{\"type\":\"folder\",\"name\":\"Docs\",\"url\":\"file:\\/\\/\\/tmp\\/docs\"},"
                            "{\"type\":\"website\",\"name\":\"Ünï\",\"url\":\"https://example.test/a/b\"}]"));
        QCOMPARE(lines, (QStringList{QStringLiteral("Added folder \"Docs\": file:///tmp/docs"),
                                     QStringLiteral("Added website \"Ünï\": https://example.test/a/b")}));
        const auto resources = m_storage->resources();
        QCOMPARE(resources.size(), 2);
        QCOMPARE(resources.at(0).url, QStringLiteral("file:///tmp/docs"));
        QCOMPARE(resources.at(1).name, QStringLiteral("Ünï"));
    }

    void anEmptyListAddsNothing()
    {
        CommandUrlHandler handler(*m_storage);
        QCOMPARE(handler.handle(QStringLiteral("vendel://add-resources/%5B%5D")),
                 QStringList{QStringLiteral("No resources to add.")});
        QVERIFY(m_storage->resources().isEmpty());
    }

    void aListWithAScriptUrlStoresNothing()
    {
        CommandUrlHandler handler(*m_storage);
        try {
            handler.handle(addResourcesUrl(
                "[{\"type\":\"folder\",\"name\":\"Docs\",\"url\":\"file:///tmp/docs\"},"
                "{\"type\":\"website\",\"name\":\"Click\",\"url\":\"\\u0001jAvAsCrIpT:x\"}]"));
            QFAIL("handled");
        } catch (const HostError& error) {
            QVERIFY2(error.message().startsWith(
                         QStringLiteral("Resource 2 (\"Click\"): \"\\x01jAvAsCrIpT:x\" is a "
                                        "javascript: URL")),
                     qPrintable(error.message()));
        }
        QVERIFY(m_storage->resources().isEmpty());
    }

    void reportsMalformedUrlsAndStoresNothing_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("expected");
        const QByteArray good = "{\"type\":\"file\",\"name\":\"a\",\"url\":\"file:///a\"}";
        QTest::newRow("no list") << QStringLiteral("vendel://add-resources")
                                 << QStringLiteral("no resource list");
        QTest::newRow("empty list text")
            << QStringLiteral("vendel://add-resources/") << QStringLiteral("not JSON");
        QTest::newRow("not encoded") << QStringLiteral("vendel://add-resources/[{\"type\":1}]")
                                     << QStringLiteral("is not a URL");
        QTest::newRow("bad escape") << QStringLiteral("vendel://add-resources/%5B%G0")
                                    << QStringLiteral("is not a URL");
        QTest::newRow("invalid UTF-8")
            << QStringLiteral("vendel://add-resources/%5B%22%FF%22%5D") << QStringLiteral("not JSON");
        QTest::newRow("cut short") << addResourcesUrl("[" + good) << QStringLiteral("not JSON");
        QTest::newRow("one bad of two")
            << addResourcesUrl("[" + good + ",{\"type\":\"Folder\",\"name\":\"b\",\"url\":\"c:d\"}]")
            << QStringLiteral("Resource 2 (\"b\"): unknown type");
        QTest::newRow("missing url") << addResourcesUrl("[{\"type\":\"file\",\"name\":\"a\"}]")
                                     << QStringLiteral("\"url\" is missing");
        QTest::newRow("object, not list") << addResourcesUrl(good) << QStringLiteral("not a JSON array");
        QTest::newRow("query") << addResourcesUrl("[" + good + "]") + QStringLiteral("?more")
                               << QStringLiteral("query or a fragment");
        QTest::newRow("unknown command")
            << QStringLiteral("vendel://ping") << QStringLiteral("Unknown command \"ping\"");
        QTest::newRow("capitalised command")
            << addResourcesUrl("[" + good + "]")
                   .replace(QStringLiteral("add-resources"), QStringLiteral("Add-Resources"))
            << QStringLiteral("Unknown command \"Add-Resources\"");
        QTest::newRow("other scheme")
            << QStringLiteral("https://example.test/") << QStringLiteral("not a vendel://");
    }

    void reportsMalformedUrlsAndStoresNothing()
    {
        QFETCH(QString, url);
        QFETCH(QString, expected);
        CommandUrlHandler handler(*m_storage);
        try {
            handler.handle(url);
            QFAIL("handled");
        } catch (const HostError& error) {
            QVERIFY2(error.message().contains(expected), qPrintable(error.message()));
        }
        QVERIFY(m_storage->resources().isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<HostStorage> m_storage;
};

QTEST_GUILESS_MAIN(CommandUrlHandlerTest)
#include "CommandUrlHandlerTest.moc"
