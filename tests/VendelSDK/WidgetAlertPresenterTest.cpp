// Tests the windowed alert: its texts, its buttons in order, and the index of the button pressed.
#include <VendelSDK/WidgetAlertPresenter.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace VendelSDK;

class WidgetAlertPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsBothTextsAndAnswersWithThePressedButton()
    {
        QString seenText;
        QString seenInformative;
        QStringList seenButtons;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            seenText = box->text();
            seenInformative = box->informativeText();
            QVERIFY(box->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            for (QAbstractButton* button : box->buttons()) {
                seenButtons.append(button->text());
                if (button->text() == QStringLiteral("Cancel")) {
                    button->click();
                }
            }
        });
        const int answer =
            WidgetAlertPresenter().runModal(Alert{QStringLiteral("Plugin cannot be installed."),
                                                  QStringLiteral("Please make sure…"),
                                                  {QStringLiteral("OK"), QStringLiteral("Cancel")}});
        QCOMPARE(seenText, QStringLiteral("Plugin cannot be installed."));
        QCOMPARE(seenInformative, QStringLiteral("Please make sure…"));
        QCOMPARE(seenButtons.size(), 2);
        QVERIFY(seenButtons.contains(QStringLiteral("OK")));
        QCOMPARE(answer, 1);
    }

    void withoutButtonsItHasOneDefaultButtonAndAnswersZero()
    {
        int buttons = -1;
        bool pressedDefault = false;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            buttons = int(box->buttons().size());
            pressedDefault = box->defaultButton() != nullptr;
            if (box->defaultButton() != nullptr) {
                box->defaultButton()->click();
            }
        });
        const int answer =
            WidgetAlertPresenter().runModal(Alert{QStringLiteral("Could not run script"), QString(), {}});
        QCOMPARE(buttons, 1);
        QVERIFY(pressedDefault);
        QCOMPARE(answer, 0);
    }
};

QTEST_MAIN(WidgetAlertPresenterTest)
#include "WidgetAlertPresenterTest.moc"
