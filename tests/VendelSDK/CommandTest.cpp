// Tests host command URLs: their exact text, path percent-encoding, add-resources data and sending.
#include <VendelSDK/Command.h>
#include <VendelSDK/Error.h>

#include "TestPlatform.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <optional>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QByteArray pathAllowedAscii =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/";

Resource folder(const QString& name, const QString& url)
{
    return Resource{Resource::ResourceType::folder, name, url};
}

// Reads add-resources data the way a host would: percent-decode, then parse the JSON array.
std::optional<QList<Resource>> decodedResources(const QString& data)
{
    QJsonParseError parseError{};
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromPercentEncoding(data.toLatin1()), &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isArray()) {
        return std::nullopt;
    }
    QList<Resource> resources;
    for (const QJsonValue& value : document.array()) {
        const auto resource = Resource::fromJson(value.toObject());
        if (!resource) {
            return std::nullopt;
        }
        resources.append(*resource);
    }
    return resources;
}

bool isAscii(const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() > 0x7f) {
            return false;
        }
    }
    return true;
}

} // namespace

class CommandTest : public QObject
{
    Q_OBJECT

private:
    std::optional<TestPlatform> m_platform;

    RecordingUrlOpener& opener() { return *m_platform->opener; }

private Q_SLOTS:
    void init() { m_platform.emplace(); }
    void cleanup() { m_platform.reset(); }

    void emptyResourceListSendsPercentEncodedEmptyArray()
    {
        const Command command(QList<Resource>{});
        QCOMPARE(command.name(), QStringLiteral("add-resources"));
        QCOMPARE(command.data(), std::optional<QString>(QStringLiteral("%5B%5D")));
        QCOMPARE(command.urlText(), QStringLiteral("vendel://add-resources/%5B%5D"));
        command.send();
        QCOMPARE(opener().opened, QStringList{QStringLiteral("vendel://add-resources/%5B%5D")});
    }

    void commandWithoutDataIsSchemeAndNameOnly()
    {
        const Command command(QStringLiteral("ping"), std::nullopt);
        QCOMPARE(command.urlText(), QStringLiteral("vendel://ping"));
        command.send();
        QCOMPARE(opener().opened, QStringList{QStringLiteral("vendel://ping")});
    }

    void commandWithDataAppendsSlashAndDataAsTheyStand()
    {
        const Command command(QStringLiteral("open"), QStringLiteral("a/b%20c"));
        QCOMPARE(command.urlText(), QStringLiteral("vendel://open/a/b%20c"));
    }

    void nonAsciiResourceNameReachesUrlAsUtf8PercentEscapes()
    {
        const QString name = QStringLiteral("Caf\u00e9 \u00dcber \u65e5\u672c");
        const Command command(QList<Resource>{folder(name, QStringLiteral("file:///srv/music"))});
        const QString url = command.urlText();
        QVERIFY2(isAscii(url), qPrintable(url));
        QVERIFY2(url.contains(QStringLiteral("Caf%C3%A9%20%C3%9Cber%20%E6%97%A5%E6%9C%AC")), qPrintable(url));
        const auto decoded = decodedResources(*command.data());
        QVERIFY(decoded.has_value());
        QCOMPARE(decoded->size(), 1);
        QCOMPARE(decoded->first().name, name);
    }

    void percentEncodingKeepsPathAllowedAscii()
    {
        const QString allowed = QString::fromLatin1(pathAllowedAscii);
        QCOMPARE(Command::percentEncodedForPath(allowed), allowed);
    }

    void percentEncodingEscapesEveryOtherAsciiCharacterAsUppercaseHex()
    {
        for (int code = 0; code < 0x80; ++code) {
            const char byte = char(code);
            if (pathAllowedAscii.contains(byte)) {
                continue;
            }
            const QString expected = u'%' + QStringLiteral("%1").arg(code, 2, 16, QLatin1Char('0')).toUpper();
            const QString encoded = Command::percentEncodedForPath(QString(QChar(code)));
            QVERIFY2(
                encoded == expected,
                qPrintable(QStringLiteral("0x%1 gave %2").arg(code, 2, 16, QLatin1Char('0')).arg(encoded)));
        }
    }

