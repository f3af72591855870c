// The windows' edits reach the host a second after the last one, in virtual time, and once more at the end.
#include "LinkSetWindow.h"
#include "LinkSetEditor.h"
#include "LinkShelfPlugin.h"
#include "LinkShelfTesting.h"

#include <VendelSDK/VendelPlugin.h>

#include <QApplication>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

using namespace LinkShelf;
using namespace std::chrono_literals;
using LinkShelf::Testing::Fixture;
using VendelSDK::Testing::ScriptedHost;

namespace {

const QString docs = QStringLiteral(
    "{\"links\":[{\"name\":\"Docs\",\"type\":\"website\",\"url\":\"https://example.org/docs\"}]}");

} // namespace

class LinkSetWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void editsAreWrittenOnceASecondAfterTheLastAndAgainAtTermination()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin;
        LinkShelfPlugin linkShelf(plugin, true);
        const QString edited = QStringLiteral(
            "{\"links\":[{\"name\":\"Guide\",\"type\":\"website\",\"url\":\"https://example.org/guide\"}]}");
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(docs))
            .expectSetConfig(edited, QStringLiteral("A1"))
            .expectSetConfig(edited, QStringLiteral("A1"));
        linkShelf.openEditor(QStringLiteral("A1"));
        QTableWidget& table = linkShelf.windows().front()->editor().table();
        QCOMPARE(linkShelf.windows().front()->windowTitle(), QStringLiteral("Links of the Action"));
        table.item(0, 1)->setText(QStringLiteral("Guide"));
        f.scheduler.advance(300ms);
        table.item(0, 2)->setText(QStringLiteral("https://example.org/guide"));
        f.scheduler.advance(999ms);
        QCOMPARE(f.host->commands().size(), 1);
        f.scheduler.advance(1ms);
        QCOMPARE(f.host->commands().size(), 2);
        f.services.terminateNow();
        QCOMPARE(f.host->remaining(), 0);
        QVERIFY(f.host->mismatches().isEmpty());
    }

    void aRowWithAnInvalidUrlIsMarkedAndLeftOutUntilMended()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin;
        LinkShelfPlugin linkShelf(plugin, true);
        f.host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(docs))
            .expectSetConfig(docs, QStringLiteral("A1"));
        linkShelf.openEditor(QStringLiteral("A1"));
        LinkSetEditor& editor = linkShelf.windows().front()->editor();
        QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("add")), Qt::LeftButton);
        QCOMPARE(editor.table().rowCount(), 2);
        editor.table().item(1, 1)->setText(QStringLiteral("Bad"));
        f.scheduler.advance(100ms);
        editor.table().item(1, 2)->setText(QStringLiteral("not a url"));
        QVERIFY(!editor.table().item(1, 2)->toolTip().isEmpty());
        f.scheduler.advance(1s);
        QCOMPARE(f.host->remaining(), 0);
        editor.table().item(1, 2)->setText(QStringLiteral("https://example.org/good"));
        QVERIFY(editor.table().item(1, 2)->toolTip().isEmpty());
        QCOMPARE(editor.linkSet().links.size(), 2);
    }

    void removingTheLinksEveryActionAddsWritesThePluginWideSet()
    {
        Fixture f;
        VendelSDK::VendelPlugin plugin;
        LinkShelfPlugin linkShelf(plugin, true);
        f.host->expectGetGlobalConfig(ScriptedHost::text(docs))
            .expectSetGlobalConfig(QStringLiteral("{\"links\":[]}"));
        linkShelf.openPreferences();
        LinkSetEditor& editor = linkShelf.windows().front()->editor();
        editor.table().selectRow(0);
        QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("remove")), Qt::LeftButton);
        QCOMPARE(editor.table().rowCount(), 0);
        f.scheduler.advance(999ms);
        QCOMPARE(f.host->remaining(), 1);
        f.scheduler.advance(1ms);
        QCOMPARE(f.host->remaining(), 0);
        QVERIFY(f.host->mismatches().isEmpty());
    }
};

QTEST_MAIN(LinkSetWindowTest)
#include "LinkSetWindowTest.moc"
