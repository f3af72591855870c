// Tests the recording alert presenter: it records every alert, answers as told, and lets the test look in.
#include <VendelSDK/Testing/RecordingAlertPresenter.h>

#include <VendelSDK/Platform.h>

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

class RecordingAlertPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Platform::reset(); }

    void installedPresenterRecordsEveryAlertThatTheSdkShowsInOrder()
    {
        RecordingAlertPresenter& alerts = RecordingAlertPresenter::install();
        const Alert first{QStringLiteral("One"), QStringLiteral("first"), {}};
        const Alert second{
            QStringLiteral("Two"), QString(), {QStringLiteral("OK"), QStringLiteral("Cancel")}};
        QCOMPARE(Platform::alertPresenter().runModal(first), 0);
        QCOMPARE(Platform::alertPresenter().runModal(second), 0);
        QCOMPARE(alerts.alerts, (QList<Alert>{first, second}));
    }

    void answerIsTheButtonThatDismissesEachAlert()
    {
        RecordingAlertPresenter& alerts = RecordingAlertPresenter::install();
        alerts.answer = 1;
        QCOMPARE(Platform::alertPresenter().runModal(Alert{QStringLiteral("Sure?"), QString(), {}}), 1);
    }

    void onAlertSeesTheAlertBeforeItIsDismissed()
    {
        RecordingAlertPresenter& alerts = RecordingAlertPresenter::install();
        qsizetype recordedWhileShown = -1;
        QString shown;
        alerts.onAlert = [&](const Alert& alert) {
            shown = alert.messageText;
            recordedWhileShown = alerts.alerts.size();
        };
        Platform::alertPresenter().runModal(Alert{QStringLiteral("Now"), QString(), {}});
        QCOMPARE(shown, QStringLiteral("Now"));
        QCOMPARE(recordedWhileShown, 1);
    }
};

QTEST_GUILESS_MAIN(RecordingAlertPresenterTest)
#include "RecordingAlertPresenterTest.moc"
