// The rows that org.vendel.Actions1 lists, as D-Bus structures: (ssxsss) for an action, (ssss) for a plugin.
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

namespace VendelHost {

struct ActionEntry
{
    QString id;
    QString title;
    qint64 number = 0;
    QString plugin;
    QString pluginDisplayName;
    QString pluginIcon;

    friend bool operator==(const ActionEntry&, const ActionEntry&) = default;
};
using ActionEntries = QList<ActionEntry>;

struct PluginEntry
{
    QString name;
    QString displayName;
    QString icon;
    QString path;

    friend bool operator==(const PluginEntry&, const PluginEntry&) = default;
};
using PluginEntries = QList<PluginEntry>;

QDBusArgument& operator<<(QDBusArgument& argument, const ActionEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, ActionEntry& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const PluginEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, PluginEntry& entry);

// Makes the types known to QtDBus; once is enough, more is harmless.
void registerEntryTypes();

} // namespace VendelHost

Q_DECLARE_METATYPE(VendelHost::ActionEntry)
Q_DECLARE_METATYPE(VendelHost::PluginEntry)
