// Tests the error values: the SDK factory's exact user information and the generic description.
#include <VendelSDK/Error.h>
#include <VendelSDK/Alert.h>

#include <QTest>

using namespace VendelSDK;

class ErrorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sdkErrorsHoldExactlyDescriptionAndReason_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("reason");
        QTest::newRow("0") << 0 << QStringLiteral("Could not create URL") << QString();
        QTest::newRow("1") << 1 << QStringLiteral("Could not run script")
                           << QStringLiteral(
                                  "It looks like you haven't got Vendel 2 app or you didn't allow to "
                                  "communicate the plugin (this app) via Apple Script");
        QTest::newRow("2") << 2 << QStringLiteral("Could not read data from script output") << QString();
    }

    void sdkErrorsHoldExactlyDescriptionAndReason()
    {
        QFETCH(int, code);
        QFETCH(QString, description);
        QFETCH(QString, reason);
        const Error errors[] = {couldNotCreateURLError(), couldNotRunScriptError(),
                                couldNotReadScriptOutputError()};
        const Error& error = errors[code];
        QCOMPARE(error.domain(), QStringLiteral("org.vendel.VendelSDK"));
        QCOMPARE(error.code(), code);
        QCOMPARE(error.userInfo().size(), 2);
        QVERIFY(error.userInfo().contains(QString::fromLatin1(localizedDescriptionKey)));
        QVERIFY(error.userInfo().contains(QString::fromLatin1(localizedFailureReasonKey)));
        QCOMPARE(error.userInfo().value(QString::fromLatin1(localizedDescriptionKey)).toString(),
                 description);
        QCOMPARE(error.userInfo().value(QString::fromLatin1(localizedFailureReasonKey)).toString(), reason);
    }

    void makeErrorKeepsTheGivenTexts()
    {
        const Error error = makeError(7, QStringLiteral("desc"), QStringLiteral("why"));
        QCOMPARE(error.code(), 7);
        QCOMPARE(error.localizedDescription(), QStringLiteral("desc"));
        QCOMPARE(error.localizedFailureReason(), QStringLiteral("why"));
    }

    void errorWithoutDescriptionNamesDomainAndCode()
    {
        const Error error(QString::fromLatin1(osStatusErrorDomain), -1728);
        QCOMPARE(error.localizedDescription(),
                 QStringLiteral("The operation couldn’t be completed. (NSOSStatusErrorDomain error -1728.)"));
        QCOMPARE(error.localizedFailureReason(), QString());
    }

    void alertFromErrorShowsDescriptionThenReason()
    {
        const Alert alert = Alert::fromError(couldNotRunScriptError());
        QCOMPARE(alert.messageText, QStringLiteral("Could not run script"));
        QVERIFY(alert.informativeText.startsWith(QStringLiteral("It looks like")));
        QVERIFY(alert.buttons.isEmpty());
        QCOMPARE(Alert::fromError(couldNotCreateURLError()).informativeText, QString());
    }

    void errorIsThrowableAsStandardException()
    {
        try {
            throw makeError(2, QStringLiteral("d"), QString());
        } catch (const std::exception& exception) {
            QVERIFY(QByteArray(exception.what()).contains("org.vendel.VendelSDK"));
        }
    }
};

QTEST_GUILESS_MAIN(ErrorTest)
#include "ErrorTest.moc"
