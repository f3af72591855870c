// The host's records: actions with their titles and numbers, configurations, plugins, resources.
#include "HostStorage.h"

#include "DesktopEntry.h"
#include "HostError.h"

#include <QHash>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace VendelHost {

namespace {

// A text column that may hold SQL NULL, for the values that are absent rather than empty.
QVariant nullable(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

} // namespace

QString HostStorage::Action::title() const
{
    return ownTitle.isEmpty() ? QStringLiteral("%1 %2").arg(pluginDisplayName).arg(number) : ownTitle;
}

QString HostStorage::Plugin::displayName() const
{
    return entryName.isEmpty() ? name : entryName;
}

QString HostStorage::Plugin::icon() const
{
    return entryIcon.isEmpty() ? QString::fromLatin1(DesktopEntry::genericIcon) : entryIcon;
}

QString HostStorage::createAction(const QString& plugin, const QString& title)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    write([&] {
        QSqlQuery numbered =
            sql(QStringLiteral("INSERT INTO action_numbers (plugin, last) VALUES (?, 1) "
                               "ON CONFLICT (plugin) DO UPDATE SET last = last + 1 RETURNING last"),
                {plugin});
        if (!numbered.next()) {
            throw HostError(
                QStringLiteral("Cannot number the new action in the database %1.").arg(databasePath()));
        }
        const qint64 number = numbered.value(0).toLongLong();
        numbered.finish();
        sql(QStringLiteral("INSERT INTO actions (id, plugin, config, title, number) VALUES (?, ?, '', ?, ?)"),
            {id, plugin, nullable(title), number});
    });
    return id;
}

QList<HostStorage::Action> HostStorage::selectActions(const QString& condition,
                                                      const QVariantList& values) const
{
    // Before titles, actions were numbered in the order they were made, as the first migration numbers them.
    const QString rows =
        m_schemaVersion >= 1
            ? QStringLiteral("SELECT rowid AS position, id, plugin, config, title, number FROM actions")
            : QStringLiteral("SELECT rowid AS position, id, plugin, config, NULL AS title, "
                             "row_number() OVER (PARTITION BY plugin ORDER BY rowid) AS number FROM actions");
    const QString entry =
        m_schemaVersion >= 1 ? QStringLiteral("p.display_name, p.icon") : QStringLiteral("NULL, NULL");
    QSqlQuery query = sql(QStringLiteral("SELECT a.id, a.plugin, a.config, a.title, a.number, p.path, %1 "
                                         "FROM (%2) AS a LEFT JOIN plugins AS p ON p.name = a.plugin %3 "
                                         "ORDER BY a.position")
                              .arg(entry, rows, condition),
                          values);
    QList<Action> actions;
    QHash<QString, Plugin> plugins;
    while (query.next()) {
        Action action;
        action.id = query.value(0).toString();
        action.plugin = query.value(1).toString();
        action.config = query.value(2).toString();
        action.ownTitle = query.value(3).toString();
        action.number = query.value(4).toLongLong();
        Plugin plugin{action.plugin, query.value(5).toString(), query.value(6).toString(),
                      query.value(7).toString()};
        // An older database has no display names yet: they are what its migration would record.
        if (m_schemaVersion < 1 && !query.value(5).isNull()) {
            if (!plugins.contains(action.plugin)) {
                const auto found = DesktopEntry::forExecutable(action.plugin);
                plugins.insert(action.plugin, Plugin{action.plugin,
                                                     {},
                                                     found ? found->name : QString(),
                                                     found ? found->icon : QString()});
            }
            plugin.entryName = plugins.value(action.plugin).entryName;
            plugin.entryIcon = plugins.value(action.plugin).entryIcon;
        }
        action.pluginDisplayName = plugin.displayName();
        action.pluginIcon = plugin.icon();
        actions.append(action);
    }
    return actions;
}

std::optional<HostStorage::Action> HostStorage::action(const QString& id) const
{
    const QList<Action> found = selectActions(QStringLiteral("WHERE a.id = ?"), {id});
    return found.isEmpty() ? std::nullopt : std::optional<Action>(found.constFirst());
}

QList<HostStorage::Action> HostStorage::actions() const
{
    return selectActions({}, {});
}

