// Application services for tests: launching and termination happen when the test says, and the process lives
// on.
#pragma once

#include <VendelSDK/ApplicationServices.h>

#include <QList>

#include <functional>

namespace VendelSDK::Testing {

/// Application services that a test drives: it delivers launch URLs, finishes launching (which runs the
/// start-up check of every VendelPlugin) and fires termination (which runs the termination observers, and
/// with them the configuration providers' last writes), all without ending the test process. A request
/// to terminate is only counted.
class TestApplicationServices final : public ApplicationServices
{
    Q_OBJECT

public:
    /// Makes services, hands them to Platform::setApplicationServices() and returns them; they stay owned by
    /// the platform, and are valid until the platform's services are replaced or reset. Install them before
    /// the code under test makes its VendelPlugin or its configuration providers, which connect to them.
    static TestApplicationServices& install();

    /// Counts the request in terminateRequests; the application does not end.
    void terminate() override;
    /// Whether terminate() has been asked for at least once.
    bool terminationRequested() const override;
    /// Queues `work` on the event loop, as the real services do.
    void postToMainThread(std::function<void()> work) override;
    /// windowSource's list when it is set, windowList otherwise.
    QList<WindowState> windows() const override;

    /// Delivers a launch URL as the system delivers one to the running application: emits getURLEvent with
    /// the text exactly as given.
    void deliverLaunchURL(const QString& url);
    /// Announces that launching has finished: emits didFinishLaunching, on which every VendelPlugin runs its
    /// start-up check. Deliver the launch URL, if any, first, as the system does.
    void finishLaunching();
    /// The application is about to end: emits willTerminate, on which every termination observer runs, so
    /// that the configuration providers write their configuration once more. The process goes on; fire it
    /// once per test, as an application ends once.
    void terminateNow();

    /// How often terminate() was asked for.
    int terminateRequests = 0;
    /// The window list that windows() reports when windowSource is not set.
    QList<WindowState> windowList;
    /// When set, the window list comes from here instead: the real windows of a widget test, say.
    std::function<QList<WindowState>()> windowSource;
};

} // namespace VendelSDK::Testing
