// Tests how a plugin's desktop entry is found through the XDG data folders and what is read from it.
#include "DesktopEntry.h"
#include "XdgDataFolders.h"

#include <QTest>

using namespace VendelHost;
using VendelHost::Testing::XdgDataFolders;

class DesktopEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEntryNamedAfterTheExecutableGivesNameAndIcon()
    {
        XdgDataFolders xdg;
        xdg.writeEntry(XdgDataFolders::SecondSystem, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("Ünïcødé Player", "/opt/player/icon.svg"));
        const auto entry = DesktopEntry::forExecutable(QStringLiteral("player"));
        QVERIFY(entry);
        QCOMPARE(entry->name, QStringLiteral("Ünïcødé Player"));
        QCOMPARE(entry->icon, QStringLiteral("/opt/player/icon.svg"));
        QVERIFY(!DesktopEntry::forExecutable(QStringLiteral("other")));
    }

    void theFirstDataFolderThatHasTheEntryWins()
    {
        XdgDataFolders xdg;
        xdg.writeEntry(XdgDataFolders::SecondSystem, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("Second", "second"));
        xdg.writeEntry(XdgDataFolders::FirstSystem, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("First", "first"));
        QCOMPARE(DesktopEntry::forExecutable(QStringLiteral("player"))->name, QStringLiteral("First"));
        xdg.writeEntry(XdgDataFolders::Home, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("Own", "own"));
        QCOMPARE(DesktopEntry::forExecutable(QStringLiteral("player"))->name, QStringLiteral("Own"));
        // A hidden entry of the user's hides the system's too, as on the desktop.
        xdg.writeEntry(XdgDataFolders::Home, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("Own", "own") + "Hidden=true\n");
        QVERIFY(!DesktopEntry::forExecutable(QStringLiteral("player")));
    }

    void theNameIsTakenInTheEnvironmentsLanguage()
    {
        XdgDataFolders xdg;
        xdg.writeEntry(XdgDataFolders::FirstSystem, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("Player", "player") + "Name[de]=Abspieler\nName[fr]=Lecteur\n");
        const QByteArray language = qgetenv("LANGUAGE");
        qputenv("LANGUAGE", "de");
        const auto german = DesktopEntry::forExecutable(QStringLiteral("player"));
        qputenv("LANGUAGE", "fr");
        const auto french = DesktopEntry::forExecutable(QStringLiteral("player"));
        qputenv("LANGUAGE", language);
        QCOMPARE(german->name, QStringLiteral("Abspieler"));
        QCOMPARE(french->name, QStringLiteral("Lecteur"));
    }

    void escapesAreReadAndLineBreaksBecomeSpaces()
    {
        XdgDataFolders xdg;
        xdg.writeEntry(XdgDataFolders::FirstSystem, QStringLiteral("player.desktop"),
                       "# A comment\n[Desktop Entry]\nType=Application\nName=\\sTwo\\nlines\\tand\\\\ tab \n"
                       "Icon=\n[Desktop Action other]\nName=Other\n");
        const auto entry = DesktopEntry::forExecutable(QStringLiteral("player"));
        QVERIFY(entry);
        QCOMPARE(entry->name, QStringLiteral("Two lines and\\ tab"));
        QCOMPARE(entry->icon, QString());
    }

    void entriesThatAreNoApplicationsNamesCount_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("not a key file") << QByteArray("just text\n");
        QTest::newRow("no name") << QByteArray("[Desktop Entry]\nType=Application\nIcon=x\n");
        QTest::newRow("blank name") << QByteArray("[Desktop Entry]\nType=Application\nName= \n");
        QTest::newRow("a link") << QByteArray("[Desktop Entry]\nType=Link\nName=x\nURL=https://x\n");
        QTest::newRow("no type") << QByteArray("[Desktop Entry]\nName=x\n");
        QTest::newRow("other group") << QByteArray("[Other]\nType=Application\nName=x\n");
        QTest::newRow("invalid UTF-8") << QByteArray("[Desktop Entry]\nType=Application\nName=\xff\n");
    }

    void entriesThatAreNoApplicationsNamesCount()
    {
        QFETCH(QByteArray, contents);
        XdgDataFolders xdg;
        xdg.writeEntry(XdgDataFolders::FirstSystem, QStringLiteral("player.desktop"), contents);
        QVERIFY(!DesktopEntry::forExecutable(QStringLiteral("player")));
    }

    void anExecutableNameIsNoPath()
    {
        XdgDataFolders xdg;
        xdg.writeEntry(XdgDataFolders::FirstSystem, QStringLiteral("player.desktop"),
                       XdgDataFolders::entry("Player", "player"));
        QVERIFY(!DesktopEntry::forExecutable(QStringLiteral("../applications/player")));
        QVERIFY(!DesktopEntry::forExecutable(QString()));
    }
};

QTEST_GUILESS_MAIN(DesktopEntryTest)
#include "DesktopEntryTest.moc"
