// The served host in the desktop's own searches: KRunner's runner and GNOME Shell's search provider, on the
// host's bus name, with their launches' failures told through the desktop's notifications.
#pragma once

#include "DesktopNotifications.h"
#include "KRunnerService.h"
#include "SearchActions.h"
#include "ShellSearchProvider.h"

#include <QDBusConnection>

namespace VendelHost {

class HostStorage;
class Launches;

class DesktopSearch
{
public:
    DesktopSearch(HostStorage& storage, Launches& launches, QDBusConnection bus,
                  DesktopNotifications::Fallback fallback);

    // Exports both objects; before the name is claimed, so that a search that starts the host finds them.
    // Throws HostError when the bus refuses.
    void registerOn(QDBusConnection bus);

private:
    DesktopNotifications m_notifications;
    SearchActions m_actions;
    KRunnerService m_runner;
    ShellSearchProvider m_provider;
};

} // namespace VendelHost
