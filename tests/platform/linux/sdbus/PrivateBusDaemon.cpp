// Starts dbus-daemon with the session bus's rules, listening in a folder of the test's own.
#include "PrivateBusDaemon.h"

namespace VendelSDK::Testing {

PrivateBusDaemon::~PrivateBusDaemon()
{
    kill();
}

bool PrivateBusDaemon::start()
{
    if (!m_folder.isValid()) {
        m_error = QStringLiteral("no temporary folder");
        return false;
    }
    m_process.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                    QStringLiteral("--print-address=1"),
                                                    QStringLiteral("--address=unix:dir=") + m_folder.path()});
    if (!m_process.waitForStarted()) {
        m_error = m_process.errorString();
        return false;
    }
    // The daemon prints its address once it listens.
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(30000)) {
            m_error = QStringLiteral("dbus-daemon said no address: ") +
                      QString::fromLocal8Bit(m_process.readAllStandardError());
            return false;
        }
    }
    m_address = QString::fromUtf8(m_process.readLine()).trimmed();
    return !m_address.isEmpty();
}

void PrivateBusDaemon::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

} // namespace VendelSDK::Testing
