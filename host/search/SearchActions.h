// The host's actions as the desktop's searches see them: listed for matching, and run or edited at once
// through the served host's launches, with every failure (to start, a failure status, a crash, the time
// limit) told through the desktop's notifications, naming the action.
#pragma once

#include "ActionEntries.h"
#include "HostStorage.h"
#include "LaunchMessages.h"
#include "Launches.h"

#include <QHash>
#include <QObject>

namespace VendelHost {

class DesktopNotifications;

class SearchActions : public QObject
{
    Q_OBJECT

public:
    SearchActions(HostStorage& storage, Launches& launches, DesktopNotifications& notifications,
                  QObject* parent = nullptr);

    // The actions, read afresh: titles, plugins' display names and icons, never a configuration. Throws
    // HostError when storage fails.
    ActionEntries entries() const;
    // The stored action of this identifier, or nothing; throws HostError when storage fails.
    std::optional<HostStorage::Action> action(const QString& id) const { return m_storage.action(id); }
    // Starts the plugin, or tells why it did not start; never waits for it.
    void start(LaunchMessages::Verb verb, const HostStorage::Action& action);

private:
    struct Started
    {
        LaunchMessages::Verb verb;
        QString title;
    };
    void ended(const Launches::Outcome& outcome);

    HostStorage& m_storage;
    Launches& m_launches;
    DesktopNotifications& m_notifications;
    // The launches started here, by number, until they end.
    QHash<quint64, Started> m_started;
};

} // namespace VendelHost
