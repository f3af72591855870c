// A bus that is not connected is left alone here: the service reports it when it claims its name.
#include "DesktopSearch.h"

#include "HostError.h"

namespace VendelHost {

DesktopSearch::DesktopSearch(HostStorage& storage, Launches& launches, QDBusConnection bus,
                             DesktopNotifications::Fallback fallback)
    : m_notifications(bus, std::move(fallback)), m_actions(storage, launches, m_notifications),
      m_runner(m_actions), m_provider(m_actions)
{}

void DesktopSearch::registerOn(QDBusConnection bus)
{
    if (!bus.isConnected()) {
        return;
    }
    for (const auto& [path, object] :
         {std::pair<const char*, QObject*>{KRunnerService::objectPath, &m_runner},
          std::pair<const char*, QObject*>{ShellSearchProvider::objectPath, &m_provider}}) {
        if (!bus.registerObject(QLatin1String(path), object)) {
            throw HostError(
                QStringLiteral("Cannot export %1: %2").arg(QLatin1String(path), bus.lastError().message()));
        }
    }
}

} // namespace VendelHost
