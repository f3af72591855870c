// The served host's launches of plugins: each starts at once and is watched from the event loop, so no
// caller ever waits for a plugin. At most one run per action and a bounded number of plugins at a time.
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

#include <chrono>
#include <map>
#include <memory>

class QTimer;

namespace VendelHost {

class PluginProcess;

class Launches : public QObject
{
    Q_OBJECT

public:
    // Plugins running at once; more would be a runaway client, not a person.
    static constexpr int maxProcesses = 8;

    enum class Verb
    {
        Run,
        Edit,
        Configure,
    };

    struct Request
    {
        Verb verb;
        // Empty for a configure launch.
        QString actionID;
        QString plugin;
        QString executable;
        // How errors name the action or plugin to a person: its title, or its display name.
        QString label;
    };

    struct Outcome
    {
        quint64 launch = 0;
        Request request;
        // The plugin's exit status; -1 when it did not exit by itself (a crash, or stopped at the limit).
        int exitStatus = -1;
        // Empty when the plugin succeeded, else a sentence that says how it failed.
        QString failure;
    };

    // Why a launch was not started.
    struct Refusal
    {
        enum Kind
        {
            AlreadyRunning,
            TooMany,
            FailedToStart,
        };
        Kind kind;
        QString message;
    };

    // A run still going after runTimeLimit is stopped and reported as failed.
    explicit Launches(std::chrono::milliseconds runTimeLimit, QObject* parent = nullptr);
    // Plugins still running go on; only their watch ends.
    ~Launches() override;

    // Starts the plugin with the request's launch URL and returns the launch's number, unique in this
    // process. Throws Refusal when a run of the action is under way, maxProcesses plugins run already,
    // or the plugin cannot be started; nothing was started then.
    quint64 start(const Request& request);
    int running() const { return static_cast<int>(m_launches.size()); }
    bool isRunning(const QString& actionID) const { return m_runningActions.contains(actionID); }

    static QString url(const Request& request);
    // "run", "edit" or "configure", as the URL names the verb.
    static QString verbName(Verb verb);

Q_SIGNALS:
    // Once per started launch, from the event loop, after the plugin has ended.
    void ended(const VendelHost::Launches::Outcome& outcome);

private:
    struct Launch;
    void finish(quint64 number, int exitStatus, int signal);

    std::chrono::milliseconds m_runTimeLimit;
    quint64 m_lastNumber = 0;
    std::map<quint64, std::unique_ptr<Launch>> m_launches;
    QSet<QString> m_runningActions;
};

} // namespace VendelHost

Q_DECLARE_METATYPE(VendelHost::Launches::Outcome)
