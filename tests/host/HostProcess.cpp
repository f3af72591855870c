// Children die with the test (PR_SET_PDEATHSIG), so a failed test leaves no host on the bus.
#include "HostProcess.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

namespace VendelHost::Testing {

namespace {

constexpr int timeoutMs = 30000;

} // namespace

HostProcess::HostProcess(QString dataDirectory) : m_dataDirectory(std::move(dataDirectory))
{
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

HostProcess::~HostProcess()
{
    kill();
}

QString HostProcess::executable()
{
    return QStringLiteral(VENDEL_HOST_EXECUTABLE);
}

QProcessEnvironment HostProcess::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VENDEL_HOST_DATA_DIR"), m_dataDirectory);
    return environment;
}

HostProcess::Result HostProcess::run(const QStringList& arguments, const QStringList& prefix) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    if (prefix.isEmpty()) {
        process.start(m_executable, arguments);
    } else {
        process.start(prefix.constFirst(), prefix.mid(1) + QStringList{m_executable} + arguments);
    }
    Result result;
    if (!process.waitForFinished(timeoutMs) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
    } else {
        result.exitCode = process.exitCode();
    }
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

bool HostProcess::isHostOnBus()
{
    return QDBusConnection::sessionBus()
        .interface()
        ->isServiceRegistered(QStringLiteral("org.vendel.Host"))
        .value();
}

bool HostProcess::startServing()
{
    m_server.setProcessEnvironment(environment());
    m_server.start(m_executable, {QStringLiteral("serve")});
    return m_server.waitForStarted(timeoutMs);
}

bool HostProcess::serve()
{
    if (!startServing()) {
        return false;
    }
    return QTest::qWaitFor([this] { return isHostOnBus() || m_server.state() == QProcess::NotRunning; },
                           timeoutMs) &&
           m_server.state() == QProcess::Running;
}

bool HostProcess::terminate()
{
    if (m_server.state() == QProcess::NotRunning) {
        return false;
    }
    m_server.terminate();
    return m_server.waitForFinished(timeoutMs) && m_server.exitStatus() == QProcess::NormalExit &&
           m_server.exitCode() == 0;
}

void HostProcess::kill()
{
    if (m_server.state() == QProcess::NotRunning) {
        return;
    }
    m_server.kill();
    m_server.waitForFinished();
}

} // namespace VendelHost::Testing
