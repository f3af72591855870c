// The application-services seam: launching and termination, main-thread work, and the window list.
#pragma once

#include <VendelSDK/Export.h>

#include <QList>
#include <QObject>

#include <functional>

namespace VendelSDK {

/// What the window list says about one window.
struct VENDELSDK_EXPORT WindowState
{
    /// Whether the window is shown.
    bool visible = false;
    /// Whether the window is minimised to the dock or task bar.
    bool miniaturised = false;
};

/// What the SDK needs of the running application: its launch and termination, work on the main thread, and
/// its windows. Platform::applicationServices() holds the one in use; a test installs
/// VendelSDK::Testing::TestApplicationServices instead.
class VENDELSDK_EXPORT ApplicationServices : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Asks the application to end after the current event; works before and during the event loop.
    virtual void terminate() = 0;
    /// True once terminate() has been asked for; the application is then on its way out.
    virtual bool terminationRequested() const = 0;
    /// Runs work later on the main thread, from its event loop.
    virtual void postToMainThread(std::function<void()> work) = 0;
    /// The application's windows, in their list order.
    virtual QList<WindowState> windows() const = 0;

Q_SIGNALS:
    /// Launching has finished: every launch URL given at start has been dispatched.
    void didFinishLaunching();
    /// The system delivered a launch URL to the running application (a get-URL event), with its text exactly
    /// as sent. Receivers run synchronously, while the event is being handled.
    void getURLEvent(const QString& url);
    /// The application is about to end; emitted once, on the main thread, before the event loop exits.
    void willTerminate();
};

} // namespace VendelSDK
