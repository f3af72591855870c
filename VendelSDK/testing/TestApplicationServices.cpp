// Emits the application's signals on the test's request instead of the system's.
#include <VendelSDK/Testing/TestApplicationServices.h>

#include <VendelSDK/Platform.h>

namespace VendelSDK::Testing {

TestApplicationServices& TestApplicationServices::install()
{
    auto services = std::make_unique<TestApplicationServices>();
    TestApplicationServices& installed = *services;
    Platform::setApplicationServices(std::move(services));
    return installed;
}

void TestApplicationServices::terminate()
{
    ++terminateRequests;
}

bool TestApplicationServices::terminationRequested() const
{
    return terminateRequests > 0;
}

void TestApplicationServices::postToMainThread(std::function<void()> work)
{
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

QList<WindowState> TestApplicationServices::windows() const
{
    return windowSource ? windowSource() : windowList;
}

void TestApplicationServices::deliverLaunchURL(const QString& url)
{
    Q_EMIT getURLEvent(url);
}

void TestApplicationServices::finishLaunching()
{
    Q_EMIT didFinishLaunching();
}

void TestApplicationServices::terminateNow()
{
    Q_EMIT willTerminate();
}

} // namespace VendelSDK::Testing
