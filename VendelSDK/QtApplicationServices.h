// Application services of a Qt application: queued termination and the will-terminate hook.
#pragma once

#include "ApplicationServices.h"

namespace VendelSDK {

class QtApplicationServices : public ApplicationServices
{
    Q_OBJECT

public:
    explicit QtApplicationServices(QObject* parent = nullptr);

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

private:
    void endEventLoop();

    bool m_terminating = false;
    bool m_terminated = false;
    bool m_ended = false;
};

} // namespace VendelSDK
