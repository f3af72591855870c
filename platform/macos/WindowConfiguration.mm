// On macOS a plugin window sits one level above floating windows, set on the native window itself.
#include <VendelSDK/WindowConfiguration.h>

#include <QEvent>
#include <QPointer>
#include <QWidget>

#import <AppKit/AppKit.h>

namespace VendelSDK {

namespace {

void applyLevel(QWidget& window)
{
    const WId native = window.internalWinId();
    if (native == 0) {
        return;
    }
    @autoreleasepool {
        NSView* view = (__bridge NSView*)reinterpret_cast<void*>(native);
        [view.window setLevel:NSFloatingWindowLevel + 1];
    }
}

// The toolkit sets a level of its own when it creates or shows the native window, and again when the
// window's flags change, which recreates it; the level is set again after each.
class WindowLevelKeeper final : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show || event->type() == QEvent::WinIdChange) {
            auto* window = static_cast<QWidget*>(watched);
            applyLevel(*window);
            // The show event comes before the native window is shown; the level is set again after.
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
    // The stays-on-top hint is not used here: it gives another level on macOS.
    window.installEventFilter(new WindowLevelKeeper(&window));
    applyLevel(window);
}

} // namespace VendelSDK