bool HostStorage::setConfig(const QString& id, const QString& config)
{
    bool found = false;
    write([&] {
        const QSqlQuery query =
            sql(QStringLiteral("UPDATE actions SET config = ? WHERE id = ?"), {config, id});
        found = query.numRowsAffected() > 0;
    });
    return found;
}

bool HostStorage::setTitle(const QString& id, const QString& title)
{
    bool found = false;
    write([&] {
        const QSqlQuery query =
            sql(QStringLiteral("UPDATE actions SET title = ? WHERE id = ?"), {nullable(title), id});
        found = query.numRowsAffected() > 0;
    });
    return found;
}

bool HostStorage::deleteAction(const QString& id)
{
    bool found = false;
    write([&] {
        const QSqlQuery query = sql(QStringLiteral("DELETE FROM actions WHERE id = ?"), {id});
        found = query.numRowsAffected() > 0;
    });
    return found;
}

QString HostStorage::globalConfig(const QString& bundleID) const
{
    QSqlQuery query =
        sql(QStringLiteral("SELECT config FROM global_configs WHERE bundle_id = ?"), {bundleID});
    return query.next() ? query.value(0).toString() : QString();
}

void HostStorage::setGlobalConfig(const QString& bundleID, const QString& config)
{
    write([&] {
        sql(QStringLiteral("INSERT INTO global_configs (bundle_id, config) VALUES (?, ?) "
                           "ON CONFLICT (bundle_id) DO UPDATE SET config = excluded.config"),
            {bundleID, config});
    });
}

void HostStorage::recordPlugin(const Plugin& plugin)
{
    write([&] {
        sql(QStringLiteral("INSERT INTO plugins (name, path, display_name, icon) VALUES (?, ?, ?, ?) "
                           "ON CONFLICT (name) DO UPDATE SET path = excluded.path, "
                           "display_name = excluded.display_name, icon = excluded.icon"),
            {plugin.name, plugin.path, nullable(plugin.entryName), nullable(plugin.entryIcon)});
    });
}

QList<HostStorage::Plugin> HostStorage::selectPlugins(const QString& condition,
                                                      const QVariantList& values) const
{
    const QString entry =
        m_schemaVersion >= 1 ? QStringLiteral("display_name, icon") : QStringLiteral("NULL, NULL");
    QSqlQuery query = sql(
        QStringLiteral("SELECT name, path, %1 FROM plugins %2 ORDER BY name").arg(entry, condition), values);
    QList<Plugin> plugins;
    while (query.next()) {
        Plugin plugin{query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
                      query.value(3).toString()};
        // An older database has no display names yet: they are what its migration would record.
        if (m_schemaVersion < 1) {
            if (const auto found = DesktopEntry::forExecutable(plugin.name)) {
                plugin.entryName = found->name;
                plugin.entryIcon = found->icon;
            }
        }
        plugins.append(plugin);
    }
    return plugins;
}

std::optional<HostStorage::Plugin> HostStorage::plugin(const QString& name) const
{
    const QList<Plugin> found = selectPlugins(QStringLiteral("WHERE name = ?"), {name});
    return found.isEmpty() ? std::nullopt : std::optional<Plugin>(found.constFirst());
}

std::optional<HostStorage::Plugin> HostStorage::pluginWithPath(const QString& path) const
{
    const QList<Plugin> found = selectPlugins(QStringLiteral("WHERE path = ?"), {path});
    return found.isEmpty() ? std::nullopt : std::optional<Plugin>(found.constFirst());
}

QList<HostStorage::Plugin> HostStorage::plugins() const
{
    return selectPlugins({}, {});
}

void HostStorage::addResources(const QList<HostResource>& resources)
{
    write([&] {
        for (const HostResource& resource : resources) {
            sql(QStringLiteral("INSERT INTO resources (type, name, url) VALUES (?, ?, ?)"),
                {resource.type, resource.name, resource.url});
        }
    });
}

QList<HostResource> HostStorage::resources() const
{
    QSqlQuery query = sql(QStringLiteral("SELECT type, name, url FROM resources ORDER BY position"));
    QList<HostResource> resources;
    while (query.next()) {
        resources.append({query.value(0).toString(), query.value(1).toString(), query.value(2).toString()});
    }
    return resources;
}

} // namespace VendelHost
