// SQLite storage: set up once, then one connection per instance and one fully synced transaction per write.
#include "HostStorage.h"

#include "HostError.h"
#include "HostSchema.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QUrl>
#include <QVariant>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace VendelHost {

namespace {

constexpr auto databaseFileName = "host.sqlite";
constexpr auto pluginFolderName = "plugins";
// Long enough for another process's write to finish, short enough that a stuck one is reported.
constexpr int busyTimeoutMs = 10000;
// During set-up a lock is retried in short steps, so the wait can be announced and bounded as a whole.
constexpr int setUpStepMs = 50;
// A wait shorter than this is another start finishing its own set-up, not worth a word.
constexpr int setUpNoticeAfterMs = 1000;
constexpr mode_t privateFolderMode = 0700;
constexpr mode_t privateFileMode = 0600;

// SQLite's primary result codes that this file tells apart.
constexpr int sqliteBusy = 5;
constexpr int sqliteLocked = 6;
constexpr int sqliteCorrupt = 11;
constexpr int sqliteNotADatabase = 26;

QString uniqueConnectionName()
{
    static std::atomic<int> counter = 0;
    return QStringLiteral("vendel-host-%1").arg(counter++);
}

// Another connection holds a lock that the statement needs.
class LockedError : public HostError
{
public:
    using HostError::HostError;
};

int primaryCode(const QSqlError& error)
{
    bool isNumber = false;
    const int code = error.nativeErrorCode().toInt(&isNumber);
    return isNumber ? code & 0xff : -1;
}

// SQLite's own words say what went wrong; Qt's wrapper text adds nothing for a person.
QString reason(const QSqlError& error)
{
    return error.databaseText().isEmpty() ? error.text() : error.databaseText();
}

// A failure as a sentence that names the database, with the way out when the file is damaged.
[[noreturn]] void fail(const QSqlError& error, const QString& path,
                       const QString& verb = QStringLiteral("use"))
{
    const int code = primaryCode(error);
    QString message = QStringLiteral("Cannot %1 the database %2: %3.").arg(verb, path, reason(error));
    if (code == sqliteBusy || code == sqliteLocked) {
        throw LockedError(message + QStringLiteral(" Another process kept it locked; nothing was written, "
                                                   "try again."));
    }
    if (code == sqliteCorrupt || code == sqliteNotADatabase) {
        message += QStringLiteral(" If it is damaged, move it aside (for example to %1.damaged) and start "
                                  "vendel-host again: it begins afresh, without actions or plugins, and the "
                                  "moved file can still be examined.")
                       .arg(path);
    }
    throw HostError(message);
}

// Runs one statement on the connection; a failure becomes a sentence that names the database.
QSqlQuery run(const QString& connectionName, const QString& path, const QString& statement,
              const QVariantList& values = {})
{
    QSqlQuery query(QSqlDatabase::database(connectionName, false));
    if (!query.prepare(statement)) {
        fail(query.lastError(), path);
    }
    for (const QVariant& value : values) {
        // Qt binds a null QString as SQL NULL; every text the host keeps is text, the empty one included
        // (a plugin that could not encode its configuration writes exactly that).
        const bool nullText = value.typeId() == QMetaType::QString && value.toString().isNull();
        query.addBindValue(nullText ? QVariant(QString::fromLatin1("")) : value);
    }
    if (!query.exec()) {
        fail(query.lastError(), path);
    }
    return query;
}

HostSchema::Run runOn(const QString& connectionName, const QString& path)
{
    return [connectionName, path](const QString& statement, const QVariantList& values) {
        return run(connectionName, path, statement, values);
    };
}

QString errnoText()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Takes group and other permissions away from what we own; true when there were any. A link is left
// alone: its target is not ours to change.
bool makePrivate(const QString& path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0 || S_ISLNK(status.st_mode) ||
        status.st_uid != ::geteuid() || (status.st_mode & 077) == 0) {
        return false;
    }
    return ::chmod(QFile::encodeName(path).constData(), status.st_mode & 07700) == 0;
}

