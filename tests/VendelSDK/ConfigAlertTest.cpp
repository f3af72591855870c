// Tests the configuration alert's texts and that withErrorAlert shows it, with the read title, only on
// failure.
#include <VendelSDK/ConfigAlert.h>

#include "TestPlatform.h"

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString readTitle = QStringLiteral("Could not read action data in Vendel.");
const QString saveTitle = QStringLiteral("Could not save action data in Vendel.");

} // namespace

class ConfigAlertTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readAlertHasTheReadTitleTheErrorDescriptionAndOneOkButton()
    {
        TestPlatform platform;
        showConfigAlert(couldNotRunScriptError(), true);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.first(),
                 (Alert{readTitle, QStringLiteral("Could not run script"), {QStringLiteral("OK")}}));
    }

    void saveChoiceHasTheSaveTitle()
    {
        TestPlatform platform;
        showConfigAlert(couldNotReadScriptOutputError(), false);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.first(),
                 (Alert{saveTitle,
                        QStringLiteral("Could not read data from script output"),
                        {QStringLiteral("OK")}}));
    }

    void informativeTextIsTheErrorsLocalisedDescription()
    {
        TestPlatform platform;
        const Error error(QStringLiteral("org.example"), 7,
                          {{QString::fromLatin1(localizedDescriptionKey), QStringLiteral("Disk on fire")}});
        showConfigAlert(error, true);
        QCOMPARE(platform.alerts->alerts.first().informativeText, QStringLiteral("Disk on fire"));
    }

    void withErrorAlertReturnsTheValueAndShowsNothingOnSuccess()
    {
        TestPlatform platform;
        const std::optional<QString> value = withErrorAlert([] { return QStringLiteral("text"); });
        QCOMPARE(value, std::optional(QStringLiteral("text")));
        QVERIFY(platform.alerts->alerts.isEmpty());
    }

    void withErrorAlertShowsTheReadTitleAndReturnsNothingOnFailure()
    {
        TestPlatform platform;
        const std::optional<QString> value =
            withErrorAlert([]() -> QString { throw couldNotReadScriptOutputError(); });
        QVERIFY(!value);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.first().messageText, readTitle);
        QCOMPARE(platform.alerts->alerts.first().informativeText,
                 QStringLiteral("Could not read data from script output"));
    }

    void withErrorAlertShowsTheReadTitleForAFailedWriteToo()
    {
        TestPlatform platform;
        int writes = 0;
        QVERIFY(withErrorAlert([&] { ++writes; }));
        QVERIFY(platform.alerts->alerts.isEmpty());
        QVERIFY(!withErrorAlert([] { throw couldNotRunScriptError(); }));
        QCOMPARE(writes, 1);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.first().messageText, readTitle);
    }
};

QTEST_GUILESS_MAIN(ConfigAlertTest)
#include "ConfigAlertTest.moc"
