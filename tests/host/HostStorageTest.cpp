// Tests the host's SQLite storage on temporary folders: what it keeps, and how it refuses bad folders.
#include "HostStorage.h"
#include "DatabaseLock.h"
#include "HostError.h"
#include "HostErrorText.h"
#include "OldDatabase.h"
#include "XdgDataFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <mutex>
#include <sys/stat.h>
#include <thread>

using namespace VendelHost;
using VendelHost::Testing::DatabaseLock;
using VendelHost::Testing::XdgDataFolders;

Q_DECLARE_METATYPE(VendelHost::Testing::DatabaseLock::Kind)
Q_DECLARE_METATYPE(VendelHost::HostStorage::Access)

namespace {

// The error message of constructing storage on the folder, or the empty text when it opened.
QString openingError(const QString& folder)
{
    try {
        HostStorage storage(folder);
        return {};
    } catch (const HostError& error) {
        return error.message();
    }
}

mode_t permissionsOf(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

// Sets the process's umask for one scope.
class Umask
{
public:
    explicit Umask(mode_t mask) : m_previous(::umask(mask)) {}
    ~Umask() { ::umask(m_previous); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t m_previous;
};

// Collects the notices that storage gives a person, from whichever thread opens it.
class Notices
{
public:
    HostStorage::Notify notify()
    {
        return [this](const QString& notice) {
            const std::lock_guard lock(m_mutex);
            m_notices.append(notice);
        };
    }
    QStringList all() const
    {
        const std::lock_guard lock(m_mutex);
        return m_notices;
    }

private:
    mutable std::mutex m_mutex;
    QStringList m_notices;
};

} // namespace

class HostStorageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void createsTheFolderTheDatabaseAndThePluginFolder()
    {
        QTemporaryDir temporary;
        const QString folder = temporary.filePath(QStringLiteral("nested/data"));
        HostStorage storage(folder);
        QCOMPARE(storage.dataDirectory(), folder);
        QVERIFY(QFileInfo(storage.databasePath()).isFile());
        QCOMPARE(storage.pluginFolder(), folder + QStringLiteral("/plugins"));
        QVERIFY(QFileInfo(storage.pluginFolder()).isDir());
        QVERIFY(storage.actions().isEmpty());
    }

    void theDataFolderVariableMovesTheDefaultFolder()
    {
        qputenv("VENDEL_HOST_DATA_DIR", "/tmp/somewhere");
        QCOMPARE(HostStorage::defaultDataDirectory(), QStringLiteral("/tmp/somewhere"));
        qunsetenv("VENDEL_HOST_DATA_DIR");
        QVERIFY(HostStorage::defaultDataDirectory().endsWith(QStringLiteral("/vendel")));
    }

    void keepsActionsAndTheirConfigurationAcrossReopening()
    {
        QTemporaryDir temporary;
        QString first;
        QString second;
        {
            HostStorage storage(temporary.path());
            first = storage.createAction(QStringLiteral("music"));
            second = storage.createAction(QStringLiteral("other"));
            QVERIFY(first != second);
            QCOMPARE(storage.action(first)->config, QString());
            QVERIFY(
                storage.setConfig(first, QStringLiteral("{\"action\":0,\"name\":\"Road \\\"Trip\\\"\"}")));
        }
        HostStorage storage(temporary.path());
        const auto actions = storage.actions();
        QCOMPARE(actions.size(), 2);
        QCOMPARE(actions.at(0).id, first);
        QCOMPARE(actions.at(0).plugin, QStringLiteral("music"));
        QCOMPARE(actions.at(0).config, QStringLiteral("{\"action\":0,\"name\":\"Road \\\"Trip\\\"\"}"));
        QCOMPARE(actions.at(1).id, second);
        QCOMPARE(actions.at(1).config, QString());
    }

    void aConfigurationForAnUnknownActionIsNotWritten()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        QVERIFY(!storage.setConfig(QStringLiteral("nope"), QStringLiteral("{}")));
        QVERIFY(!storage.action(QStringLiteral("nope")));
        QVERIFY(storage.actions().isEmpty());
    }