std::optional<std::pair<quint64, quint64>> fileIdentity(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    return std::pair<quint64, quint64>(status.st_dev, status.st_ino);
}

} // namespace

HostStorage::HostStorage(const QString& dataDirectory, Access access, Notify notify)
    : m_dataDirectory(QDir::cleanPath(QDir(dataDirectory).absolutePath())),
      m_connectionName(uniqueConnectionName()), m_access(access), m_notify(std::move(notify))
{
    try {
        if (access == Access::ReadOnly) {
            openReadOnly();
        } else {
            openWritable();
        }
    } catch (...) {
        QSqlDatabase::removeDatabase(m_connectionName);
        throw;
    }
}

HostStorage::~HostStorage()
{
    {
        QSqlDatabase database = QSqlDatabase::database(m_connectionName, false);
        database.close();
    }
    QSqlDatabase::removeDatabase(m_connectionName);
}

QString HostStorage::defaultDataDirectory()
{
    const QString overridden = qEnvironmentVariable(dataDirectoryVariable);
    if (!overridden.isEmpty()) {
        return overridden;
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/vendel");
}

QString HostStorage::databasePath() const
{
    return m_dataDirectory + u'/' + QString::fromLatin1(databaseFileName);
}

QString HostStorage::pluginFolder() const
{
    return m_dataDirectory + u'/' + QString::fromLatin1(pluginFolderName);
}

void HostStorage::makePrivateFolder()
{
    const QFileInfo folder(m_dataDirectory);
    if (folder.exists() && !folder.isDir()) {
        throw HostError(
            QStringLiteral("Cannot use the data folder %1: it is not a folder.").arg(m_dataDirectory));
    }
    // The parents are the user's own folders and keep their permissions; ours is private from the start,
    // whatever the umask.
    if (!QDir().mkpath(folder.path())) {
        throw HostError(QStringLiteral("Cannot create the data folder %1.").arg(m_dataDirectory));
    }
    bool tightened = false;
    for (const QString& path : {m_dataDirectory, pluginFolder()}) {
        if (::mkdir(QFile::encodeName(path).constData(), privateFolderMode) != 0 && errno != EEXIST) {
            throw HostError(QStringLiteral("Cannot create the data folder %1: %2.").arg(path, errnoText()));
        }
        tightened |= makePrivate(path);
    }
    if (QFileInfo(databasePath()).isDir()) {
        throw HostError(QStringLiteral("Cannot open the database %1: it is a folder.").arg(databasePath()));
    }
    // SQLite gives its log and index files the database's own permissions, so a private database file
    // keeps them private too. Only a new file is opened here: closing any descriptor of a file drops every
    // lock the process holds on it, those of its SQLite connections included.
    const int file = ::open(QFile::encodeName(databasePath()).constData(),
                            O_RDONLY | O_CREAT | O_EXCL | O_CLOEXEC, privateFileMode);
    if (file >= 0) {
        ::close(file);
    }
    for (const char* suffix : {"", "-wal", "-shm"}) {
        tightened |= makePrivate(databasePath() + QLatin1String(suffix));
    }
    if (tightened && m_notify) {
        m_notify(
            QStringLiteral("Made the data folder %1 private: other users could read it, now only you can.")
                .arg(m_dataDirectory));
    }
}

void HostStorage::openConnection(const QString& name, const QString& options)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    if (!database.isValid()) {
        throw HostError(
            QStringLiteral("The SQLite driver of Qt is missing (Debian package libqt6sql6-sqlite)."));
    }
    database.setDatabaseName(name);
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1;%2").arg(busyTimeoutMs).arg(options));
    if (!database.open()) {
        fail(database.lastError(), databasePath(), QStringLiteral("open"));
    }
}

int HostStorage::readSchemaVersion()
{
    QSqlQuery query = run(m_connectionName, databasePath(), QStringLiteral("PRAGMA user_version"));
    return query.next() ? query.value(0).toInt() : 0;
}

