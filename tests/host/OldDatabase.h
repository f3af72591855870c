// Host databases as earlier versions of the host left them, and their raw state, for tests of migrations.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace VendelHost::Testing {

// Makes the database in the folder exactly as the host wrote it before its tables had a version: the same
// tables, a write-ahead log, and the rows given as SQL statements run after the tables.
bool writeUnversionedDatabase(const QString& dataDirectory, const QStringList& rows);

// Runs statements on the database file on a connection of the test's; false when one fails.
bool execute(const QString& databasePath, const QStringList& statements);
// PRAGMA user_version, or -1 when the file cannot be read.
int userVersion(const QString& databasePath);
// The file's bytes and those of its log (none when it is missing or empty), so a test can tell that
// nothing was written.
QByteArray contentsOf(const QString& databasePath);

} // namespace VendelHost::Testing
