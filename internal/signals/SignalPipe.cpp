// The self-pipe: async-signal-safe calls only in the handler, everything else on the pipe's thread.
#include "SignalPipe.h"

#include <QSocketNotifier>
#include <QThread>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace Vendel {

namespace {

// Lock-free, so safe in a handler; two signals delivered to two threads at once still make one first.
std::atomic<int> firstSignal{0};
// Set by the handler before it writes, cleared by the reader before it reads: a wait that finds it clear
// has nothing to report and makes no system call.
std::atomic<bool> unread{false};
std::atomic<int> readEnd{-1};
std::atomic<int> writeEnd{-1};
std::atomic<bool> repeatEndsProcess{false};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

SignalPipe* installed = nullptr;

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
    if (!firstSignal.compare_exchange_strong(none, number) && repeatEndsProcess.load()) {
        // The first is still being carried out and the sender insists: end now, as this signal would. The
        // handled signals are blocked while a handler runs, so the raised one takes effect on return.
        restoreDefault(number);
        ::raise(number);
        return;
    }
    const int savedErrno = errno;
    unread.store(true);
    const unsigned char byte = static_cast<unsigned char>(number);
    // A full pipe already holds bytes that will be read; nothing is lost by dropping this one.
    [[maybe_unused]] const auto written = ::write(writeEnd.load(), &byte, 1);
    errno = savedErrno;
}

} // namespace

SignalPipe::SignalPipe(std::span<const int> numbers, Repeat repeat, QObject* parent) : QObject(parent)
{
    int ends[2] = {-1, -1};
    // pipe() and fcntl() rather than pipe2(), which macOS lacks.
    if (installed != nullptr || ::pipe(ends) != 0) {
        return;
    }
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, ::fcntl(end, F_GETFL) | O_NONBLOCK);
    }
    installed = this;
    firstSignal = 0;
    unread = false;
    readEnd = ends[0];
    writeEnd = ends[1];
    repeatEndsProcess = repeat == Repeat::endsProcess;
    m_notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SignalPipe::readPipe);

    struct sigaction action = {};
    action.sa_handler = handleSignal;
    sigemptyset(&action.sa_mask);
    for (const int number : numbers) {
        sigaddset(&action.sa_mask, number);
    }
    // Restarting spares plain reads and writes elsewhere in the process the EINTR, but poll() and the waits
    // built on it fail with EINTR whatever the flag says: every wait must start again by itself, with the
    // time that remains.
    action.sa_flags = SA_RESTART;
    for (const int number : numbers) {
        ::sigaction(number, &action, nullptr);
    }
    m_numbers.assign(numbers.begin(), numbers.end());
}

SignalPipe::~SignalPipe()
{
    if (installed != this) {
        return;
    }
    for (const int number : m_numbers) {
        restoreDefault(number);
    }
    m_notifier.reset();
    ::close(readEnd.exchange(-1));
    ::close(writeEnd.exchange(-1));
    installed = nullptr;
}

int SignalPipe::first()
{
    return firstSignal.load();
}

int SignalPipe::descriptor()
{
    return readEnd.load();
}

void SignalPipe::deliver()
{
    if (installed != nullptr && unread.load() && QThread::currentThread() == installed->thread()) {
        installed->readPipe();
    }
}

void SignalPipe::readPipe()
{
    unread = false;
    unsigned char byte = 0;
    // Each receiver may end the process; what is still in the pipe then no longer matters.
    while (::read(readEnd.load(), &byte, 1) == 1) {
        Q_EMIT received(byte);
    }
}

void SignalPipe::endAs(int number)
{
    restoreDefault(number);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, number);
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    ::raise(number);
    // A signal whose default action does not end the process still must not return.
    std::_Exit(128 + number);
}

} // namespace Vendel
