// Each migration is a step from one version to the next; a database of any older version takes every step
// after its own, in order.
#include "HostSchema.h"

#include "DesktopEntry.h"

#include <QVariant>

namespace VendelHost::HostSchema {

namespace {

const char* const baseTables[] = {
    "CREATE TABLE IF NOT EXISTS actions (id TEXT PRIMARY KEY, plugin TEXT NOT NULL, config TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS global_configs (bundle_id TEXT PRIMARY KEY, config TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS plugins (name TEXT PRIMARY KEY, path TEXT NOT NULL)",
    ("CREATE TABLE IF NOT EXISTS resources (position INTEGER PRIMARY KEY, type TEXT NOT NULL, "
     "name TEXT NOT NULL, url TEXT NOT NULL)"),
};
constexpr auto baseTablesCheck = "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN "
                                 "('actions', 'global_configs', 'plugins', 'resources')";
constexpr int baseTableCount = 4;

void execute(const Run& run, const char* statement)
{
    run(QString::fromLatin1(statement), {});
}

// Version 1: titles, numbers per plugin that are never given twice, and plugins' display names and icons.
// Actions made before are numbered per plugin in the order they were made, and installed plugins take the
// name and icon of their desktop entry as it is now.
void addTitlesNumbersAndDisplayNames(const Run& run)
{
    // A null title is the default one: the plugin's display name and the action's number.
    execute(run, "ALTER TABLE actions ADD COLUMN title TEXT");
    execute(run, "ALTER TABLE actions ADD COLUMN number INTEGER NOT NULL DEFAULT 0");
    execute(run, "UPDATE actions SET number = (SELECT count(*) FROM actions AS earlier "
                 "WHERE earlier.plugin = actions.plugin AND earlier.rowid <= actions.rowid)");
    // The last number given per plugin, kept when its actions are deleted.
    execute(run, "CREATE TABLE action_numbers (plugin TEXT PRIMARY KEY, last INTEGER NOT NULL)");
    execute(
        run,
        "INSERT INTO action_numbers (plugin, last) SELECT plugin, max(number) FROM actions GROUP BY plugin");
    // Null when the plugin had no desktop entry.
    execute(run, "ALTER TABLE plugins ADD COLUMN display_name TEXT");
    execute(run, "ALTER TABLE plugins ADD COLUMN icon TEXT");
    QSqlQuery plugins = run(QStringLiteral("SELECT name FROM plugins"), {});
    QStringList names;
    while (plugins.next()) {
        names.append(plugins.value(0).toString());
    }
    for (const QString& name : names) {
        if (const auto entry = DesktopEntry::forExecutable(name)) {
            run(QStringLiteral("UPDATE plugins SET display_name = ?, icon = ? WHERE name = ?"),
                {entry->name, entry->icon.isEmpty() ? QVariant() : QVariant(entry->icon), name});
        }
    }
}

using Migration = void (*)(const Run&);
// Position n brings version n to n + 1.
const Migration migrations[] = {addTitlesNumbersAndDisplayNames};
static_assert(std::size(migrations) == latestVersion);

} // namespace

bool hasBaseTables(const Run& run)
{
    QSqlQuery query = run(QString::fromLatin1(baseTablesCheck), {});
    return query.next() && query.value(0).toInt() == baseTableCount;
}

void createBaseTables(const Run& run)
{
    for (const char* statement : baseTables) {
        execute(run, statement);
    }
}

void migrate(int from, const Run& run)
{
    for (int version = from; version < latestVersion; ++version) {
        migrations[version](run);
    }
    run(QStringLiteral("PRAGMA user_version = %1").arg(latestVersion), {});
}

} // namespace VendelHost::HostSchema
