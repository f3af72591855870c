// Keeps the host's actions, global configurations, installed plugins and received resources in SQLite.
#pragma once

#include "HostResource.h"

#include <QList>
#include <QString>

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
    };

    struct Plugin
    {
        // The executable's file name, by which people name the plugin.
        QString name;
        // The executable's canonical path, by which the plugin knows itself.
        QString path;
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

    // Opens the database in the folder, creating both when needed. Throws HostError naming the path and
    // the reason when the folder or the database cannot be made, read or written.
    explicit HostStorage(const QString& dataDirectory, Access access = Access::ReadWrite, Notify notify = {});
    ~HostStorage();
    HostStorage(const HostStorage&) = delete;
    HostStorage& operator=(const HostStorage&) = delete;

    // VENDEL_HOST_DATA_DIR when set, else "vendel" in the XDG data folder.
    static QString defaultDataDirectory();

    const QString& dataDirectory() const { return m_dataDirectory; }
    QString databasePath() const;
    QString pluginFolder() const;

    // Every write below is one transaction, committed with a full sync before it returns.
    QString createAction(const QString& plugin);
    std::optional<Action> action(const QString& id) const;
    QList<Action> actions() const;
    // False when there is no such action; nothing is written then.
    bool setConfig(const QString& id, const QString& config);

    // The empty text when the bundle has none.
    QString globalConfig(const QString& bundleID) const;
    void setGlobalConfig(const QString& bundleID, const QString& config);

    // Replaces the plugin of the same name.
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
    bool hasSchema();
    void setUp();
    void write(const std::function<void()>& statements);
    void checkWriteAheadLog();

    QString m_dataDirectory;
    QString m_connectionName;
    Access m_access;
    Notify m_notify;
    // The log this connection writes to, known by its inode: another file there means ours was deleted.
    std::optional<std::pair<quint64, quint64>> m_logIdentity;
};

} // namespace VendelHost