void HostStorage::refuseNewerSchema(int version) const
{
    if (version > HostSchema::latestVersion) {
        throw HostError(
            QStringLiteral("The database %1 was written by a newer vendel-host (its tables are of "
                           "version %2; this one knows versions up to %3). Nothing was read or "
                           "written: use the newer vendel-host.")
                .arg(databasePath())
                .arg(version)
                .arg(HostSchema::latestVersion));
    }
}

void HostStorage::openWritable()
{
    makePrivateFolder();
    openConnection(databasePath(), {});
    setUp();
    // A full sync makes a committed write survive the process being killed, and the machine losing power.
    run(m_connectionName, databasePath(), QStringLiteral("PRAGMA synchronous=FULL"));
    m_logIdentity = fileIdentity(databasePath() + QStringLiteral("-wal"));
}

void HostStorage::setUp()
{
    // The switch to a write-ahead log takes an exclusive lock that SQLite's busy handler does not wait
    // for, and the schema takes the write lock: both are retried, in short steps, until a deadline.
    // Once done, later opens only read to check, so they never queue behind a writer.
    const QString path = databasePath();
    run(m_connectionName, path, QStringLiteral("PRAGMA busy_timeout=%1").arg(setUpStepMs));
    const QDeadlineTimer deadline(setUpTimeoutMs);
    QElapsedTimer waited;
    waited.start();
    bool announced = false;
    for (;;) {
        try {
            // A newer program's database is left exactly as it is, its journal mode included.
            refuseNewerSchema(readSchemaVersion());
            // Each pragma's statement is done with before the next: an open one would hold a transaction.
            const auto journalMode = [&](const QString& statement) {
                QSqlQuery query = run(m_connectionName, path, statement);
                return query.next() ? query.value(0).toString() : QString();
            };
            if (journalMode(QStringLiteral("PRAGMA journal_mode")) != u"wal" &&
                journalMode(QStringLiteral("PRAGMA journal_mode=WAL")) != u"wal") {
                throw HostError(QStringLiteral("The database %1 cannot use a write-ahead log.").arg(path));
            }
            if (readSchemaVersion() != HostSchema::latestVersion ||
                !HostSchema::hasBaseTables(runOn(m_connectionName, databasePath()))) {
                write([&] {
                    // Read again under the write lock: another process may have set it up meanwhile.
                    const int version = readSchemaVersion();
                    refuseNewerSchema(version);
                    if (!HostSchema::hasBaseTables(runOn(m_connectionName, databasePath()))) {
                        if (version != 0) {
                            throw HostError(
                                QStringLiteral("The database %1 is not a vendel-host database: it has "
                                               "a version but not the host's tables.")
                                    .arg(path));
                        }
                        HostSchema::createBaseTables(runOn(m_connectionName, databasePath()));
                    }
                    if (version != HostSchema::latestVersion) {
                        HostSchema::migrate(version, runOn(m_connectionName, databasePath()));
                    }
                });
            }
            m_schemaVersion = HostSchema::latestVersion;
            break;
        } catch (const LockedError& error) {
            if (deadline.hasExpired()) {
                throw HostError(QStringLiteral("The database %1 stayed locked by another process for %2 s; "
                                               "try again when it has finished.")
                                    .arg(path)
                                    .arg(setUpTimeoutMs / 1000));
            }
            if (!announced && m_notify && waited.elapsed() >= setUpNoticeAfterMs) {
                m_notify(QStringLiteral("The database %1 is locked by another process; waiting for it (up "
                                        "to %2 s).")
                             .arg(path)
                             .arg(setUpTimeoutMs / 1000));
                announced = true;
            }
        }
    }
    run(m_connectionName, path, QStringLiteral("PRAGMA busy_timeout=%1").arg(busyTimeoutMs));
}

