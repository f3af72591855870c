// Replies come through pending-call watchers on the event loop; launches are remembered by the number the
// host answered, until the host's LaunchEnded names it.
#include "ActionsClient.h"

#include "ActionsProxy.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace VendelHost {

namespace {

constexpr auto serviceName = "org.vendel.Host";
constexpr auto objectPath = "/org/vendel/Host";
constexpr auto interfaceName = "org.vendel.Actions1";
// Ends of launches that are not ours (other clients') would gather without a bound.
constexpr qsizetype maxEarlyEnds = 64;

QString errorName(const char* name)
{
    return QStringLiteral("org.vendel.Actions1.Error.") + QLatin1String(name);
}

} // namespace

ActionsClient::ActionsClient(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(bus),
      m_proxy(std::make_unique<ActionsProxy>(QLatin1String(serviceName), QLatin1String(objectPath), bus)),
      m_hostWatcher(std::make_unique<QDBusServiceWatcher>(QLatin1String(serviceName), bus,
                                                          QDBusServiceWatcher::WatchForOwnerChange))
{
    registerEntryTypes();
    m_bus.connect(QLatin1String(serviceName), QLatin1String(objectPath), QLatin1String(interfaceName),
                  QStringLiteral("LaunchEnded"), this,
                  SLOT(launchEnded(qulonglong, QString, QString, QString, int, QString)));
    // Launch numbers are the host's own: a host that ended takes its launches' ends with it, and the next
    // one counts from one again.
    connect(m_hostWatcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner, const QString&) {
                if (!oldOwner.isEmpty()) {
                    m_launches.clear();
                    m_earlyEnds.clear();
                }
            });
}

ActionsClient::~ActionsClient() = default;

std::optional<ActionEntry> ActionsClient::action(const QString& actionID) const
{
    for (const ActionEntry& entry : m_actions) {
        if (entry.id == actionID) {
            return entry;
        }
    }
    return std::nullopt;
}

std::optional<PluginEntry> ActionsClient::plugin(const QString& name) const
{
    for (const PluginEntry& entry : m_plugins) {
        if (entry.name == name) {
            return entry;
        }
    }
    return std::nullopt;
}

bool ActionsClient::isRunning(const QString& actionID) const
{
    for (const Launch& launch : m_launches) {
        if (launch.verb == Verb::Run && launch.actionID == actionID) {
            return true;
        }
    }
    return false;
}

QString ActionsClient::labelOf(const QString& actionID) const
{
    const auto entry = action(actionID);
    return entry ? entry->title : actionID;
}

void ActionsClient::whenAnswered(const QDBusPendingCall& call, const QString& headline,
                                 const std::function<void(const QDBusPendingCall&)>& finish)
{
    auto* watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, headline, finish](QDBusPendingCallWatcher* answered) {
                answered->deleteLater();
                if (answered->isError()) {
                    Q_EMIT failed(headline + u' ' + reason(answered->error(), QString()));
                    return;
                }
                finish(*answered);
            });
}

void ActionsClient::refresh()
{
    if (m_listing) {
        m_listAgain = true;
        return;
    }
    m_listing = true;
    const QDBusPendingReply<ActionEntries> actions = m_proxy->ListActions();
    const QDBusPendingReply<PluginEntries> plugins = m_proxy->ListPlugins();
    // Both replies come in the order asked, so the second one's answer finds the first one's there.
    //: Failure headline when the host could not list the actions; the reason follows
    whenAnswered(actions, tr("The actions could not be listed."), [this](const QDBusPendingCall& call) {
        m_actions = QDBusPendingReply<ActionEntries>(call).value();
    });
    auto* watcher = new QDBusPendingCallWatcher(plugins, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* answered) {
        answered->deleteLater();
        if (!answered->isError()) {
            m_plugins = QDBusPendingReply<PluginEntries>(*answered).value();
        }
        m_listing = false;
        Q_EMIT listed();
        if (m_listAgain) {
            m_listAgain = false;
            refresh();
        }
    });
}

void ActionsClient::create(const QString& pluginName, const QString& title)
{
    const auto entry = plugin(pluginName);
    const QString pluginLabel = entry ? entry->displayName : pluginName;
    //: Failure headline of making an action; %1 is the plugin's display name; the reason follows
    whenAnswered(m_proxy->CreateAction(pluginName, title), tr("No action of %1 was made.").arg(pluginLabel),
                 [this, pluginName, pluginLabel, title](const QDBusPendingCall& call) {
                     const QString id = QDBusPendingReply<QString>(call).value();
                     Q_EMIT created(id);
                     refresh();
                     launch(Verb::Edit, m_proxy->EditAction(id), id, pluginName,
                            title.isEmpty() ? pluginLabel : title);
                 });
}

void ActionsClient::rename(const QString& actionID, const QString& title)
{
    const QString given = title.trimmed().isEmpty() ? QString() : title;
    //: Failure headline of renaming; %1 is the action's title; the reason follows
    const QString headline = tr("“%1” could not be renamed.").arg(labelOf(actionID));
    whenAnswered(m_proxy->SetActionTitle(actionID, given), headline,
                 [this](const QDBusPendingCall&) { refresh(); });
}

