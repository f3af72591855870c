// SQLite storage: one connection per instance, every write one immediate transaction, synced in full.
#include "HostStorage.h"

#include "HostError.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QUuid>
#include <QVariant>

#include <atomic>

namespace VendelHost {

namespace {

constexpr auto databaseFileName = "host.sqlite";
constexpr auto pluginFolderName = "plugins";
// Long enough for another process's write to finish, short enough that a stuck one is reported.
constexpr int busyTimeoutMs = 10000;

const char* const schema[] = {
    "CREATE TABLE IF NOT EXISTS actions (id TEXT PRIMARY KEY, plugin TEXT NOT NULL, config TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS global_configs (bundle_id TEXT PRIMARY KEY, config TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS plugins (name TEXT PRIMARY KEY, path TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS resources (position INTEGER PRIMARY KEY, type TEXT NOT NULL, "
    "name TEXT NOT NULL, url TEXT NOT NULL)",
};

QString uniqueConnectionName()
{
    static std::atomic<int> counter = 0;
    return QStringLiteral("vendel-host-%1").arg(counter++);
}

} // namespace

HostStorage::HostStorage(const QString& dataDirectory)
    : m_dataDirectory(QDir::cleanPath(QDir(dataDirectory).absolutePath())),
      m_connectionName(uniqueConnectionName())
{
    try {
        open();
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

namespace {

// SQLite's own words say what went wrong; Qt's wrapper text adds nothing for a person.
QString reason(const QSqlError& error)
{
    return error.databaseText().isEmpty() ? error.text() : error.databaseText();
}

// Runs one statement on the connection; a failure becomes a sentence that names the database.
QSqlQuery run(const QString& connectionName, const QString& path, const QString& statement,
              const QVariantList& values = {})
{
    QSqlQuery query(QSqlDatabase::database(connectionName, false));
    if (!query.prepare(statement)) {
        throw HostError(
            QStringLiteral("Cannot use the database %1: %2.").arg(path, reason(query.lastError())));
    }
    for (const QVariant& value : values) {
        // Qt binds a null QString as SQL NULL; every text the host keeps is text, the empty one included
        // (a plugin that could not encode its configuration writes exactly that).
        const bool nullText = value.typeId() == QMetaType::QString && value.toString().isNull();
        query.addBindValue(nullText ? QVariant(QString::fromLatin1("")) : value);
    }
    if (!query.exec()) {
        throw HostError(
            QStringLiteral("Cannot use the database %1: %2.").arg(path, reason(query.lastError())));
    }
    return query;
}

} // namespace

void HostStorage::open()
{
    const QFileInfo folder(m_dataDirectory);
    if (folder.exists() && !folder.isDir()) {
        throw HostError(
            QStringLiteral("Cannot use the data folder %1: it is not a folder.").arg(m_dataDirectory));
    }
    if (!QDir().mkpath(m_dataDirectory) || !QDir().mkpath(pluginFolder())) {
        throw HostError(QStringLiteral("Cannot create the data folder %1.").arg(m_dataDirectory));
    }
    if (QFileInfo(databasePath()).isDir()) {
        throw HostError(QStringLiteral("Cannot open the database %1: it is a folder.").arg(databasePath()));
    }

    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    if (!database.isValid()) {
        throw HostError(
            QStringLiteral("The SQLite driver of Qt is missing (Debian package libqt6sql6-sqlite)."));
    }
    database.setDatabaseName(databasePath());
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs));
    if (!database.open()) {
        throw HostError(QStringLiteral("Cannot open the database %1: %2.")
                            .arg(databasePath(), reason(database.lastError())));
    }

    // A write-ahead log lets the CLI read while the service writes; a full sync makes a committed write
    // survive the process being killed, and the machine losing power.
    const QString path = databasePath();
    run(m_connectionName, path, QStringLiteral("PRAGMA journal_mode=WAL"));
    run(m_connectionName, path, QStringLiteral("PRAGMA synchronous=FULL"));
    write([&] {
        for (const char* statement : schema) {
            run(m_connectionName, path, QString::fromLatin1(statement));
        }
    });
}

void HostStorage::write(const std::function<void()>& statements)
{
    // Immediate: the write lock is taken up front, so a concurrent writer waits instead of failing later.
    run(m_connectionName, databasePath(), QStringLiteral("BEGIN IMMEDIATE"));
    try {
        statements();
        run(m_connectionName, databasePath(), QStringLiteral("COMMIT"));
    } catch (...) {
        QSqlQuery(QStringLiteral("ROLLBACK"), QSqlDatabase::database(m_connectionName, false));
        throw;
    }
}

QString HostStorage::createAction(const QString& plugin)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    write([&] {
        run(m_connectionName, databasePath(),
            QStringLiteral("INSERT INTO actions (id, plugin, config) VALUES (?, ?, '')"), {id, plugin});
    });
    return id;
}

