// The link set's JSON form and how a run merges an action's links with those every action adds.
#include "LinkSet.h"

#include <QJsonDocument>
#include <QTest>

using namespace LinkShelf;
using VendelSDK::Resource;

namespace {

Resource link(Resource::ResourceType type, const QString& name, const QString& url)
{
    Resource resource;
    resource.type = type;
    resource.name = name;
    resource.url = url;
    return resource;
}

QJsonObject object(const char* json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

class LinkSetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void encodesEachLinkAsAResourceInOrder()
    {
        const LinkSet set{{link(Resource::ResourceType::website, QStringLiteral("Docs"),
                                QStringLiteral("https://example.org/docs")),
                           link(Resource::ResourceType::folder, QStringLiteral("Home"),
                                QStringLiteral("file:///home/me"))}};
        QCOMPARE(
            QJsonDocument(set.toJson()).toJson(QJsonDocument::Compact),
            QByteArray(
                "{\"links\":[{\"name\":\"Docs\",\"type\":\"website\",\"url\":\"https://example.org/docs\"},"
                "{\"name\":\"Home\",\"type\":\"folder\",\"url\":\"file:///home/me\"}]}"));
        QCOMPARE(LinkSet::fromJson(set.toJson()), set);
    }

    void anEmptyListIsAValidSet()
    {
        const auto set = LinkSet::fromJson(object("{\"links\":[]}"));
        QVERIFY(set);
        QVERIFY(set->links.isEmpty());
    }

    void aSetWithoutLinksIsRefused() { QVERIFY(!LinkSet::fromJson(object("{\"link\":[]}"))); }

    void oneDamagedEntryRefusesTheWholeSet()
    {
        QVERIFY(!LinkSet::fromJson(
            object("{\"links\":[{\"name\":\"Docs\",\"type\":\"website\",\"url\":\"https://"
                   "example.org\"},{\"name\":\"X\",\"type\":\"Folder\",\"url\":\"file:///x\"}]}")));
        QVERIFY(!LinkSet::fromJson(object("{\"links\":[{\"name\":\"No URL\",\"type\":\"url\"}]}")));
        QVERIFY(!LinkSet::fromJson(object("{\"links\":[\"https://example.org\"]}")));
    }

    void anInvalidUrlIsNoValidLink()
    {
        QVERIFY(LinkSet::isValid(
            link(Resource::ResourceType::url, QStringLiteral("a"), QStringLiteral("ssh://host/x"))));
        QVERIFY(!LinkSet::isValid(
            link(Resource::ResourceType::url, QStringLiteral("a"), QStringLiteral("not a url"))));
        QVERIFY(!LinkSet::isValid(link(Resource::ResourceType::url, QStringLiteral("a"), QString())));
    }

    void mergingPutsTheActionsLinksFirstAndSkipsDefaultsWithTheSameUrl()
    {
        const Resource docs = link(Resource::ResourceType::website, QStringLiteral("Docs"),
                                   QStringLiteral("https://example.org/docs"));
        const Resource home =
            link(Resource::ResourceType::folder, QStringLiteral("Home"), QStringLiteral("file:///home/me"));
        const Resource docsAgain = link(Resource::ResourceType::url, QStringLiteral("Docs again"),
                                        QStringLiteral("https://example.org/docs"));
        QCOMPARE(LinkSet::merged(LinkSet{{docs}}, LinkSet{{home, docsAgain, home}}),
                 (QList<Resource>{docs, home}));
        QCOMPARE(LinkSet::merged(LinkSet{}, LinkSet{}), QList<Resource>{});
    }
};

QTEST_APPLESS_MAIN(LinkSetTest)
#include "LinkSetTest.moc"
