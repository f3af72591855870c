// The window's link to the served host (org.vendel.Actions1): every call is answered later, so the window
// never waits for the host or a plugin, and every failure comes back as a sentence that names the action.
#pragma once

#include "ActionEntries.h"
#include "LaunchMessages.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class ActionsProxy;
class QDBusPendingCall;
class QDBusServiceWatcher;

namespace VendelHost {

class ActionsClient : public QObject
{
    Q_OBJECT

public:
    // Calls org.vendel.Host on the bus, which starts it when it is not running.
    explicit ActionsClient(QDBusConnection bus, QObject* parent = nullptr);
    ~ActionsClient() override;

    // As the last listing found them, in the order they were made.
    const ActionEntries& actions() const { return m_actions; }
    const PluginEntries& plugins() const { return m_plugins; }
    std::optional<ActionEntry> action(const QString& actionID) const;
    std::optional<PluginEntry> plugin(const QString& name) const;
    // Whether a run that this window asked for is under way.
    bool isRunning(const QString& actionID) const;

    // Lists the actions and plugins again; listed() follows. A listing asked for while one is on its way
    // waits for it, then goes out once.
    void refresh();
    // Makes an action of the plugin, titled or with the default title, then opens its editor, as
    // `vendel-host action new` does; created() follows with its identifier.
    void create(const QString& plugin, const QString& title);
    // The empty title, or one of white space only, gives the action its default title back.
    void rename(const QString& actionID, const QString& title);
    void remove(const QString& actionID);
    void run(const QString& actionID);
    void edit(const QString& actionID);
    void configure(const QString& plugin);

Q_SIGNALS:
    void listed();
    void created(const QString& actionID);
    // A request failed, or a launch ended in a failure: one sentence or two for the person, naming the
    // action (or the plugin).
    void failed(const QString& message);
    // What goes on: a run started or ended.
    void status(const QString& message);

private Q_SLOTS:
    void launchEnded(qulonglong launch, const QString& verb, const QString& actionID, const QString& plugin,
                     int exitStatus, const QString& failure);

private:
    using Verb = LaunchMessages::Verb;
    struct Launch
    {
        Verb verb;
        QString actionID;
        // The action's title, or the plugin's display name, when it was asked for.
        QString label;
    };
    struct End
    {
        int exitStatus;
        QString failure;
    };

    // Calls finish with the reply once it has come; a failure goes to failed() with the headline.
    void whenAnswered(const QDBusPendingCall& call, const QString& headline,
                      const std::function<void(const QDBusPendingCall&)>& finish);
    void launch(Verb verb, const QDBusPendingCall& call, const QString& actionID, const QString& plugin,
                const QString& label);
    void started(qulonglong number, const Launch& launch);
    void ended(const Launch& launch, const End& end);
    // Why the host refused, in the window's words: the error's name says which refusal it was.
    QString reason(const QDBusError& error, const QString& plugin) const;
    QString labelOf(const QString& actionID) const;

    QDBusConnection m_bus;
    std::unique_ptr<ActionsProxy> m_proxy;
    std::unique_ptr<QDBusServiceWatcher> m_hostWatcher;
    ActionEntries m_actions;
    PluginEntries m_plugins;
    bool m_listing = false;
    bool m_listAgain = false;
    // The launches this window started and the host has not reported ended.
    QHash<qulonglong, Launch> m_launches;
    // Ends reported before the launch's own answer came: kept a little, in case that answer is still on
    // its way.
    QHash<qulonglong, End> m_earlyEnds;
};

} // namespace VendelHost
