// SQLite's own locks, taken on a connection of the test's: a deterministic stand-in for a slow writer.
#include "DatabaseLock.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <atomic>

namespace VendelHost::Testing {

DatabaseLock::DatabaseLock(const QString& databasePath, Kind kind, const QStringList& statements)
{
    static std::atomic<int> counter = 0;
    m_connectionName = QStringLiteral("test-lock-%1").arg(counter++);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    database.setDatabaseName(databasePath);
    if (!database.open()) {
        qWarning("Cannot open %s: %s", qPrintable(databasePath), qPrintable(database.lastError().text()));
        return;
    }
    QSqlQuery query(database);
    for (const QString& statement : statements) {
        if (!query.exec(statement)) {
            qWarning("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
            return;
        }
    }
    const QString begin =
        kind == Kind::Write ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN EXCLUSIVE");
    if (!query.exec(begin)) {
        qWarning("%s: %s", qPrintable(begin), qPrintable(query.lastError().text()));
        return;
    }
    // A write, so that even an empty database has something to hold the lock over.
    m_held = query.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS test_lock (x)"));
}

DatabaseLock::~DatabaseLock()
{
    release();
    QSqlDatabase::removeDatabase(m_connectionName);
}

void DatabaseLock::release()
{
    QSqlDatabase database = QSqlDatabase::database(m_connectionName, false);
    if (m_held) {
        QSqlQuery(QStringLiteral("COMMIT"), database);
        m_held = false;
    }
    database.close();
}

} // namespace VendelHost::Testing
