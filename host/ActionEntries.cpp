// Fields are written in the order the interface description gives them.
#include "ActionEntries.h"

#include <QDBusMetaType>

namespace VendelHost {

QDBusArgument& operator<<(QDBusArgument& argument, const ActionEntry& entry)
{
    argument.beginStructure();
    argument << entry.id << entry.title << entry.number << entry.plugin << entry.pluginDisplayName
             << entry.pluginIcon;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ActionEntry& entry)
{
    argument.beginStructure();
    argument >> entry.id >> entry.title >> entry.number >> entry.plugin >> entry.pluginDisplayName >>
        entry.pluginIcon;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PluginEntry& entry)
{
    argument.beginStructure();
    argument << entry.name << entry.displayName << entry.icon << entry.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PluginEntry& entry)
{
    argument.beginStructure();
    argument >> entry.name >> entry.displayName >> entry.icon >> entry.path;
    argument.endStructure();
    return argument;
}

void registerEntryTypes()
{
    qDBusRegisterMetaType<ActionEntry>();
    qDBusRegisterMetaType<ActionEntries>();
    qDBusRegisterMetaType<PluginEntry>();
    qDBusRegisterMetaType<PluginEntries>();
}

} // namespace VendelHost
