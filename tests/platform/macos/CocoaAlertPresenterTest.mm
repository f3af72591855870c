// Tests the native alert presenter: it runs the panel modally and answers with the pressed button's index.
#include "CocoaAlertPresenter.h"

#include <QApplication>
#include <QTest>

#import <AppKit/AppKit.h>

using namespace VendelSDK;

namespace {

// Ends the next modal panel as if the user pressed the button that answers with `response`.
void answerNextPanelWith(NSModalResponse response)
{
    NSTimer* timer = [NSTimer timerWithTimeInterval:0
                                            repeats:NO
                                              block:^(NSTimer*) {
                                                [NSApp stopModalWithCode:response];
                                              }];
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSModalPanelRunLoopMode];
}

} // namespace

class CocoaAlertPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answerIsThePressedButtonsIndex()
    {
        answerNextPanelWith(NSAlertFirstButtonReturn + 1);
        const Alert alert{QStringLiteral("Question"),
                          QStringLiteral("More"),
                          {QStringLiteral("OK"), QStringLiteral("Cancel")}};
        QCOMPARE(CocoaAlertPresenter().runModal(alert), 1);
    }

    void errorAlertAnswersWithItsDefaultButton()
    {
        answerNextPanelWith(NSAlertFirstButtonReturn);
        const Error error = makeError(1, QStringLiteral("Could not run script"), QStringLiteral("Reason"));
        QCOMPARE(CocoaAlertPresenter().runModal(Alert::fromError(error)), 0);
    }
};

QTEST_MAIN(CocoaAlertPresenterTest)
#include "CocoaAlertPresenterTest.moc"
