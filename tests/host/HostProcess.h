// Runs vendel-host for tests: the CLI on a temporary data folder, and the served host on the session bus.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace VendelHost::Testing {

class HostProcess
{
public:
    struct Result
    {
        int exitCode = -1;
        QString out;
        QString err;
    };

    // Every run and the served host use this data folder.
    explicit HostProcess(QString dataDirectory);
    ~HostProcess();
    HostProcess(const HostProcess&) = delete;
    HostProcess& operator=(const HostProcess&) = delete;

    static QString executable();
    // Runs another copy of the executable instead, for a user who cannot reach the build folder.
    void setExecutable(const QString& path) { m_executable = path; }
    // The environment of every child: ours, with the data folder set.
    QProcessEnvironment environment() const;

    // Runs one command line to its end; exit code -1 when it did not start, crashed or took too long.
    Result run(const QStringList& arguments, const QStringList& prefix = {}) const;

    // Starts "vendel-host serve" and waits until it owns the host's bus name.
    bool serve();
    // Starts it without waiting; false when it did not start.
    bool startServing();
    // Ends the served host: SIGTERM waits for a normal exit, kill is kill -9.
    bool terminate();
    void kill();
    QProcess& server() { return m_server; }
    // What the served host printed, for the message of a failed check.
    QString serverOutput() { return QString::fromUtf8(m_server.readAll()); }

    static bool isHostOnBus();

private:
    QString m_dataDirectory;
    QString m_executable = executable();
    QProcess m_server;
};

} // namespace VendelHost::Testing