    void anEmptyConfigurationIsStoredHoweverItsTextWasMade()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const QString id = storage.createAction(QStringLiteral("music"));
        QVERIFY(storage.setConfig(id, QStringLiteral("{}")));
        // A null text, as a decoder may make of an empty string, is the empty configuration, not a failure.
        QVERIFY(storage.setConfig(id, QString()));
        QCOMPARE(storage.action(id)->config, QString());
        storage.setGlobalConfig(QStringLiteral("org.vendel.music"), QString());
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QString());
    }

    void keepsGlobalConfigurationsPerBundle()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QString());
        storage.setGlobalConfig(QStringLiteral("org.vendel.music"), QStringLiteral("{\"a\":1}"));
        storage.setGlobalConfig(QStringLiteral("org.vendel.other"), QStringLiteral("{\"b\":2}"));
        storage.setGlobalConfig(QStringLiteral("org.vendel.music"), QStringLiteral("{\"a\":3}"));
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QStringLiteral("{\"a\":3}"));
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.other")), QStringLiteral("{\"b\":2}"));
    }

    void aPluginOfTheSameNameReplacesTheEarlierOne()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        storage.recordPlugin({QStringLiteral("zeta"), QStringLiteral("/opt/zeta")});
        storage.recordPlugin({QStringLiteral("music"), QStringLiteral("/old/music")});
        storage.recordPlugin({QStringLiteral("music"), QStringLiteral("/new/music")});
        QCOMPARE(storage.plugin(QStringLiteral("music"))->path, QStringLiteral("/new/music"));
        QVERIFY(!storage.pluginWithPath(QStringLiteral("/old/music")));
        QCOMPARE(storage.pluginWithPath(QStringLiteral("/new/music"))->name, QStringLiteral("music"));
        QVERIFY(!storage.plugin(QStringLiteral("nope")));
        const auto plugins = storage.plugins();
        QCOMPARE(plugins.size(), 2);
        QCOMPARE(plugins.at(0).name, QStringLiteral("music"));
        QCOMPARE(plugins.at(1).name, QStringLiteral("zeta"));
    }

    void keepsResourcesInTheOrderTheyCame()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const HostResource docs{QStringLiteral("folder"), QStringLiteral("Docs"),
                                QStringLiteral("file:///tmp/docs")};
        const HostResource site{QStringLiteral("website"), QStringLiteral("Site"),
                                QStringLiteral("https://x.test/")};
        const HostResource app{QStringLiteral("application"), QStringLiteral("Ed"),
                               QStringLiteral("file:///usr/bin/ed")};
        storage.addResources({docs, site});
        storage.addResources({});
        storage.addResources({app});
        QCOMPARE(storage.resources(), (QList<HostResource>{docs, site, app}));
    }

    void aNewDatabaseHasTheLatestVersion()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        QCOMPARE(storage.schemaVersion(), 1);
        QCOMPARE(Testing::userVersion(storage.databasePath()), 1);
        // Reading a folder without a database answers as the latest version too.
        QCOMPARE(HostStorage(temporary.filePath(QStringLiteral("none")), HostStorage::Access::ReadOnly)
                     .schemaVersion(),
                 1);
    }

    void actionsAreNumberedPerPluginAndNumbersAreNeverGivenAgain()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const QString first = storage.createAction(QStringLiteral("music"));
        const QString second = storage.createAction(QStringLiteral("music"));
        const QString other = storage.createAction(QStringLiteral("other"));
        QCOMPARE(storage.action(first)->number, 1);
        QCOMPARE(storage.action(second)->number, 2);
        QCOMPARE(storage.action(other)->number, 1);
        QVERIFY(storage.deleteAction(second));
        QVERIFY(storage.deleteAction(first));
        const QString third = storage.createAction(QStringLiteral("music"));
        QCOMPARE(storage.action(third)->number, 3);
        QCOMPARE(storage.action(third)->title(), QStringLiteral("music 3"));
        QCOMPARE(storage.actions().size(), 2);
    }

    void deletingRemovesTheActionAndItsConfigurationOnly()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const QString kept = storage.createAction(QStringLiteral("music"));
        const QString gone = storage.createAction(QStringLiteral("music"));
        QVERIFY(storage.setConfig(kept, QStringLiteral("{\"a\":1}")));
        QVERIFY(storage.setConfig(gone, QStringLiteral("{\"b\":2}")));
        QVERIFY(storage.deleteAction(gone));
        QVERIFY(!storage.action(gone));
        QVERIFY(!storage.setConfig(gone, QStringLiteral("{}")));
        QVERIFY(!storage.deleteAction(gone));
        QVERIFY(!storage.deleteAction(QStringLiteral("nope")));
        QCOMPARE(storage.actions().size(), 1);
        QCOMPARE(storage.action(kept)->config, QStringLiteral("{\"a\":1}"));
    }

    void anOwnTitleReplacesTheDefaultOne()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        storage.recordPlugin({QStringLiteral("music"), QStringLiteral("/opt/music"),
                              QStringLiteral("Vendel Music"), QStringLiteral("vendel-music")});
        const QString titled = storage.createAction(QStringLiteral("music"), QStringLiteral("Road Trip 🚗"));
        const QString plain = storage.createAction(QStringLiteral("music"));
        QCOMPARE(storage.action(titled)->title(), QStringLiteral("Road Trip 🚗"));
        QCOMPARE(storage.action(plain)->title(), QStringLiteral("Vendel Music 2"));
        QCOMPARE(storage.action(plain)->pluginIcon, QStringLiteral("vendel-music"));
        QVERIFY(storage.setTitle(plain, QStringLiteral("Focus")));
        QCOMPARE(storage.action(plain)->title(), QStringLiteral("Focus"));
        QCOMPARE(storage.action(plain)->ownTitle, QStringLiteral("Focus"));
        // The empty title gives the default one back.
        QVERIFY(storage.setTitle(plain, QString()));
        QCOMPARE(storage.action(plain)->title(), QStringLiteral("Vendel Music 2"));
        QVERIFY(storage.action(plain)->ownTitle.isEmpty());
        QVERIFY(!storage.setTitle(QStringLiteral("nope"), QStringLiteral("x")));
    }

    void aPluginWithoutAnEntryOrNotInstalledShowsItsNameAndTheGenericIcon()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        storage.recordPlugin({QStringLiteral("bare"), QStringLiteral("/opt/bare")});
        const QString bare = storage.createAction(QStringLiteral("bare"));
        const QString missing = storage.createAction(QStringLiteral("missing"));
        QCOMPARE(storage.plugin(QStringLiteral("bare"))->displayName(), QStringLiteral("bare"));
        QCOMPARE(storage.plugin(QStringLiteral("bare"))->icon(), QStringLiteral("application-x-executable"));
        QCOMPARE(storage.action(bare)->title(), QStringLiteral("bare 1"));
        QCOMPARE(storage.action(missing)->title(), QStringLiteral("missing 1"));
        QCOMPARE(storage.action(missing)->pluginIcon, QStringLiteral("application-x-executable"));
    }

    // A database as the host left it before its tables had versions: two plugins, one with a desktop
    // entry, and actions made in turns.
    void anUnversionedDatabaseIsReadAsItIsWithoutMigrating()
    {
        QTemporaryDir temporary;
        XdgDataFolders xdg;
        QVERIFY(writeOldHost(temporary.path(), xdg));
        const QString database = temporary.filePath(QStringLiteral("host.sqlite"));
        const QByteArray before = Testing::contentsOf(database);

        HostStorage storage(temporary.path(), HostStorage::Access::ReadOnly);
        QCOMPARE(storage.schemaVersion(), 0);
        QCOMPARE(titlesOf(storage), oldHostTitles());
        QCOMPARE(storage.action(QStringLiteral("a3"))->title(), QStringLiteral("other 2"));
        QCOMPARE(storage.action(QStringLiteral("a4"))->config, QStringLiteral("{\"x\":1}"));
        QCOMPARE(storage.plugin(QStringLiteral("music"))->displayName(), QStringLiteral("Vendel Music"));
        QCOMPARE(storage.plugin(QStringLiteral("music"))->icon(), QStringLiteral("vendel-music"));
        QCOMPARE(storage.plugin(QStringLiteral("other"))->displayName(), QStringLiteral("other"));
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QStringLiteral("{\"g\":1}"));
        QCOMPARE(Testing::contentsOf(database), before);
        QCOMPARE(Testing::userVersion(database), 0);
    }

    void anUnversionedDatabaseIsMigratedWhenOpenedForWriting()
    {
        QTemporaryDir temporary;
        XdgDataFolders xdg;
        QVERIFY(writeOldHost(temporary.path(), xdg));
        {
            HostStorage storage(temporary.path());
            QCOMPARE(storage.schemaVersion(), 1);
            QCOMPARE(Testing::userVersion(storage.databasePath()), 1);
            // The numbers and default titles are those the database showed before.
            QCOMPARE(titlesOf(storage), oldHostTitles());
            QCOMPARE(storage.action(QStringLiteral("a4"))->config, QStringLiteral("{\"x\":1}"));
            QCOMPARE(storage.plugin(QStringLiteral("music"))->entryName, QStringLiteral("Vendel Music"));
            QCOMPARE(storage.plugin(QStringLiteral("other"))->entryName, QString());
            QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QStringLiteral("{\"g\":1}"));
            QCOMPARE(storage.resources().size(), 1);
            // Numbering goes on after the last one given.
            QCOMPARE(storage.action(storage.createAction(QStringLiteral("music")))->number, 3);
            QCOMPARE(storage.action(storage.createAction(QStringLiteral("other")))->number, 3);
        }
        // The display name is recorded: it no longer depends on the desktop entry.
        xdg.writeEntry(XdgDataFolders::SecondSystem, QStringLiteral("music.desktop"), "[Desktop Entry]\n");
        HostStorage storage(temporary.path(), HostStorage::Access::ReadOnly);
        QCOMPARE(storage.schemaVersion(), 1);
        QCOMPARE(storage.action(QStringLiteral("a1"))->title(), QStringLiteral("Vendel Music 1"));
    }

    void aDatabaseOfANewerHostIsRefusedAndLeftAlone_data()
    {
        QTest::addColumn<HostStorage::Access>("access");
        QTest::newRow("for writing") << HostStorage::Access::ReadWrite;
        QTest::newRow("for reading") << HostStorage::Access::ReadOnly;
    }

    void aDatabaseOfANewerHostIsRefusedAndLeftAlone()
    {
        QFETCH(HostStorage::Access, access);
        QTemporaryDir temporary;
        QString database;
        {
            HostStorage storage(temporary.path());
            storage.createAction(QStringLiteral("music"));
            database = storage.databasePath();
        }
        QVERIFY(Testing::execute(database, {QStringLiteral("PRAGMA user_version = 2")}));
        const QByteArray before = Testing::contentsOf(database);
        const QString error = errorOf([&] { HostStorage storage(temporary.path(), access); });
        QCOMPARE(error, QStringLiteral(
                            "The database %1 was written by a newer vendel-host (its tables are of version "
                            "2; this one knows versions up to 1). Nothing was read or written: use the "
                            "newer vendel-host.")
                            .arg(database));
        QCOMPARE(Testing::contentsOf(database), before);
        QCOMPARE(Testing::userVersion(database), 2);
    }

    void refusesADataFolderThatIsAFile()
    {
        QTemporaryDir temporary;
        const QString file = temporary.filePath(QStringLiteral("file"));
        QFile(file).open(QIODevice::WriteOnly);
        const QString message = openingError(file);
        QVERIFY2(message.contains(file) && message.contains(QStringLiteral("not a folder")),
                 qPrintable(message));
        QVERIFY(openingError(file + QStringLiteral("/below")).contains(QStringLiteral("Cannot create")));
    }

    void refusesADatabaseThatIsAFolder()
    {
        QTemporaryDir temporary;
        QDir(temporary.path()).mkdir(QStringLiteral("host.sqlite"));
        const QString message = openingError(temporary.path());
        QVERIFY2(message.contains(temporary.filePath(QStringLiteral("host.sqlite"))), qPrintable(message));
    }

    void refusesAFileThatIsNotADatabaseAndLeavesItAlone()
    {
        QTemporaryDir temporary;
        const QString path = temporary.filePath(QStringLiteral("host.sqlite"));
        const QByteArray content(4096, 'x');
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
        const QString message = openingError(temporary.path());
        QVERIFY2(message.contains(path) && message.contains(QStringLiteral("not a database")),
                 qPrintable(message));
        QVERIFY2(message.contains(QStringLiteral("move it aside (for example to %1.damaged)").arg(path)),
                 qPrintable(message));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), content);
    }

    void theFolderAndItsFilesArePrivateWhateverTheUmask()
    {
        const Umask umask(022);
        QTemporaryDir temporary;
        const QString folder = temporary.filePath(QStringLiteral("data"));
        HostStorage storage(folder);
        storage.createAction(QStringLiteral("music"));
        QCOMPARE(permissionsOf(folder), mode_t(0700));
        QCOMPARE(permissionsOf(storage.pluginFolder()), mode_t(0700));
        // The log and its index exist while the connection is open.
        for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")}) {
            const QString path = storage.databasePath() + suffix;
            QVERIFY2(QFileInfo::exists(path), qPrintable(path));
            QCOMPARE(permissionsOf(path), mode_t(0600));
        }
    }

    void aFolderOpenToOthersIsTightenedAndSaidOnce()
    {
        QTemporaryDir temporary;
        const QString folder = temporary.filePath(QStringLiteral("data"));
        {
            HostStorage storage(folder);
        }
        QVERIFY(::chmod(QFile::encodeName(folder).constData(), 0755) == 0);
        QVERIFY(::chmod(QFile::encodeName(folder + QStringLiteral("/host.sqlite")).constData(), 0644) == 0);
        Notices first;
        {
            HostStorage storage(folder, HostStorage::Access::ReadWrite, first.notify());
        }
        QCOMPARE(first.all().size(), 1);
        QVERIFY2(first.all().constFirst().contains(QStringLiteral("private")),
                 qPrintable(first.all().join(u'\n')));
        QCOMPARE(permissionsOf(folder), mode_t(0700));
        QCOMPARE(permissionsOf(folder + QStringLiteral("/host.sqlite")), mode_t(0600));
        Notices second;
        HostStorage storage(folder, HostStorage::Access::ReadWrite, second.notify());
        QVERIFY(second.all().isEmpty());
    }

    void aFirstOpenWaitsForALockHeldElsewhere_data()
    {
        QTest::addColumn<DatabaseLock::Kind>("kind");
        QTest::addColumn<QStringList>("statements");
        // Another first start, half-way through its schema in the write-ahead log.
        QTest::newRow("set-up under way")
            << DatabaseLock::Kind::Write << QStringList{QStringLiteral("PRAGMA journal_mode=WAL")};
        // A database still in its first journal mode, which the switch to the log must wait for.
        QTest::newRow("first journal mode") << DatabaseLock::Kind::Exclusive << QStringList{};
    }

    void aFirstOpenWaitsForALockHeldElsewhere()
    {
        QFETCH(DatabaseLock::Kind, kind);
        QFETCH(QStringList, statements);
        QTemporaryDir temporary;
        DatabaseLock lock(temporary.filePath(QStringLiteral("host.sqlite")), kind, statements);
        QVERIFY(lock.isHeld());

        Notices notices;
        QString error = QStringLiteral("not opened");
        std::thread opener([&] {
            error = errorOf([&] {
                HostStorage storage(temporary.path(), HostStorage::Access::ReadWrite, notices.notify());
                storage.createAction(QStringLiteral("music"));
            });
        });
        // Whatever the checks say, the opener is let go and waited for.
        auto letGo = qScopeGuard([&] {
            lock.release();
            opener.join();
        });
        // The opener says it waits; only then is the lock let go.
        QTRY_VERIFY2(notices.all().join(u'\n').contains(QStringLiteral("locked by another process")),
                     qPrintable(notices.all().join(u'\n')));
        letGo.dismiss();
        lock.release();
        opener.join();
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QCOMPARE(HostStorage(temporary.path()).actions().size(), 1);
    }

    void aReaderDoesNotWaitForAWriter()
    {
        QTemporaryDir temporary;
        QString id;
        {
            HostStorage storage(temporary.path());
            id = storage.createAction(QStringLiteral("music"));
            storage.setConfig(id, QStringLiteral("{\"a\":1}"));
        }
        DatabaseLock lock(temporary.filePath(QStringLiteral("host.sqlite")), DatabaseLock::Kind::Write);
        QVERIFY(lock.isHeld());
        for (const auto access : {HostStorage::Access::ReadOnly, HostStorage::Access::ReadWrite}) {
            QString config;
            const QString error =
                errorOf([&] { config = HostStorage(temporary.path(), access).action(id)->config; });
            QVERIFY2(error.isEmpty(), qPrintable(error));
            QCOMPARE(config, QStringLiteral("{\"a\":1}"));
        }
    }

    void readingAFolderWithoutDatabaseCreatesNothing()
    {
        QTemporaryDir temporary;
        const QString folder = temporary.filePath(QStringLiteral("data"));
        HostStorage storage(folder, HostStorage::Access::ReadOnly);
        QVERIFY(storage.actions().isEmpty());
        QVERIFY(storage.plugins().isEmpty());
        QVERIFY(!QFileInfo::exists(folder));
        const QString message = errorOf([&] { storage.createAction(QStringLiteral("music")); });
        QVERIFY2(message.contains(QStringLiteral("reading only")), qPrintable(message));
    }

    void aDeletedWriteAheadLogIsReportedAtTheNextWrite()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const QString id = storage.createAction(QStringLiteral("music"));
        const QString log = storage.databasePath() + QStringLiteral("-wal");
        QVERIFY(QFile::remove(log));
        const QString message = errorOf([&] { storage.setConfig(id, QStringLiteral("{\"a\":1}")); });
        QVERIFY2(message.contains(QStringLiteral("write-ahead log %1 was deleted").arg(log)),
                 qPrintable(message));
    }

    // Two connections, as the served host and the CLI have, write at once: each waits for the other's
    // transaction instead of failing.
    void twoConnectionsWriteAtOnce()
    {
        QTemporaryDir temporary;
        QString id;
        {
            HostStorage storage(temporary.path());
            id = storage.createAction(QStringLiteral("music"));
        }
        constexpr int writes = 100;
        std::atomic<int> failures = 0;
        const auto writer = [&](const QString& plugin) {
            try {
                HostStorage storage(temporary.path());
                for (int index = 0; index < writes; ++index) {
                    storage.createAction(plugin);
                    if (!storage.setConfig(
                            id, QStringLiteral("{\"by\":\"%1\",\"n\":%2}").arg(plugin).arg(index))) {
                        ++failures;
                    }
                }
            } catch (const HostError& error) {
                qWarning("%s", qPrintable(error.message()));
                ++failures;
            }
        };
        std::thread first(writer, QStringLiteral("first"));
        std::thread second(writer, QStringLiteral("second"));
        first.join();
        second.join();
        QCOMPARE(failures.load(), 0);

        HostStorage storage(temporary.path());
        QCOMPARE(storage.actions().size(), 1 + 2 * writes);
        const QString last = storage.action(id)->config;
        QVERIFY2(last == QStringLiteral("{\"by\":\"first\",\"n\":99}") ||
                     last == QStringLiteral("{\"by\":\"second\",\"n\":99}"),
                 qPrintable(last));
    }

