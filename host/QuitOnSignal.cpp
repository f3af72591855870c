// A signal handler may only write to a pipe; the event loop reads it and quits from the main thread.
#include "QuitOnSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace VendelHost {

namespace {

int sockets[2] = {-1, -1};

void handleSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(sockets[0], &byte, 1);
}

} // namespace

QuitOnSignal::QuitOnSignal(QObject* parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) {
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(sockets[1], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [] {
        char byte = 0;
        [[maybe_unused]] const auto read = ::read(sockets[1], &byte, 1);
        QCoreApplication::quit();
    });
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

QuitOnSignal::~QuitOnSignal()
{
    if (sockets[0] < 0) {
        return;
    }
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    m_notifier.reset();
    ::close(sockets[0]);
    ::close(sockets[1]);
    sockets[0] = sockets[1] = -1;
}

} // namespace VendelHost
