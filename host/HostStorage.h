// Keeps the host's actions, global configurations, installed plugins and received resources in SQLite.
#pragma once

#include "HostResource.h"

#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <functional>
#include <optional>
#include <utility>

namespace VendelHost {

class HostStorage
{
public:
    struct Action
    {
        QString id;
        QString plugin;
        // The plugin's own text, kept as it came; empty until the first write.
        QString config;
        // The title a person gave it; empty when it has none and shows the default one.
        QString ownTitle;
        // Given once per plugin, in the order the plugin's actions were made, and never given again.
        qint64 number = 0;
        // The plugin's display name and icon (see Plugin), or its name and the generic icon when it is not
        // installed.
        QString pluginDisplayName;
        QString pluginIcon;

        // The own title, else the default one: the plugin's display name and the number.
        QString title() const;
    };

    struct Plugin
    {
        // The executable's file name, by which people name the plugin.
        QString name;
        // The executable's canonical path, by which the plugin knows itself.
        QString path;
        // The name and icon of the plugin's desktop entry when it was installed; empty when it had none.
        QString entryName = {};
        QString entryIcon = {};

        // The entry's name, else the executable's.
        QString displayName() const;
        // The entry's icon, else the generic one.
        QString icon() const;
    };

    enum class Access
    {
        // Creates what is missing, makes the folder private and sets the database up once.
        ReadWrite,
        // Writes nothing, not even the set-up: works on a folder the user may only read, and never waits
        // for a writer. A folder without a database reads as an empty host.
        ReadOnly,
    };

    // Receives the one-line notices a person should see: a folder made private, a wait for a lock.
    using Notify = std::function<void(const QString&)>;

    // The environment variable that moves the data folder, so tests and demos keep their own.
    static constexpr auto dataDirectoryVariable = "VENDEL_HOST_DATA_DIR";
    // A first start waits this long for another process's set-up or write before it gives up.
    static constexpr int setUpTimeoutMs = 30000;

    // Opens the database in the folder, creating both when needed. For writing, an older database is
    // brought to this program's version first; for reading only, it is read as it is. Throws HostError
    // naming the path and the reason when the folder or the database cannot be made, read or written, or
    // the database was made by a newer program (nothing is written to it then).
    explicit HostStorage(const QString& dataDirectory, Access access = Access::ReadWrite, Notify notify = {});
    ~HostStorage();
    HostStorage(const HostStorage&) = delete;
    HostStorage& operator=(const HostStorage&) = delete;

    // VENDEL_HOST_DATA_DIR when set, else "vendel" in the XDG data folder.
    static QString defaultDataDirectory();

    const QString& dataDirectory() const { return m_dataDirectory; }
    QString databasePath() const;
    QString pluginFolder() const;

    // The version of the database's tables: this program's, or an older one read as it is.
    int schemaVersion() const { return m_schemaVersion; }

    // Every write below is one transaction, committed with a full sync before it returns.
    // An empty title gives the action the default one. Titles are checked by the caller (HostInput).
    QString createAction(const QString& plugin, const QString& title = {});
    std::optional<Action> action(const QString& id) const;
    // In the order they were made.
    QList<Action> actions() const;
    // False when there is no such action; nothing is written then.
    bool setConfig(const QString& id, const QString& config);
    bool setTitle(const QString& id, const QString& title);
    // Its number is not given again.
    bool deleteAction(const QString& id);

    // The empty text when the bundle has none.
    QString globalConfig(const QString& bundleID) const;
    void setGlobalConfig(const QString& bundleID, const QString& config);

    // Replaces the plugin of the same name, its display name and icon included.
    void recordPlugin(const Plugin& plugin);
    std::optional<Plugin> plugin(const QString& name) const;
    std::optional<Plugin> pluginWithPath(const QString& path) const;
    QList<Plugin> plugins() const;

    void addResources(const QList<HostResource>& resources);
    QList<HostResource> resources() const;

private:
    void makePrivateFolder();
    void openWritable();
    void openReadOnly();
    void openConnection(const QString& name, const QString& options);
    int readSchemaVersion();
    void refuseNewerSchema(int version) const;
    void setUp();
    QList<Action> selectActions(const QString& condition, const QVariantList& values) const;
    QList<Plugin> selectPlugins(const QString& condition, const QVariantList& values) const;
    void write(const std::function<void()>& statements);
    // Runs one statement on this connection; a failure is a HostError that names the database.
    QSqlQuery sql(const QString& statement, const QVariantList& values = {}) const;
    void checkWriteAheadLog();

    QString m_dataDirectory;
    QString m_connectionName;
    Access m_access;
    Notify m_notify;
    int m_schemaVersion = 0;
    // The log this connection writes to, known by its inode: another file there means ours was deleted.
    std::optional<std::pair<quint64, quint64>> m_logIdentity;
};

} // namespace VendelHost
