// Tests that the windowed application services report each window's visible and minimised state.
#include "VendelSDK/QtGuiApplicationServices.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

using namespace VendelSDK;

class QtGuiApplicationServicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void windowListReportsVisibleAndMinimisedWindows()
    {
        QtGuiApplicationServices services;
        QWindow shown;
        shown.show();
        QWindow minimised;
        minimised.showMinimized();
        QWindow hidden;
        hidden.create();
        const auto states = services.windows();
        int visible = 0;
        int miniaturised = 0;
        for (const WindowState& state : states) {
            visible += state.visible ? 1 : 0;
            miniaturised += state.miniaturised ? 1 : 0;
        }
        QCOMPARE(states.size(), 3);
        QCOMPARE(miniaturised, 1);
        QVERIFY(visible >= 1);
    }

    void aHiddenWindowIsNeitherVisibleNorMinimised()
    {
        QtGuiApplicationServices services;
        QWindow hidden;
        hidden.create();
        const auto states = services.windows();
        QCOMPARE(states.size(), 1);
        QVERIFY(!states.first().visible);
        QVERIFY(!states.first().miniaturised);
    }
};

QTEST_MAIN(QtGuiApplicationServicesTest)
#include "QtGuiApplicationServicesTest.moc"
