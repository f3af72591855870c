// Tests that dragging a window's background, or a passive label on it, moves the window, and that controls,
// other buttons and moves without a press do not.
#include "WindowBackgroundMover.h"

#include "MouseDrag.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace MusicPlugin;
using namespace MusicPlugin::Testing;

namespace {

// A window whose content is a background with a label and a button on it.
struct Window
{
    Window()
    {
        auto* outer = new QVBoxLayout(&window);
        outer->setContentsMargins(0, 0, 0, 0);
        outer->addWidget(background);
        auto* inner = new QVBoxLayout(background);
        inner->setContentsMargins(20, 20, 20, 20);
        inner->addWidget(label);
        inner->addWidget(button);
        new WindowBackgroundMover(*background);
        window.move(100, 100);
        window.show();
    }

    QWidget window;
    QWidget* background = new QWidget;
    QLabel* label = new QLabel(QStringLiteral("Label"));
    QPushButton* button = new QPushButton(QStringLiteral("Button"));
};

} // namespace

class WindowBackgroundMoverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void draggingTheBackgroundMovesTheWindowWithThePointer()
    {
        Window w;
        QVERIFY(QTest::qWaitForWindowExposed(&w.window));
        const QPoint start = w.window.pos();
        mouseDrag(w.background, QPoint(5, 5), QPoint(40, 30));
        QCOMPARE(w.window.pos(), start + QPoint(40, 30));
        mouseDrag(w.background, QPoint(5, 5), QPoint(-15, 0));
        QCOMPARE(w.window.pos(), start + QPoint(25, 30));
    }

    void aPassiveLabelIsPartOfTheBackground()
    {
        Window w;
        const QPoint start = w.window.pos();
        mouseDrag(w.label, QPoint(2, 2), QPoint(10, 20));
        QCOMPARE(w.window.pos(), start + QPoint(10, 20));
    }

    void aControlKeepsItsPresses()
    {
        Window w;
        const QPoint start = w.window.pos();
        int clicks = 0;
        QObject::connect(w.button, &QPushButton::clicked, w.button, [&] { ++clicks; });
        mouseDrag(w.button, QPoint(3, 3), QPoint(1, 1));
        QCOMPARE(w.window.pos(), start);
        QCOMPARE(clicks, 1);
    }

    void otherButtonsAndMovesWithoutAPressDoNothing()
    {
        Window w;
        const QPoint start = w.window.pos();
        mouseDrag(w.background, QPoint(5, 5), QPoint(40, 30), Qt::RightButton);
        QCOMPARE(w.window.pos(), start);
        const QPoint global = w.background->mapToGlobal(QPoint(5, 5));
        QMouseEvent move(QEvent::MouseMove, QPointF(30, 30), QPointF(global + QPoint(25, 25)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(w.background, &move);
        QCOMPARE(w.window.pos(), start);
    }
};

QTEST_MAIN(WindowBackgroundMoverTest)
#include "WindowBackgroundMoverTest.moc"
