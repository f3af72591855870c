// What a KRunner runner answers over D-Bus: matches as (sssida{sv}) and actions as (sss).
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace VendelHost {

struct RemoteMatch
{
    QString id;
    QString text;
    QString iconName;
    // KRunner's kind of match: 100 for an exact one, 30 for a possible one.
    int type = 0;
    double relevance = 0;
    // "subtext", "actions" (the ids of the actions offered), and whatever else KRunner reads.
    QVariantMap properties;
};
using RemoteMatches = QList<RemoteMatch>;

struct RemoteAction
{
    QString id;
    QString text;
    QString iconName;
};
using RemoteActions = QList<RemoteAction>;

QDBusArgument& operator<<(QDBusArgument& argument, const RemoteMatch& match);
const QDBusArgument& operator>>(const QDBusArgument& argument, RemoteMatch& match);
QDBusArgument& operator<<(QDBusArgument& argument, const RemoteAction& action);
const QDBusArgument& operator>>(const QDBusArgument& argument, RemoteAction& action);

// Makes the types known to QtDBus; once is enough, more is harmless.
void registerRemoteMatchTypes();

} // namespace VendelHost

Q_DECLARE_METATYPE(VendelHost::RemoteMatch)
Q_DECLARE_METATYPE(VendelHost::RemoteAction)