void HostStorage::openReadOnly()
{
    // Nothing to read yet is an empty host: an in-memory database with the tables answers for it.
    const auto openEmpty = [this] {
        {
            QSqlDatabase database = QSqlDatabase::database(m_connectionName, false);
            database.close();
        }
        QSqlDatabase::removeDatabase(m_connectionName);
        openConnection(QStringLiteral(":memory:"), {});
        HostSchema::createBaseTables(runOn(m_connectionName, databasePath()));
        HostSchema::migrate(0, runOn(m_connectionName, databasePath()));
        m_schemaVersion = HostSchema::latestVersion;
    };
    const QFileInfo folder(m_dataDirectory);
    if (folder.exists() && !folder.isDir()) {
        throw HostError(
            QStringLiteral("Cannot use the data folder %1: it is not a folder.").arg(m_dataDirectory));
    }
    // A folder closed to us is not an empty host: its database may well be there.
    if (folder.exists() && ::access(QFile::encodeName(m_dataDirectory).constData(), R_OK | X_OK) != 0) {
        throw HostError(
            QStringLiteral("Cannot read the data folder %1: %2.").arg(m_dataDirectory, errnoText()));
    }
    if (QFileInfo(databasePath()).isDir()) {
        throw HostError(QStringLiteral("Cannot open the database %1: it is a folder.").arg(databasePath()));
    }
    if (!QFileInfo::exists(databasePath())) {
        openEmpty();
        return;
    }
    const QString uri = QUrl::fromLocalFile(databasePath()).toString(QUrl::FullyEncoded);
    const QString options = QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY");
    openConnection(uri + QStringLiteral("?mode=ro"), options);
    bool present = false;
    try {
        present = HostSchema::hasBaseTables(runOn(m_connectionName, databasePath()));
    } catch (const HostError& error) {
        // A reader of a write-ahead log needs its index file, which a read-only folder cannot hold. When
        // there is no log, the database file holds every committed write and can be read as it stands.
        const QFileInfo log(databasePath() + QStringLiteral("-wal"));
        if (log.exists() && log.size() > 0) {
            throw HostError(error.message() +
                            QStringLiteral(" Its write-ahead log %1 holds writes that cannot be read without "
                                           "an index file next to it; a command that writes, run by someone "
                                           "who may write the folder, folds them into the database.")
                                .arg(log.filePath()));
        }
        QSqlDatabase::database(m_connectionName, false).close();
        QSqlDatabase::removeDatabase(m_connectionName);
        openConnection(uri + QStringLiteral("?immutable=1"), options);
        present = HostSchema::hasBaseTables(runOn(m_connectionName, databasePath()));
    }
    // An older database is read as it is: the queries know each version's tables.
    m_schemaVersion = readSchemaVersion();
    refuseNewerSchema(m_schemaVersion);
    if (!present) {
        openEmpty();
    }
}

void HostStorage::write(const std::function<void()>& statements)
{
    if (m_access == Access::ReadOnly) {
        throw HostError(QStringLiteral("The database %1 was opened for reading only.").arg(databasePath()));
    }
    checkWriteAheadLog();
    // Immediate: the write lock is taken up front, so a concurrent writer waits instead of failing later.
    run(m_connectionName, databasePath(), QStringLiteral("BEGIN IMMEDIATE"));
    try {
        statements();
        run(m_connectionName, databasePath(), QStringLiteral("COMMIT"));
    } catch (...) {
        QSqlQuery(QStringLiteral("ROLLBACK"), QSqlDatabase::database(m_connectionName, false));
        throw;
    }
    // A log deleted under us took this write with it: the next reader will not see it.
    checkWriteAheadLog();
}

void HostStorage::checkWriteAheadLog()
{
    if (m_logIdentity && fileIdentity(databasePath() + QStringLiteral("-wal")) != m_logIdentity) {
        throw HostError(
            QStringLiteral("The write-ahead log %1-wal was deleted or replaced while the host was "
                           "running, so recent writes may be lost. Stop every vendel-host "
                           "process and start again.")
                .arg(databasePath()));
    }
}

QSqlQuery HostStorage::sql(const QString& statement, const QVariantList& values) const
{
    return run(m_connectionName, databasePath(), statement, values);
}

} // namespace VendelHost