void ActionsClient::remove(const QString& actionID)
{
    //: Failure headline of deleting; %1 is the action's title; the reason follows
    whenAnswered(m_proxy->DeleteAction(actionID), tr("“%1” could not be deleted.").arg(labelOf(actionID)),
                 [this](const QDBusPendingCall&) { refresh(); });
}

void ActionsClient::run(const QString& actionID)
{
    const auto entry = action(actionID);
    launch(Verb::Run, m_proxy->RunAction(actionID), actionID, entry ? entry->plugin : QString(),
           labelOf(actionID));
}

void ActionsClient::edit(const QString& actionID)
{
    const auto entry = action(actionID);
    launch(Verb::Edit, m_proxy->EditAction(actionID), actionID, entry ? entry->plugin : QString(),
           labelOf(actionID));
}

void ActionsClient::configure(const QString& pluginName)
{
    const auto entry = plugin(pluginName);
    launch(Verb::Configure, m_proxy->ConfigurePlugin(pluginName), QString(), pluginName,
           entry ? entry->displayName : pluginName);
}

void ActionsClient::launch(Verb verb, const QDBusPendingCall& call, const QString& actionID,
                           const QString& pluginName, const QString& label)
{
    auto* watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, verb, actionID, pluginName, label](QDBusPendingCallWatcher* answered) {
                answered->deleteLater();
                if (!answered->isError()) {
                    started(QDBusPendingReply<qulonglong>(*answered).value(), {verb, actionID, label});
                    return;
                }
                const QString headline = LaunchMessages::notStarted(verb, label);
                Q_EMIT failed(headline + u' ' + reason(answered->error(), pluginName));
                if (answered->error().name() == errorName("NoSuchAction")) {
                    refresh();
                }
            });
}

void ActionsClient::started(qulonglong number, const Launch& launch)
{
    if (launch.verb == Verb::Run) {
        //: Status bar while a run is under way; %1 is the action's title
        Q_EMIT status(tr("Running “%1”…").arg(launch.label));
    }
    const auto early = m_earlyEnds.constFind(number);
    if (early != m_earlyEnds.constEnd()) {
        const End end = *early;
        m_earlyEnds.erase(early);
        ended(launch, end);
        return;
    }
    m_launches.insert(number, launch);
}

void ActionsClient::launchEnded(qulonglong number, const QString&, const QString&, const QString&,
                                int exitStatus, const QString& failure)
{
    const auto found = m_launches.constFind(number);
    if (found == m_launches.constEnd()) {
        if (m_earlyEnds.size() >= maxEarlyEnds) {
            m_earlyEnds.clear();
        }
        m_earlyEnds.insert(number, {exitStatus, failure});
        return;
    }
    const Launch launch = *found;
    m_launches.erase(found);
    ended(launch, {exitStatus, failure});
}

void ActionsClient::ended(const Launch& launch, const End& end)
{
    if (end.failure.isEmpty()) {
        if (launch.verb == Verb::Run) {
            //: Status bar after a run ended well; %1 is the action's title
            Q_EMIT status(tr("“%1” has run.").arg(launch.label));
        }
        return;
    }
    const QString headline = LaunchMessages::endedBadly(launch.verb, launch.label, end.exitStatus);
    if (launch.verb == Verb::Run) {
        Q_EMIT status(QString());
    }
    // The host's own sentence says how: the exit status, a crash, or the time limit.
    Q_EMIT failed(headline + u' ' + end.failure);
}

QString ActionsClient::reason(const QDBusError& error, const QString& pluginName) const
{
    const QString name = error.name();
    if (name == errorName("AlreadyRunning")) {
        return LaunchMessages::stillRunning();
    }
    if (name == errorName("TooManyLaunches")) {
        return LaunchMessages::tooManyPlugins();
    }
    if (name == errorName("NoSuchAction")) {
        return LaunchMessages::noLongerExists();
    }
    if (name == errorName("NoSuchPlugin")) {
        return LaunchMessages::notInstalled(pluginName);
    }
    if (name == errorName("LaunchFailed")) {
        const auto entry = plugin(pluginName);
        return entry ? LaunchMessages::executableProblem(entry->path) : error.message();
    }
    // The bus's own errors: no host could be started, or it did not answer in time.
    bool unreachable = name.startsWith(QStringLiteral("org.freedesktop.DBus.Error.Spawn"));
    for (const auto type : {QDBusError::ServiceUnknown, QDBusError::NoReply, QDBusError::Disconnected,
                            QDBusError::NoServer, QDBusError::Timeout, QDBusError::TimedOut}) {
        unreachable = unreachable || error.type() == type;
    }
    if (unreachable) {
        return LaunchMessages::hostUnreachable(error.message());
    }
    // The host's other refusals (a title it cannot keep, storage that failed) say themselves what happened.
    return error.message();
}

} // namespace VendelHost
