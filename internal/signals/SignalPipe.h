// Turns POSIX signals into bytes on a pipe, which the main thread reads: its event loop, or a wait of its
// own.
#pragma once

#include <QObject>

#include <memory>
#include <span>
#include <vector>

class QSocketNotifier;

namespace Vendel {

// A signal handler may do almost nothing safely, so it only records the signal and writes its number to a
// pipe. The main thread reads the pipe and reports each signal there: its event loop whenever the pipe is
// readable, and any wait that blocks the main thread outside the event loop when it polls the descriptor too
// and calls deliver(). Only one may exist at a time, since signal handlers are process-wide.
class SignalPipe final : public QObject
{
    Q_OBJECT

public:
    // What a signal does that arrives once one has been received.
    enum class Repeat
    {
        // It is reported like the first.
        reported,
        // It ends the process at once, as it would by default: the sender insists.
        endsProcess,
    };

    // Installs the handlers for `numbers`, from the thread whose event loop reads the pipe.
    SignalPipe(std::span<const int> numbers, Repeat repeat, QObject* parent = nullptr);
    // Gives the signals back their default action.
    ~SignalPipe() override;
    SignalPipe(const SignalPipe&) = delete;
    SignalPipe& operator=(const SignalPipe&) = delete;

    // The first signal received since the pipe was made, or 0; set by the handler, so it may be read at any
    // time on any thread, before the signal has been reported.
    static int first();
    // The pipe's read end, readable while a signal waits to be reported; -1 when there is no pipe.
    static int descriptor();
    // Reports what the pipe holds, now and on the calling thread, if that is the pipe's thread; returns at
    // once when nothing arrived. A receiver may end the process and never return here.
    static void deliver();

    // Ends the process as `number` would by default, so that a shell or a parent sees which signal ended it.
    [[noreturn]] static void endAs(int number);

Q_SIGNALS:
    // Emitted on the pipe's thread for each signal read from the pipe.
    void received(int number);

private:
    void readPipe();

    std::vector<int> m_numbers;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Vendel
