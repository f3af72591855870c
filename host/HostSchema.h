// The host database's tables and their versions: the tables as the host first kept them, then migrations
// applied in order. PRAGMA user_version holds how many have been applied.
#pragma once

#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <functional>

namespace VendelHost::HostSchema {

// The version this program writes, and the newest it can read.
constexpr int latestVersion = 1;

// Runs one statement on the database being set up, throwing HostError when it fails.
using Run = std::function<QSqlQuery(const QString& statement, const QVariantList& values)>;

// Whether the tables of version 0 are all there: the database has been set up.
bool hasBaseTables(const Run& run);
// Creates the tables as they were before versions (version 0), where they are missing.
void createBaseTables(const Run& run);
// Brings the tables of version `from` to latestVersion, one migration after another, and records the
// version; inside the caller's transaction, so a failed migration leaves the database as it was.
void migrate(int from, const Run& run);

} // namespace VendelHost::HostSchema
