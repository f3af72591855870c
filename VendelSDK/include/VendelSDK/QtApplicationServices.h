// Application services of a Qt application: queued termination and the will-terminate hook.
#pragma once

#include <VendelSDK/ApplicationServices.h>
#include <VendelSDK/Export.h>

#include <memory>

namespace VendelSDK {

class TerminationSignals;

class VENDELSDK_EXPORT QtApplicationServices : public ApplicationServices
{
    Q_OBJECT

public:
    explicit QtApplicationServices(QObject* parent = nullptr);
    ~QtApplicationServices() override;

    void terminate() override;
    bool terminationRequested() const override { return m_terminating; }
    void postToMainThread(std::function<void()> work) override;
    // A core application has no windows; the GUI services list the real ones.
    QList<WindowState> windows() const override;

    // Announces that launching has finished once the event loop runs, after queued launch work. A
    // platform whose system says when launching has finished announces it then instead.
    virtual void finishLaunchingWhenLoopStarts();
    // Runs the application's event loop, unless the application already ended: a loop nested before it
    // (a modal alert shown while dispatching the launch URL) may have carried out the termination, and
    // the exit it asked for does not reach a loop that starts afterwards.
    int exec();

    // From now on SIGTERM, SIGINT and SIGHUP end the application as terminate() does, hooks included.
    void terminateOnSignals();
    // The signal that asked the application to end, or 0; the process should end as that signal would
    // once the event loop has returned (TerminationSignals::endAs).
    int terminatingSignal() const;

private:
    void endEventLoop();

    bool m_terminating = false;
    bool m_terminated = false;
    bool m_ended = false;
    std::unique_ptr<TerminationSignals> m_signals;
};

} // namespace VendelSDK
