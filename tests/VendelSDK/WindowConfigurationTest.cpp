// Tests that a configured plugin window stays above other windows and keeps its other flags.
#include <VendelSDK/WindowConfiguration.h>

#include <QApplication>
#include <QTest>
#include <QWidget>

using namespace VendelSDK;

class WindowConfigurationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void configuredWindowStaysOnTop()
    {
        QWidget window;
        QVERIFY(!window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        WindowConfiguration::configure(window);
        QVERIFY(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    }

    void configuringKeepsTheWindowsOtherFlags()
    {
        QWidget window(nullptr, Qt::Dialog | Qt::WindowTitleHint);
        WindowConfiguration::configure(window);
        QVERIFY(window.windowFlags().testFlag(Qt::Dialog));
        QVERIFY(window.windowFlags().testFlag(Qt::WindowTitleHint));
        QVERIFY(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    }
};

QTEST_MAIN(WindowConfigurationTest)
#include "WindowConfigurationTest.moc"
