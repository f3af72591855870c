// Tests the window level of a plugin window on macOS: one above floating windows, kept there, and shared with
// the application's other windows when they come forward.
#include <VendelSDK/WindowConfiguration.h>

#include <QApplication>
#include <QTest>
#include <QWidget>

#import <AppKit/AppKit.h>

using namespace VendelSDK;

namespace {

NSWindow* nativeWindow(QWidget& window)
{
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    return view.window;
}

long nativeLevel(QWidget& window)
{
    return long(nativeWindow(window).level);
}

bool fullScreen(QWidget& window)
{
    return (nativeWindow(window).styleMask & NSWindowStyleMaskFullScreen) != 0;
}

// A window made outside the toolkit, as the updater makes its own.
NSWindow* makeOtherWindow()
{
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 240, 120)
                                                   styleMask:NSWindowStyleMaskTitled
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    window.releasedWhenClosed = NO;
    return window;
}

} // namespace

class MacWindowConfigurationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shownWindowIsOneAboveFloatingWindows()
    {
        QWidget window;
        WindowConfiguration::configure(window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_COMPARE(nativeLevel(window), long(NSFloatingWindowLevel + 1));
        QCOMPARE(nativeLevel(window), 4L);
    }

    void levelIsKeptWhenTheToolkitChangesTheFlags()
    {
        QWidget window;
        WindowConfiguration::configure(window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.setWindowFlag(Qt::WindowStaysOnTopHint, true);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_COMPARE(nativeLevel(window), 4L);
    }

    void levelIsSetAgainWhenTheWindowLeavesFullScreen()
    {
        QWidget window;
        WindowConfiguration::configure(window);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.showFullScreen();
        QTRY_VERIFY_WITH_TIMEOUT(fullScreen(window), 10000);
        window.showNormal();
        QTRY_VERIFY_WITH_TIMEOUT(!fullScreen(window), 10000);
        QTRY_COMPARE(nativeLevel(window), 4L);
    }

    void otherWindowComingForwardIsLiftedToThePluginWindowsLevel()
    {
        QWidget pluginWindow;
        WindowConfiguration::configure(pluginWindow);
        pluginWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&pluginWindow));
        NSWindow* other = makeOtherWindow();
        [NSApp activateIgnoringOtherApps:YES];
        [other makeKeyAndOrderFront:nil];
        QTRY_COMPARE(long(other.level), 4L);
        QCOMPARE(nativeLevel(pluginWindow), 4L);
        [other close];
    }

    void otherWindowKeepsItsLevelWithoutAPluginWindowShown()
    {
        QWidget pluginWindow;
        WindowConfiguration::configure(pluginWindow);
        NSWindow* other = makeOtherWindow();
        [NSApp activateIgnoringOtherApps:YES];
        [other makeKeyAndOrderFront:nil];
        QTRY_VERIFY(other.keyWindow);
        QCOMPARE(long(other.level), long(NSNormalWindowLevel));
        [other close];
    }
};

QTEST_MAIN(MacWindowConfigurationTest)
#include "MacWindowConfigurationTest.moc"
