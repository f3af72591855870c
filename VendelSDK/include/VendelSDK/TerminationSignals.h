// Turns SIGTERM, SIGINT and SIGHUP into a termination request carried out by the main thread's event loop.
#pragma once

#include <VendelSDK/Export.h>

#include <QObject>

#include <array>
#include <memory>

class QSocketNotifier;

namespace VendelSDK {

// A signal handler may do almost nothing, so it only writes the signal's number to a pipe; the event loop
// reads it and reports it on the main thread. A second signal, while the first is being carried out (a
// termination hook blocked on a frozen host, say), ends the process at once, as that signal would.
class VENDELSDK_EXPORT TerminationSignals final : public QObject
{
    Q_OBJECT

public:
    // The signals that a desktop session, a terminal or a service manager sends to end a process.
    static const std::array<int, 3> numbers;

    // Installs the handlers; make one per process, on the main thread, once the application object exists.
    explicit TerminationSignals(QObject* parent = nullptr);
    // Gives the signals back their default action.
    ~TerminationSignals() override;
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    // The first signal received, or 0; set before `received` is emitted.
    int first() const { return m_first; }

    // Ends the process as `number` would have by default, so that a shell or a parent process sees which
    // signal ended it. Call it once the termination hooks have run.
    [[noreturn]] static void endAs(int number);

Q_SIGNALS:
    // Emitted on the object's thread for the first signal only.
    void received(int number);

private:
    void readPipe();

    std::unique_ptr<QSocketNotifier> m_notifier;
    int m_first = 0;
};

} // namespace VendelSDK
