// Tests resource types' raw values and the strict JSON form of a resource.
#include <VendelSDK/Resource.h>

#include "TestPlatform.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <optional>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

Q_DECLARE_METATYPE(Resource::ResourceType)

namespace {

// JSON is written with single quotes to stay readable; a typo in a test's JSON must not pass as a rejected
// resource.
QJsonObject objectFrom(const char* json)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(json).replace('\'', '"'));
    if (!document.isObject()) {
        qFatal("Test JSON is not an object: %s", json);
    }
    return document.object();
}

} // namespace

class ResourceTest : public QObject
{
    Q_OBJECT

private:
    std::optional<TestPlatform> m_platform;

private Q_SLOTS:
    void init() { m_platform.emplace(); }
    void cleanup() { m_platform.reset(); }

    void rawValuesRoundTripForAllSixTypes_data()
    {
        QTest::addColumn<Resource::ResourceType>("type");
        QTest::addColumn<QString>("raw");
        QTest::newRow("file") << Resource::ResourceType::file << QStringLiteral("file");
        QTest::newRow("folder") << Resource::ResourceType::folder << QStringLiteral("folder");
        QTest::newRow("website") << Resource::ResourceType::website << QStringLiteral("website");
        QTest::newRow("terminal") << Resource::ResourceType::terminal << QStringLiteral("terminal");
        QTest::newRow("application") << Resource::ResourceType::application << QStringLiteral("application");
        QTest::newRow("url") << Resource::ResourceType::url << QStringLiteral("url");
    }

    void rawValuesRoundTripForAllSixTypes()
    {
        QFETCH(Resource::ResourceType, type);
        QFETCH(QString, raw);
        QCOMPARE(Resource::rawValue(type), raw);
        QCOMPARE(Resource::typeFromRawValue(raw), std::optional<Resource::ResourceType>(type));
    }

    void typePositionsFollowTheDeclaredOrder()
    {
        QCOMPARE(int(Resource::ResourceType::file), 0);
        QCOMPARE(int(Resource::ResourceType::folder), 1);
        QCOMPARE(int(Resource::ResourceType::website), 2);
        QCOMPARE(int(Resource::ResourceType::terminal), 3);
        QCOMPARE(int(Resource::ResourceType::application), 4);
        QCOMPARE(int(Resource::ResourceType::url), 5);
    }

    void typeFromRawValueIsCaseSensitiveAndExact_data()
    {
        QTest::addColumn<QString>("raw");
        QTest::newRow("capitalised") << QStringLiteral("Folder");
        QTest::newRow("upper case") << QStringLiteral("URL");
        QTest::newRow("leading space") << QStringLiteral(" file");
        QTest::newRow("trailing space") << QStringLiteral("website ");
        QTest::newRow("prefix") << QStringLiteral("app");
        QTest::newRow("empty") << QString();
        QTest::newRow("position") << QStringLiteral("1");
    }

    void typeFromRawValueIsCaseSensitiveAndExact()
    {
        QFETCH(QString, raw);
        QCOMPARE(Resource::typeFromRawValue(raw), std::optional<Resource::ResourceType>());
    }

    void encodingWritesExactlyTypeNameAndUrlKeys()
    {
        const Resource resource{Resource::ResourceType::folder, QStringLiteral("Music"),
                                QStringLiteral("file:///home/me/Music/")};
        const QJsonObject json = resource.toJson();
        QStringList keys = json.keys();
        keys.sort();
        QCOMPARE(keys, (QStringList{QStringLiteral("name"), QStringLiteral("type"), QStringLiteral("url")}));
        QCOMPARE(json.value(QStringLiteral("type")), QJsonValue(QStringLiteral("folder")));
        QCOMPARE(json.value(QStringLiteral("name")), QJsonValue(QStringLiteral("Music")));
        QCOMPARE(json.value(QStringLiteral("url")), QJsonValue(QStringLiteral("file:///home/me/Music/")));
    }

    void decodingReadsAllThreeMembers()
    {
        const auto resource = Resource::fromJson(
            objectFrom("{'type':'website','name':'Docs','url':'https:\\/\\/example.org\\/a'}"));
        QVERIFY(resource.has_value());
        QCOMPARE(resource->type, Resource::ResourceType::website);
        QCOMPARE(resource->name, QStringLiteral("Docs"));
        QCOMPARE(resource->url, QStringLiteral("https://example.org/a"));
    }

    void decodingIgnoresUnknownExtraMembers()
    {
        const auto resource =
            Resource::fromJson(objectFrom("{'type':'file','name':'a','url':'file:///a','size':3}"));
        QVERIFY(resource.has_value());
        QCOMPARE(resource->type, Resource::ResourceType::file);
    }

    void decodingRejectsCapitalisedTypeFolder()
    {
        QVERIFY(!Resource::fromJson(objectFrom("{'type':'Folder','name':'Music','url':'file:///m'}")));
        // The same object with the raw value decodes, so the failure above is the type's fault.
        QVERIFY(Resource::fromJson(objectFrom("{'type':'folder','name':'Music','url':'file:///m'}")));
    }

    void decodingRejectsMissingUrl()
    {
        QVERIFY(!Resource::fromJson(objectFrom("{'type':'folder','name':'Music'}")));
    }

    void decodingRejectsMissingTypeOrName()
    {
        QVERIFY(!Resource::fromJson(objectFrom("{'name':'Music','url':'file:///m'}")));
        QVERIFY(!Resource::fromJson(objectFrom("{'type':'folder','url':'file:///m'}")));
    }

    void decodingRejectsWrongJsonTypes_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("type as number") << QByteArray("{'type':1,'name':'a','url':'file:///a'}");
        QTest::newRow("type as null") << QByteArray("{'type':null,'name':'a','url':'file:///a'}");
        QTest::newRow("name as number") << QByteArray("{'type':'file','name':7,'url':'file:///a'}");
        QTest::newRow("name as bool") << QByteArray("{'type':'file','name':true,'url':'file:///a'}");
        QTest::newRow("name as object") << QByteArray("{'type':'file','name':{},'url':'file:///a'}");
        QTest::newRow("url as array") << QByteArray("{'type':'file','name':'a','url':['file:///a']}");
        QTest::newRow("url as null") << QByteArray("{'type':'file','name':'a','url':null}");
    }

    void decodingRejectsWrongJsonTypes()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!Resource::fromJson(objectFrom(json.constData())));
    }

    void decodingRejectsUrlTextThatIsNoUrl()
    {
        QVERIFY(!Resource::fromJson(objectFrom("{'type':'url','name':'a','url':'http://a b/'}")));
    }

    void encodingThenDecodingGivesTheSameResource()
    {
        const Resource resource{Resource::ResourceType::terminal, QStringLiteral("Logs \"\u00e9\""),
                                QStringLiteral("file:///var/log/")};
        QCOMPARE(Resource::fromJson(resource.toJson()), std::optional<Resource>(resource));
    }
};

QTEST_GUILESS_MAIN(ResourceTest)
#include "ResourceTest.moc"
