// Tests the window level of a plugin window on macOS: one above floating windows, and kept there.
#include <VendelSDK/WindowConfiguration.h>

#include <QApplication>
#include <QTest>
#include <QWidget>

#import <AppKit/AppKit.h>

using namespace VendelSDK;

namespace {

long nativeLevel(QWidget& window)
{
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    return long(view.window.level);
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
};

QTEST_MAIN(MacWindowConfigurationTest)
#include "MacWindowConfigurationTest.moc"
