// On macOS a plugin window sits one level above floating windows, set on the native window itself; the
// application's other windows are lifted to that level when they come forward, so that none opens behind.
#include <VendelSDK/WindowConfiguration.h>

#include "WindowLevelRules.h"

#include <QEvent>
#include <QGuiApplication>
#include <QList>
#include <QPointer>
#include <QWidget>

#import <AppKit/AppKit.h>

namespace VendelSDK {

namespace {

// Every window configured so far, for as long as it lives.
QList<QPointer<QWidget>>& pluginWindows()
{
    static QList<QPointer<QWidget>> windows;
    return windows;
}

// On the cocoa platform a widget's native id is its NSView; none is made here.
NSWindow* _Nullable nativeWindow(QWidget& window)
{
    const WId native = window.internalWinId();
    if (native == 0) {
        return nil;
    }
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(native);
    return view.window;
}

void applyLevel(QWidget& window)
{
    @autoreleasepool {
        nativeWindow(window).level = NSWindowLevel(pluginWindowLevel);
    }
}

bool pluginWindowShown()
{
    for (const QPointer<QWidget>& window : pluginWindows()) {
        if (window && window->isVisible()) {
            return true;
        }
    }
    return false;
}

bool isPluginWindow(NSWindow* _Nullable candidate)
{
    for (const QPointer<QWidget>& window : pluginWindows()) {
        if (window && candidate != nil && nativeWindow(*window) == candidate) {
            return true;
        }
    }
    return false;
}

// Once for the process: the updater's windows, an alert, or any other window of the application that
// becomes key or main while a plugin window is shown is lifted to the plugin windows' level and put in
// front of them. A plugin window that leaves full screen gets its level back.
void observeApplicationWindows()
{
    static bool observing = false;
    if (observing) {
        return;
    }
    observing = true;
    NSNotificationCenter* center = [NSNotificationCenter defaultCenter];
    void (^lift)(NSNotification*) = ^(NSNotification* notification) {
      NSWindow* window = notification.object;
      if (const std::optional<long> level = liftedWindowLevel(long(window.level), pluginWindowShown())) {
          window.level = NSWindowLevel(*level);
          [window orderWindow:NSWindowAbove relativeTo:0];
      }
    };
    [center addObserverForName:NSWindowDidBecomeKeyNotification object:nil queue:nil usingBlock:lift];
    [center addObserverForName:NSWindowDidBecomeMainNotification object:nil queue:nil usingBlock:lift];
    [center addObserverForName:NSWindowDidExitFullScreenNotification
                        object:nil
                         queue:nil
                    usingBlock:^(NSNotification* notification) {
                      NSWindow* window = notification.object;
                      if (isPluginWindow(window)) {
                          window.level = NSWindowLevel(pluginWindowLevel);
                      }
                    }];
}

class WindowLevelKeeper final : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (resetsWindowLevel(event->type())) {
            auto* window = static_cast<QWidget*>(watched);
            applyLevel(*window);
            // The toolkit acts after these events (it shows the native window after the show event, and
            // finishes a state change later): the level is set again once it has.
            const QPointer<QWidget> guarded(window);
            QMetaObject::invokeMethod(
                this,
                [guarded] {
                    if (guarded) {
                        applyLevel(*guarded);
                    }
                },
                Qt::QueuedConnection);
        }
        return false;
    }
};

} // namespace

void WindowConfiguration::configure(QWidget& window)
{
    if (!setsNativeWindowLevel(QGuiApplication::platformName())) {
        window.setWindowFlag(Qt::WindowStaysOnTopHint, true);
        return;
    }
    // The stays-on-top hint is not used here: it gives another level on macOS.
    pluginWindows().removeAll(nullptr);
    pluginWindows().append(&window);
    observeApplicationWindows();
    window.installEventFilter(new WindowLevelKeeper(&window));
    applyLevel(window);
}

} // namespace VendelSDK
