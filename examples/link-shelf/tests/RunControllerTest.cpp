// A run against a scripted host: the exact commands it sends, and the one command URL it opens.
#include "RunController.h"
#include "LinkShelfTesting.h"

#include <QTest>

using namespace LinkShelf;
using LinkShelf::Testing::Fixture;
using VendelSDK::Testing::ScriptedHost;

namespace {

const QString actionLinks = QStringLiteral(
    "{\"links\":[{\"name\":\"Docs\",\"type\":\"website\",\"url\":\"https://example.org/docs\"}]}");
const QString everyActionLinks =
    QStringLiteral("{\"links\":[{\"name\":\"Home\",\"type\":\"folder\",\"url\":\"file:///home/"
                   "me\"},{\"name\":\"Docs again\",\"type\":\"url\",\"url\":\"https://example.org/docs\"}]}");

} // namespace

class RunControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runHandsTheActionsLinksThenTheOthersToTheHostInOneCommand()
    {
        Fixture f;
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(actionLinks))
            .expectGetGlobalConfig(ScriptedHost::text(everyActionLinks));
        RunController(QStringLiteral("A1")).run();
        QCOMPARE(
            f.host->commandUrls(),
            QStringList{QStringLiteral(
                "vendel://add-resources/"
                "%5B%7B%22name%22:%22Docs%22,%22type%22:%22website%22,%22url%22:%22https://example.org/"
                "docs%22%7D,"
                "%7B%22name%22:%22Home%22,%22type%22:%22folder%22,%22url%22:%22file:///home/me%22%7D%5D")});
        QCOMPARE(f.services.terminateRequests, 1);
        QVERIFY(f.alerts.alerts.isEmpty());
        QCOMPARE(f.host->remaining(), 0);
        QVERIFY(f.host->mismatches().isEmpty());
    }

    void terminationGivesTheHostBackBothSetsAsTheyWereRead()
    {
        Fixture f;
        const QString everyActionDocs = QStringLiteral(
            "{\"links\":[{\"name\":\"Home\",\"type\":\"folder\",\"url\":\"file:///home/me\"}]}");
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(actionLinks))
            .expectGetGlobalConfig(ScriptedHost::text(everyActionDocs))
            .expectSetConfig(actionLinks, QStringLiteral("A1"))
            .expectSetGlobalConfig(everyActionDocs);
        RunController(QStringLiteral("A1")).run();
        f.services.terminateNow();
        QCOMPARE(f.host->remaining(), 0);
        QVERIFY(f.host->mismatches().isEmpty());
    }

    void aNewActionWithNoLinksAnywhereSaysSoAndSendsNothing()
    {
        Fixture f;
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(QString()))
            .expectGetGlobalConfig(ScriptedHost::text(QString()));
        RunController(QStringLiteral("A1")).run();
        QVERIFY(f.host->commandUrls().isEmpty());
        QCOMPARE(f.alerts.alerts.size(), 1);
        QCOMPARE(f.alerts.alerts.front().messageText, QStringLiteral("There are no links to add."));
        QCOMPARE(f.services.terminateRequests, 1);
    }

    void aDamagedActionRunsOnlyTheLinksEveryActionAdds()
    {
        Fixture f;
        f.host
            ->expectGetConfig(QStringLiteral("A1"),
                              ScriptedHost::text(QStringLiteral("{\"links\":[{\"type\":\"Folder\"}]}")))
            .expectGetGlobalConfig(ScriptedHost::text(QStringLiteral(
                "{\"links\":[{\"name\":\"Home\",\"type\":\"folder\",\"url\":\"file:///home/me\"}]}")));
        RunController(QStringLiteral("A1")).run();
        QCOMPARE(f.host->commandUrls(),
                 QStringList{QStringLiteral("vendel://add-resources/"
                                            "%5B%7B%22name%22:%22Home%22,%22type%22:%22folder%22,%22url%22:%"
                                            "22file:///home/me%22%7D%5D")});
    }

    void aHostThatCannotBeAskedGetsTheAlertAndNoCommand()
    {
        Fixture f;
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::failure());
        RunController(QStringLiteral("A1")).run();
        QVERIFY(f.host->commandUrls().isEmpty());
        QCOMPARE(f.alerts.alerts.size(), 1);
        QCOMPARE(f.alerts.alerts.front().messageText,
                 QStringLiteral("Could not read action data in Vendel."));
        QCOMPARE(f.services.terminateRequests, 1);
        QCOMPARE(f.host->commands().size(), 1);
    }

    void aFailedPluginWideReadAlsoSendsNothing()
    {
        Fixture f;
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(actionLinks))
            .expectGetGlobalConfig(ScriptedHost::nothing());
        RunController(QStringLiteral("A1")).run();
        QVERIFY(f.host->commandUrls().isEmpty());
        QCOMPARE(f.alerts.alerts.size(), 1);
        QCOMPARE(f.alerts.alerts.front().informativeText,
                 QStringLiteral("Could not read data from script output"));
        QCOMPARE(f.services.terminateRequests, 1);
    }
};

QTEST_GUILESS_MAIN(RunControllerTest)
#include "RunControllerTest.moc"
