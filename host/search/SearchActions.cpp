// The other launches of the host (the window's, the command line's) are told elsewhere, so only those started
// here are followed.
#include "SearchActions.h"

#include "DesktopNotifications.h"

namespace VendelHost {

SearchActions::SearchActions(HostStorage& storage, Launches& launches, DesktopNotifications& notifications,
                             QObject* parent)
    : QObject(parent), m_storage(storage), m_launches(launches), m_notifications(notifications)
{
    connect(&m_launches, &Launches::ended, this, &SearchActions::ended);
}

ActionEntries SearchActions::entries() const
{
    ActionEntries entries;
    for (const HostStorage::Action& action : m_storage.actions()) {
        entries.append({action.id, action.title(), action.number, action.plugin, action.pluginDisplayName,
                        action.pluginIcon});
    }
    return entries;
}

void SearchActions::start(LaunchMessages::Verb verb, const HostStorage::Action& action)
{
    const QString title = action.title();
    const QString headline = LaunchMessages::notStarted(verb, title);
    const auto plugin = m_storage.plugin(action.plugin);
    if (!plugin) {
        m_notifications.notify(headline, LaunchMessages::notInstalled(action.plugin));
        return;
    }
    const Launches::Verb launchVerb =
        verb == LaunchMessages::Verb::Edit ? Launches::Verb::Edit : Launches::Verb::Run;
    try {
        const quint64 number = m_launches.start({launchVerb, action.id, action.plugin, plugin->path, title});
        m_started.insert(number, {verb, title});
    } catch (const Launches::Refusal& refusal) {
        switch (refusal.kind) {
        case Launches::Refusal::AlreadyRunning:
            m_notifications.notify(headline, LaunchMessages::stillRunning());
            break;
        case Launches::Refusal::TooMany:
            m_notifications.notify(headline, LaunchMessages::tooManyPlugins());
            break;
        case Launches::Refusal::FailedToStart:
            m_notifications.notify(headline, LaunchMessages::executableProblem(plugin->path));
            break;
        }
    }
}

void SearchActions::ended(const Launches::Outcome& outcome)
{
    const auto found = m_started.constFind(outcome.launch);
    if (found == m_started.constEnd()) {
        return;
    }
    const Started started = *found;
    m_started.erase(found);
    if (!outcome.failure.isEmpty()) {
        // The host's own sentence says how: the exit status, a crash, or the time limit.
        m_notifications.notify(LaunchMessages::endedBadly(started.verb, started.title, outcome.exitStatus),
                               outcome.failure);
    }
}

} // namespace VendelHost
