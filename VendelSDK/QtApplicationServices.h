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

    // Announces that launching has finished once the event loop runs, after queued launch work.
    void finishLaunchingWhenLoopStarts();

private:
    void endEventLoop();

    bool m_terminating = false;
    bool m_terminated = false;
};

} // namespace VendelSDK
