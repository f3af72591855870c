// Application services for tests: counts termination requests and exposes a settable window list.
#pragma once

#include <VendelSDK/ApplicationServices.h>

#include <QCoreApplication>

namespace VendelSDK::Testing {

class FakeApplicationServices final : public ApplicationServices
{
    Q_OBJECT

public:
    void terminate() override { ++terminateRequests; }
    bool terminationRequested() const override { return terminateRequests > 0; }
    void postToMainThread(std::function<void()> work) override
    {
        QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
    }
    QList<WindowState> windows() const override { return windowSource ? windowSource() : windowList; }

    void finishLaunching() { Q_EMIT didFinishLaunching(); }
    void terminateNow() { Q_EMIT willTerminate(); }

    int terminateRequests = 0;
    QList<WindowState> windowList;
    // When set, the window list comes from here instead: the real windows of a widget test, say.
    std::function<QList<WindowState>()> windowSource;
};

} // namespace VendelSDK::Testing