    void percentEncodingEscapesQuotesBracesBracketsAndSpaces()
    {
        QCOMPARE(Command::percentEncodedForPath(QStringLiteral("\"{}[] %")),
                 QStringLiteral("%22%7B%7D%5B%5D%20%25"));
    }

    void percentEncodingEscapesEachUtf8ByteOfNonAscii()
    {
        QCOMPARE(Command::percentEncodedForPath(QStringLiteral("\u00e9")), QStringLiteral("%C3%A9"));
        QCOMPARE(Command::percentEncodedForPath(QStringLiteral("\u20ac")), QStringLiteral("%E2%82%AC"));
        QCOMPARE(Command::percentEncodedForPath(QString::fromUtf8("\xf0\x9f\x8e\xb5")),
                 QStringLiteral("%F0%9F%8E%B5"));
        QCOMPARE(Command::percentEncodedForPath(QStringLiteral("a\u00e9b")), QStringLiteral("a%C3%A9b"));
    }

    void nameWithSpaceThrowsCouldNotCreateUrlAndOpensNothing()
    {
        const Command command(QStringLiteral("two words"), std::nullopt);
        std::optional<Error> thrown;
        try {
            command.send();
        } catch (const Error& error) {
            thrown = error;
        }
        QVERIFY(thrown.has_value());
        QCOMPARE(thrown->domain(), QString::fromLatin1(sdkErrorDomain));
        QCOMPARE(thrown->code(), qint64(0));
        QCOMPARE(thrown->localizedDescription(), QStringLiteral("Could not create URL"));
        QCOMPARE(thrown->localizedFailureReason(), QString());
        QVERIFY(opener().opened.isEmpty());
    }

    void validCommandIsOpenedExactlyOnceWithExactUrl()
    {
        const Command command(QStringLiteral("reveal"), QStringLiteral("folder%2Fmusic"));
        command.send();
        QCOMPARE(opener().opened, QStringList{QStringLiteral("vendel://reveal/folder%2Fmusic")});
    }

    void addResourcesDataDecodesToTheSameListInOrder()
    {
        const QList<Resource> resources{
            folder(QStringLiteral("Music"), QStringLiteral("file:///home/me/Music/")),
            {Resource::ResourceType::website, QStringLiteral("Docs \"v2\" & more"),
             QStringLiteral("https://example.org/docs?q=1&r=a%20b#top")},
            {Resource::ResourceType::file, QStringLiteral("na\u00efve.txt"),
             QStringLiteral("file:///tmp/na%C3%AFve.txt")},
            {Resource::ResourceType::terminal, QStringLiteral("back\\slash"),
             QStringLiteral("file:///var/log")},
            {Resource::ResourceType::application, QStringLiteral("Editor"),
             QStringLiteral("file:///usr/share/applications/editor.desktop")},
            {Resource::ResourceType::url, QStringLiteral("Mail"), QStringLiteral("mailto:me@example.org")},
        };
        const Command command(resources);
        QCOMPARE(command.name(), QStringLiteral("add-resources"));
        QVERIFY(command.data().has_value());
        const auto decoded = decodedResources(*command.data());
        QVERIFY(decoded.has_value());
        QCOMPARE(*decoded, resources);
    }

    void addResourcesUrlTextIsAValidUrlThatSendOpens()
    {
        const Command command(QList<Resource>{folder(QStringLiteral("A b"), QStringLiteral("file:///a"))});
        command.send();
        QCOMPARE(opener().opened, QStringList{command.urlText()});
        QVERIFY(command.urlText().startsWith(QStringLiteral("vendel://add-resources/%5B%7B")));
    }
};

QTEST_GUILESS_MAIN(CommandTest)
#include "CommandTest.moc"
