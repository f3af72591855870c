// posix_spawn reports a failed exec to the caller at once, and a process file descriptor tells the event
// loop when the plugin has ended; unlike QProcess, nothing stops the plugin when this object goes.
#include "PluginProcess.h"

#include "HostError.h"

#include <QFile>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <spawn.h>
// glibc 2.36's header declares these functions without C linkage (fixed in 2.37).
extern "C" {
#include <sys/pidfd.h>
}
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace VendelHost {

namespace {

QString reason(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// The attributes of a clean start: a session of its own, no blocked signals, and every signal's default
// action, whatever the host has set for itself.
class SpawnAttributes
{
public:
    SpawnAttributes()
    {
        posix_spawnattr_init(&m_attributes);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        sigset_t all;
        sigfillset(&all);
        sigdelset(&all, SIGKILL);
        sigdelset(&all, SIGSTOP);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(&m_attributes,
                                 POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&m_attributes); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

} // namespace

PluginProcess::PluginProcess(const QString& executable, const QString& url, QObject* parent) : QObject(parent)
{
    QByteArray path = QFile::encodeName(executable);
    QByteArray argument = url.toUtf8();
    char* arguments[] = {path.data(), argument.data(), nullptr};
    const SpawnAttributes attributes;
    pid_t pid = 0;
    const int error = posix_spawn(&pid, path.constData(), nullptr, attributes.get(), arguments, environ);
    if (error != 0) {
        throw HostError(QStringLiteral("Cannot start %1: %2.").arg(executable, reason(error)));
    }
    m_pid = pid;
    // Not yet waited for, the plugin keeps its process identifier, so this cannot name another process.
    // The descriptor is close-on-exec, so no other plugin inherits it.
    m_descriptor = pidfd_open(pid, 0);
    if (m_descriptor < 0) {
        const int openError = errno;
        ::kill(pid, SIGKILL);
        ::waitpid(pid, nullptr, 0);
        throw HostError(QStringLiteral("Cannot watch %1 once started, so it was stopped: %2.")
                            .arg(executable, reason(openError)));
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &PluginProcess::reap);
}

PluginProcess::~PluginProcess()
{
    m_notifier.reset();
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

void PluginProcess::kill()
{
    if (m_descriptor >= 0) {
        pidfd_send_signal(m_descriptor, SIGKILL, nullptr, 0);
    }
}

void PluginProcess::reap()
{
    int status = 0;
    pid_t reaped = 0;
    do {
        reaped = ::waitpid(static_cast<pid_t>(m_pid), &status, WNOHANG);
    } while (reaped < 0 && errno == EINTR);
    if (reaped == 0) {
        return;
    }
    m_notifier.reset();
    ::close(m_descriptor);
    m_descriptor = -1;
    if (reaped < 0) {
        // Someone else reaped it; how it ended is not known.
        Q_EMIT finished(-1, 0);
    } else if (WIFEXITED(status)) {
        Q_EMIT finished(WEXITSTATUS(status), 0);
    } else {
        Q_EMIT finished(-1, WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    }
}

} // namespace VendelHost