std::optional<HostStorage::Action> HostStorage::action(const QString& id) const
{
    QSqlQuery query = run(m_connectionName, databasePath(),
                          QStringLiteral("SELECT id, plugin, config FROM actions WHERE id = ?"), {id});
    if (!query.next()) {
        return std::nullopt;
    }
    return Action{query.value(0).toString(), query.value(1).toString(), query.value(2).toString()};
}

QList<HostStorage::Action> HostStorage::actions() const
{
    QSqlQuery query = run(m_connectionName, databasePath(),
                          QStringLiteral("SELECT id, plugin, config FROM actions ORDER BY rowid"));
    QList<Action> actions;
    while (query.next()) {
        actions.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString()});
    }
    return actions;
}

bool HostStorage::setConfig(const QString& id, const QString& config)
{
    bool found = false;
    write([&] {
        const QSqlQuery query =
            run(m_connectionName, databasePath(),
                QStringLiteral("UPDATE actions SET config = ? WHERE id = ?"), {config, id});
        found = query.numRowsAffected() > 0;
    });
    return found;
}

QString HostStorage::globalConfig(const QString& bundleID) const
{
    QSqlQuery query =
        run(m_connectionName, databasePath(),
            QStringLiteral("SELECT config FROM global_configs WHERE bundle_id = ?"), {bundleID});
    return query.next() ? query.value(0).toString() : QString();
}

void HostStorage::setGlobalConfig(const QString& bundleID, const QString& config)
{
    write([&] {
        run(m_connectionName, databasePath(),
            QStringLiteral("INSERT INTO global_configs (bundle_id, config) VALUES (?, ?) "
                           "ON CONFLICT (bundle_id) DO UPDATE SET config = excluded.config"),
            {bundleID, config});
    });
}

void HostStorage::recordPlugin(const Plugin& plugin)
{
    write([&] {
        run(m_connectionName, databasePath(),
            QStringLiteral("INSERT INTO plugins (name, path) VALUES (?, ?) "
                           "ON CONFLICT (name) DO UPDATE SET path = excluded.path"),
            {plugin.name, plugin.path});
    });
}

std::optional<HostStorage::Plugin> HostStorage::plugin(const QString& name) const
{
    QSqlQuery query = run(m_connectionName, databasePath(),
                          QStringLiteral("SELECT name, path FROM plugins WHERE name = ?"), {name});
    if (!query.next()) {
        return std::nullopt;
    }
    return Plugin{query.value(0).toString(), query.value(1).toString()};
}

std::optional<HostStorage::Plugin> HostStorage::pluginWithPath(const QString& path) const
{
    QSqlQuery query = run(m_connectionName, databasePath(),
                          QStringLiteral("SELECT name, path FROM plugins WHERE path = ?"), {path});
    if (!query.next()) {
        return std::nullopt;
    }
    return Plugin{query.value(0).toString(), query.value(1).toString()};
}

QList<HostStorage::Plugin> HostStorage::plugins() const
{
    QSqlQuery query =
        run(m_connectionName, databasePath(), QStringLiteral("SELECT name, path FROM plugins ORDER BY name"));
    QList<Plugin> plugins;
    while (query.next()) {
        plugins.append({query.value(0).toString(), query.value(1).toString()});
    }
    return plugins;
}

void HostStorage::addResources(const QList<HostResource>& resources)
{
    write([&] {
        for (const HostResource& resource : resources) {
            run(m_connectionName, databasePath(),
                QStringLiteral("INSERT INTO resources (type, name, url) VALUES (?, ?, ?)"),
                {resource.type, resource.name, resource.url});
        }
    });
}

QList<HostResource> HostStorage::resources() const
{
    QSqlQuery query = run(m_connectionName, databasePath(),
                          QStringLiteral("SELECT type, name, url FROM resources ORDER BY position"));
    QList<HostResource> resources;
    while (query.next()) {
        resources.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString()});
    }
    return resources;
}

} // namespace VendelHost