private:
    // Two plugins, one with a desktop entry, one uninstalled plugin's action, and actions made in turns, as
    // rows of the old tables.
    static bool writeOldHost(const QString& folder, XdgDataFolders& xdg)
    {
        xdg.writeEntry(XdgDataFolders::SecondSystem, QStringLiteral("music.desktop"),
                       XdgDataFolders::entry("Vendel Music", "vendel-music"));
        return Testing::writeUnversionedDatabase(
            folder,
            {QStringLiteral("INSERT INTO plugins VALUES ('music', '/opt/music'), ('other', '/opt/other')"),
             QStringLiteral("INSERT INTO actions VALUES ('a1', 'music', ''), ('a2', 'other', ''), "
                            "('a3', 'other', ''), ('a4', 'music', '{\"x\":1}'), ('a5', 'gone', '')"),
             QStringLiteral("INSERT INTO global_configs VALUES ('org.vendel.music', '{\"g\":1}')"),
             QStringLiteral(
                 "INSERT INTO resources (type, name, url) VALUES ('folder', 'Docs', 'file:///d')")});
    }

    static QStringList oldHostTitles()
    {
        return {QStringLiteral("a1 Vendel Music 1"), QStringLiteral("a2 other 1"),
                QStringLiteral("a3 other 2"), QStringLiteral("a4 Vendel Music 2"),
                QStringLiteral("a5 gone 1")};
    }

    static QStringList titlesOf(const HostStorage& storage)
    {
        QStringList titles;
        for (const HostStorage::Action& action : storage.actions()) {
            titles.append(action.id + u' ' + action.title());
        }
        return titles;
    }
};

QTEST_GUILESS_MAIN(HostStorageTest)
#include "HostStorageTest.moc"
