// Turns SIGTERM, SIGINT and SIGHUP into a termination request, reported on the main thread.
#pragma once

#include <VendelSDK/Export.h>

#include <QObject>

#include <array>
#include <memory>

namespace VendelSDK {

/// A signal handler may do almost nothing, so it only records the signal and wakes the main thread, which
/// reports it: from its event loop, or from a wait that blocks it outside the event loop (a bus call, a wait
/// for the player) when that wait lets termination signals through with descriptor() and deliverPending().
/// A second signal, while the first is being carried out (a termination hook blocked on a frozen host, say),
/// ends the process at once, as that signal would.
class VENDELSDK_EXPORT TerminationSignals final : public QObject
{
    Q_OBJECT

public:
    /// The signals that a desktop session, a terminal or a service manager sends to end a process.
    static const std::array<int, 3> numbers;

    /// Installs the handlers; make one per process, on the main thread, once the application object exists.
    explicit TerminationSignals(QObject* parent = nullptr);
    /// Gives the signals back their default action.
    ~TerminationSignals() override;
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// The first signal received, or 0. It is known as soon as the signal arrives, before it is reported.
    int first() const;

    /// For a wait that blocks the main thread outside the event loop: a descriptor that becomes readable when
    /// a signal arrives (-1 while no handlers are installed), to be polled beside what the wait waits for.
    static int descriptor();
    /// Reports a signal that has arrived and not been reported yet, now: `received` is emitted before this
    /// returns, and its receiver may end the process. Returns at once when there is none, or when called on
    /// another thread than the main one. Also a point to call before starting work that a termination
    /// request should prevent.
    static void deliverPending();

    /// Ends the process as `number` would have by default, so that a shell or a parent process sees which
    /// signal ended it. Call it once the termination hooks have run.
    [[noreturn]] static void endAs(int number);

Q_SIGNALS:
    /// Emitted on the object's thread for the first signal only.
    void received(int number);

private:
    /// The self-pipe, an internal helper of the SDK.
    std::unique_ptr<QObject> m_pipe;
    bool m_reported = false;
};

} // namespace VendelSDK
