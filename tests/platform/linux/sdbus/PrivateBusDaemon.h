// A bus daemon of the test's own, which the test can take away while its connections wait on it.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace VendelSDK::Testing {

class PrivateBusDaemon
{
public:
    PrivateBusDaemon() = default;
    ~PrivateBusDaemon();
    PrivateBusDaemon(const PrivateBusDaemon&) = delete;
    PrivateBusDaemon& operator=(const PrivateBusDaemon&) = delete;

    // Starts dbus-daemon on a socket in a folder of its own and waits until it says its address.
    bool start();
    // Kills the daemon at once: every connection to it loses its socket, as when a session ends.
    void kill();

    QString address() const { return m_address; }
    // For a thread that must kill the daemon itself (with SIGKILL).
    qint64 processId() const { return m_process.processId(); }
    QString errorString() const { return m_error; }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_address;
    QString m_error;
};

} // namespace VendelSDK::Testing
