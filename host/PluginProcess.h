// A plugin started by the served host on its own: watched for its end, never waited for, and left running
// when the host ends.
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QSocketNotifier;

namespace VendelHost {

class PluginProcess : public QObject
{
    Q_OBJECT

public:
    // Starts the executable with the URL as its one argument (an argument vector, never a shell), with our
    // environment and output, in a session of its own, so that a signal to the host's terminal does not
    // reach it. Throws HostError with the system's reason when it cannot be started.
    PluginProcess(const QString& executable, const QString& url, QObject* parent = nullptr);
    // Stops watching; a plugin still running goes on, and whoever outlives the host reaps it.
    ~PluginProcess() override;
    PluginProcess(const PluginProcess&) = delete;
    PluginProcess& operator=(const PluginProcess&) = delete;

    qint64 processId() const { return m_pid; }
    bool isRunning() const { return m_descriptor >= 0; }
    // Ends it at once (SIGKILL); finished() follows.
    void kill();

Q_SIGNALS:
    // Once, from the event loop: its exit status, or -1 and the number of the signal that ended it.
    void finished(int exitStatus, int signal);

private:
    void reap();

    qint64 m_pid = 0;
    // A process file descriptor: it cannot name another process once this one has gone.
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace VendelHost
