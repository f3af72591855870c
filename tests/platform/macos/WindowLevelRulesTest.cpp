// Tests where a plugin window's level is set, when it is set again, and which other windows are lifted.
#include "WindowLevelRules.h"

#include <QTest>

using namespace VendelSDK;

class WindowLevelRulesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pluginLevelIsOneAboveFloatingWindows()
    {
        QCOMPARE(floatingWindowLevel, 3L);
        QCOMPARE(pluginWindowLevel, 4L);
    }

    void onlyCocoaWindowsHaveANativeLevel()
    {
        QVERIFY(setsNativeWindowLevel(u"cocoa"));
        QVERIFY(!setsNativeWindowLevel(u"offscreen"));
        QVERIFY(!setsNativeWindowLevel(u"minimal"));
        QVERIFY(!setsNativeWindowLevel(u"xcb"));
        QVERIFY(!setsNativeWindowLevel(u""));
    }

    void levelIsSetAgainAfterShowingRecreatingAndLeavingFullScreen()
    {
        QVERIFY(resetsWindowLevel(QEvent::Show));
        QVERIFY(resetsWindowLevel(QEvent::WinIdChange));
        QVERIFY(resetsWindowLevel(QEvent::WindowStateChange));
        QVERIFY(!resetsWindowLevel(QEvent::Hide));
        QVERIFY(!resetsWindowLevel(QEvent::Paint));
    }

    void otherWindowComingForwardIsLiftedWhileAPluginWindowIsShown()
    {
        QCOMPARE(liftedWindowLevel(0, true), std::optional<long>(pluginWindowLevel));
        QCOMPARE(liftedWindowLevel(floatingWindowLevel, true), std::optional<long>(pluginWindowLevel));
    }

    void nothingIsLiftedWithoutAPluginWindowShown() { QCOMPARE(liftedWindowLevel(0, false), std::nullopt); }

    void noWindowIsLowered()
    {
        QCOMPARE(liftedWindowLevel(pluginWindowLevel, true), std::nullopt);
        // A modal panel's level.
        QCOMPARE(liftedWindowLevel(8, true), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(WindowLevelRulesTest)
#include "WindowLevelRulesTest.moc"
