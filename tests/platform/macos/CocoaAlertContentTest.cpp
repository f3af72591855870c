// Tests what a native alert panel shows for an alert, and the pressed button's index.
#include "CocoaAlertContent.h"

#include <QTest>

using namespace VendelSDK;

class CocoaAlertContentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainAlertCarriesItsTextsAndButtonsInOrder()
    {
        const Alert alert{QStringLiteral("This plugin must be run by Vendel app."),
                          QStringLiteral("More"),
                          {QStringLiteral("OK"), QStringLiteral("Cancel")}};
        const CocoaAlertContent content = cocoaAlertContent(alert);
        QVERIFY(!content.error);
        QCOMPARE(content.messageText, alert.messageText);
        QCOMPARE(content.informativeText, QStringLiteral("More"));
        QCOMPARE(content.buttons, (QStringList{QStringLiteral("OK"), QStringLiteral("Cancel")}));
    }

    void alertWithoutButtonsLeavesThePanelItsDefaultButton()
    {
        QVERIFY(cocoaAlertContent(Alert{QStringLiteral("Plugin cannot be installed."), QString(), {}})
                    .buttons.isEmpty());
    }

    void errorAlertIsBuiltFromTheErrorItself()
    {
        const Error error = makeError(1, QStringLiteral("Could not run script"), QStringLiteral("Reason"));
        const CocoaAlertContent content = cocoaAlertContent(Alert::fromError(error));
        QVERIFY(content.error);
        QCOMPARE(content.error->domain, QString::fromLatin1(sdkErrorDomain));
        QCOMPARE(content.error->code, qint64(1));
        QCOMPARE(content.error->userInfo, error.userInfo());
    }

    void errorKeepsOnlyWhatFoundationCanHold()
    {
        const Error error(
            QString::fromLatin1(osStatusErrorDomain), -1728,
            {{QStringLiteral("NSAppleScriptErrorNumber"), qlonglong(-1728)},
             {QString::fromLatin1(localizedDescriptionKey), QStringLiteral("Can’t get playlist.")},
             {QStringLiteral("flag"), true},
             {QStringLiteral("range"), QVariant::fromValue(QPoint(1, 2))},
             {QStringLiteral("list"), QVariantList{1, 2}}});
        const auto content = cocoaAlertContent(Alert::fromError(error));
        QVERIFY(content.error);
        QCOMPARE(content.error->code, qint64(-1728));
        QCOMPARE(content.error->userInfo.keys(),
                 (QStringList{QStringLiteral("NSAppleScriptErrorNumber"),
                              QString::fromLatin1(localizedDescriptionKey), QStringLiteral("flag")}));
    }

    void pressedButtonIsCountedFromTheFirst()
    {
        QCOMPARE(pressedButtonIndex(firstButtonModalResponse, 2), 0);
        QCOMPARE(pressedButtonIndex(firstButtonModalResponse + 1, 2), 1);
    }

    void answerNamingNoButtonIsTheDefault()
    {
        QCOMPARE(pressedButtonIndex(firstButtonModalResponse + 2, 2), 0);
        QCOMPARE(pressedButtonIndex(firstButtonModalResponse, 0), 0);
        QCOMPARE(pressedButtonIndex(0, 3), 0);
        QCOMPARE(pressedButtonIndex(-1000, 3), 0);
    }
};

QTEST_GUILESS_MAIN(CocoaAlertContentTest)
#include "CocoaAlertContentTest.moc"
