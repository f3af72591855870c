// Application services of a Qt application: queued termination and the will-terminate hook.
#pragma once

#include <VendelSDK/ApplicationServices.h>
#include <VendelSDK/Export.h>

#include <memory>

namespace VendelSDK {

class TerminationSignals;

/// The application services of a Qt application without windows (QCoreApplication), the default where there
/// is no display.
class VENDELSDK_EXPORT QtApplicationServices : public ApplicationServices
{
    Q_OBJECT

public:
    /// Services of the Qt application object, which must exist.
    explicit QtApplicationServices(QObject* parent = nullptr);
    ~QtApplicationServices() override;

    void terminate() override;
    bool terminationRequested() const override { return m_terminating; }
    void postToMainThread(std::function<void()> work) override;
    /// A core application has no windows; the GUI services list the real ones.
    QList<WindowState> windows() const override;

    /// Announces that launching has finished once the event loop runs, after queued launch work. A
    /// platform whose system says when launching has finished announces it then instead.
    virtual void finishLaunchingWhenLoopStarts();
    /// Runs the application's event loop, unless the application already ended: a loop nested before it
    /// (a modal alert shown while dispatching the launch URL) may have carried out the termination, and
    /// the exit it asked for does not reach a loop that starts afterwards.
    int exec();

    /// From now on SIGTERM, SIGINT and SIGHUP end the application where the signal is noticed: in the event
    /// loop, in a modal alert's loop, or in a wait that lets termination signals through (a bus call). The
    /// will-terminate hooks run there, so that pending writes reach the host, and then `end` ends the process
    /// (TerminationSignals::endAs when none is given), so that nothing the interrupted flow would do next
    /// runs. A signal that arrives while the hooks already run lets them finish; see terminatingSignal(). An
    /// `end` that returns (a test's) ends the event loop instead.
    void terminateOnSignals(std::function<void(int number)> end = {});
    /// The signal that asked the application to end, or 0; the process should end as that signal would
    /// once the event loop has returned (TerminationSignals::endAs).
    int terminatingSignal() const;

private:
    void endEventLoop();
    void endBySignal(int number);

    bool m_terminating = false;
    bool m_terminated = false;
    bool m_ended = false;
    std::unique_ptr<TerminationSignals> m_signals;
    std::function<void(int)> m_end;
};

} // namespace VendelSDK
