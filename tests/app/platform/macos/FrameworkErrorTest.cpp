// Tests how an error from one of Apple's frameworks becomes the error value that alerts show.
#include "FrameworkError.h"

#include <VendelSDK/Alert.h>

#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;

class FrameworkErrorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void domainCodeAndTextsAreTheFrameworks()
    {
        const Error error = frameworkError({QStringLiteral("ITLibErrorDomain"),
                                            2,
                                            QStringLiteral("The library could not be read."),
                                            QStringLiteral("Access to Music was denied."),
                                            {}});
        QCOMPARE(error.domain(), QStringLiteral("ITLibErrorDomain"));
        QCOMPARE(error.code(), qint64(2));
        QCOMPARE(error.localizedDescription(), QStringLiteral("The library could not be read."));
        QCOMPARE(error.localizedFailureReason(), QStringLiteral("Access to Music was denied."));
        QCOMPARE(Alert::fromError(error), (Alert{QStringLiteral("The library could not be read."),
                                                 QStringLiteral("Access to Music was denied."),
                                                 {}}));
    }

    void userInformationIsKeptWithTheWorkedOutTexts()
    {
        const QVariantMap userInfo{{QStringLiteral("NSFilePath"), QStringLiteral("/Users/a/Music")},
                                   {QString::fromLatin1(localizedDescriptionKey), QStringLiteral("raw")}};
        const Error error =
            frameworkError({QStringLiteral("NSCocoaErrorDomain"), 260,
                            QStringLiteral("The file couldn’t be opened."), std::nullopt, userInfo});
        QCOMPARE(error.userInfo().value(QStringLiteral("NSFilePath")),
                 QVariant(QStringLiteral("/Users/a/Music")));
        QCOMPARE(error.localizedDescription(), QStringLiteral("The file couldn’t be opened."));
    }

    void missingFailureReasonLeavesNoStaleOne()
    {
        const QVariantMap userInfo{{QString::fromLatin1(localizedFailureReasonKey), QStringLiteral("stale")}};
        const Error error =
            frameworkError({QStringLiteral("D"), -1, QStringLiteral("Description"), std::nullopt, userInfo});
        QVERIFY(!error.userInfo().contains(QString::fromLatin1(localizedFailureReasonKey)));
        QCOMPARE(error.localizedFailureReason(), QString());
    }
};

QTEST_GUILESS_MAIN(FrameworkErrorTest)
#include "FrameworkErrorTest.moc"
