// Application services of a Qt application: queued termination, the will-terminate hook, windows.
#pragma once

#include "ApplicationServices.h"

namespace VendelSDK {

class QtApplicationServices final : public ApplicationServices
{
    Q_OBJECT

public:
    explicit QtApplicationServices(QObject* parent = nullptr);

    void terminate() override;
    void postToMainThread(std::function<void()> work) override;
    QList<WindowState> windows() const override;

    // Announces that launching has finished once the event loop runs, after queued launch work.
    void finishLaunchingWhenLoopStarts();

private:
    void endEventLoop();

    bool m_terminating = false;
    bool m_terminated = false;
};

} // namespace VendelSDK
