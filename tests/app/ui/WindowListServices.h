// Application services for window tests: the real window list of the widget application, and termination
// requests counted instead of carried out.
#pragma once

#include "VendelSDK/QtGuiApplicationServices.h"

namespace MusicPlugin::Testing {

class WindowListServices final : public VendelSDK::ApplicationServices
{
    Q_OBJECT

public:
    void terminate() override { ++terminateRequests; }
    bool terminationRequested() const override { return terminateRequests > 0; }
    void postToMainThread(std::function<void()> work) override
    {
        QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
    }
    QList<VendelSDK::WindowState> windows() const override { return m_windows.windows(); }

    void terminateNow() { Q_EMIT willTerminate(); }

    int terminateRequests = 0;

private:
    VendelSDK::QtGuiApplicationServices m_windows;
};

} // namespace MusicPlugin::Testing
