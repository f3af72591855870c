// The tables are those of the first host, copied here as they were, not taken from the host's code.
#include "OldDatabase.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <atomic>

namespace VendelHost::Testing {

namespace {

const QStringList unversionedTables{
    QStringLiteral("PRAGMA journal_mode=WAL"),
    QStringLiteral("CREATE TABLE IF NOT EXISTS actions (id TEXT PRIMARY KEY, plugin TEXT NOT NULL, config "
                   "TEXT NOT NULL)"),
    QStringLiteral(
        "CREATE TABLE IF NOT EXISTS global_configs (bundle_id TEXT PRIMARY KEY, config TEXT NOT NULL)"),
    QStringLiteral("CREATE TABLE IF NOT EXISTS plugins (name TEXT PRIMARY KEY, path TEXT NOT NULL)"),
    QStringLiteral("CREATE TABLE IF NOT EXISTS resources (position INTEGER PRIMARY KEY, type TEXT NOT NULL, "
                   "name TEXT NOT NULL, url TEXT NOT NULL)"),
};

// Runs the work on a connection of its own, closed before returning, so no lock of the test's outlives it.
template <typename Work> auto withConnection(const QString& databasePath, Work work)
{
    static std::atomic<int> counter = 0;
    const QString name = QStringLiteral("test-database-%1").arg(counter++);
    struct Remove
    {
        QString name;
        ~Remove() { QSqlDatabase::removeDatabase(name); }
    } remove{name};
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    database.setDatabaseName(databasePath);
    const auto result = database.open() ? work(database) : decltype(work(database))();
    database.close();
    return result;
}

} // namespace

bool execute(const QString& databasePath, const QStringList& statements)
{
    return withConnection(databasePath, [&](QSqlDatabase& database) {
        QSqlQuery query(database);
        for (const QString& statement : statements) {
            if (!query.exec(statement)) {
                qWarning("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
                return false;
            }
        }
        return true;
    });
}

bool writeUnversionedDatabase(const QString& dataDirectory, const QStringList& rows)
{
    return QDir().mkpath(dataDirectory) &&
           execute(dataDirectory + QStringLiteral("/host.sqlite"), unversionedTables + rows);
}

int userVersion(const QString& databasePath)
{
    if (!QFile::exists(databasePath)) {
        return -1;
    }
    return withConnection(databasePath, [](QSqlDatabase& database) {
        QSqlQuery query(QStringLiteral("PRAGMA user_version"), database);
        return query.next() ? query.value(0).toInt() : -1;
    });
}

QByteArray contentsOf(const QString& databasePath)
{
    QByteArray contents;
    for (const QString& path : {databasePath, databasePath + QStringLiteral("-wal")}) {
        // A log without frames holds no write: a reader may leave an empty one behind.
        QFile file(path);
        contents += file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        contents += '\0';
    }
    return contents;
}

} // namespace VendelHost::Testing
