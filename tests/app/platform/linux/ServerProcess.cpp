// Runs a test's server program with its output in its private folder, so a failed start can show it.
#include "ServerProcess.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sys/prctl.h>

namespace VendelSDK::Testing {

ServerProcess::ServerProcess(const char* name, std::initializer_list<const char*> subfolders)
    : m_directory(QDir::tempPath() + QStringLiteral("/vendel-%1-XXXXXX").arg(QLatin1String(name)))
{
    for (const char* folder : subfolders) {
        QDir(m_directory.path()).mkpath(QString::fromLatin1(folder));
    }
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(filePath(QStringLiteral("output")));
    // A test that is killed leaves no server behind.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

ServerProcess::~ServerProcess()
{
    stop();
}

QString ServerProcess::filePath(const QString& relativePath) const
{
    return m_directory.filePath(relativePath);
}

bool ServerProcess::start(const QString& program, const QStringList& arguments, QString& error)
{
    if (!m_directory.isValid()) {
        error = QStringLiteral("No temporary folder: ") + m_directory.errorString();
        return false;
    }
    m_process.start(program, arguments);
    if (!m_process.waitForStarted()) {
        error = QStringLiteral("%1 did not start: %2").arg(program, m_process.errorString());
        return false;
    }
    return true;
}

void ServerProcess::stop()
{
    if (m_process.state() == QProcess::NotRunning) {
        return;
    }
    m_process.terminate();
    if (!m_process.waitForFinished(10000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

bool ServerProcess::isRunning() const
{
    return m_process.state() == QProcess::Running;
}

QString ServerProcess::tail(std::initializer_list<const char*> files) const
{
    QString text;
    QStringList names{QStringLiteral("output")};
    for (const char* name : files) {
        names.append(QString::fromLatin1(name));
    }
    for (const QString& name : std::as_const(names)) {
        QFile file(filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            text += QString::fromUtf8(file.readAll().right(2000));
        }
    }
    return text;
}

} // namespace VendelSDK::Testing
