// The self-pipe: async-signal-safe calls only in the handler, everything else from the event loop.
#include <VendelSDK/TerminationSignals.h>

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace VendelSDK {

const std::array<int, 3> TerminationSignals::numbers{SIGTERM, SIGINT, SIGHUP};

namespace {

int pipeEnds[2] = {-1, -1};
// Lock-free, so safe in a handler; two signals delivered to two threads at once still make one first.
std::atomic<int> firstSignal{0};
static_assert(std::atomic<int>::is_always_lock_free);

void restoreDefault(int number)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    ::sigaction(number, &action, nullptr);
}

void handleSignal(int number)
{
    int none = 0;
    if (!firstSignal.compare_exchange_strong(none, number)) {
        // The first is still being carried out and the sender insists: end now, as this signal would. The
        // three signals are blocked while a handler runs, so the raised one takes effect on return.
        restoreDefault(number);
        ::raise(number);
        return;
    }
    const int savedErrno = errno;
    const unsigned char byte = static_cast<unsigned char>(number);
    // A full pipe already holds a byte that will wake the loop; nothing is lost by dropping this one.
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    // pipe() and fcntl() rather than pipe2(), which macOS lacks.
    if (::pipe(pipeEnds) != 0) {
        pipeEnds[0] = pipeEnds[1] = -1;
        return;
    }
    for (const int end : pipeEnds) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, ::fcntl(end, F_GETFL) | O_NONBLOCK);
    }
    firstSignal = 0;
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &TerminationSignals::readPipe);

    struct sigaction action = {};
    action.sa_handler = handleSignal;
    sigemptyset(&action.sa_mask);
    for (const int number : numbers) {
        sigaddset(&action.sa_mask, number);
    }
    // Restarted system calls keep a blocking host call from failing half-way because of the signal.
    action.sa_flags = SA_RESTART;
    for (const int number : numbers) {
        ::sigaction(number, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (pipeEnds[0] < 0) {
        return;
    }
    for (const int number : numbers) {
        restoreDefault(number);
    }
    m_notifier.reset();
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
    pipeEnds[0] = pipeEnds[1] = -1;
}

void TerminationSignals::readPipe()
{
    unsigned char byte = 0;
    while (::read(pipeEnds[0], &byte, 1) == 1) {
        if (m_first == 0) {
            m_first = byte;
            Q_EMIT received(m_first);
        }
    }
}

void TerminationSignals::endAs(int number)
{
    restoreDefault(number);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, number);
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    ::raise(number);
    // A signal whose default action does not end the process (none of ours) still must not return.
    std::_Exit(128 + number);
}

} // namespace VendelSDK
