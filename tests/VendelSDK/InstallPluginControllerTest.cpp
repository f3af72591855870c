// Tests the installation request: success in silence, failure with its alert and termination.
#include <VendelSDK/InstallPluginController.h>

#include "TestPlatform.h"

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

Q_DECLARE_METATYPE(VendelSDK::ScriptOutcome)

class InstallPluginControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyAnswerCountsAsSuccessWithoutAlert_data()
    {
        QTest::addColumn<ScriptOutcome>("answer");
        QTest::newRow("text") << ScriptOutcome(QStringLiteral("installed"));
        QTest::newRow("empty text") << ScriptOutcome(QString());
        QTest::newRow("nothing") << ScriptOutcome(ScriptNoResult{});
    }

    void anyAnswerCountsAsSuccessWithoutAlert()
    {
        QFETCH(ScriptOutcome, answer);
        TestPlatform platform;
        platform.engine->answers = {answer};
        InstallPluginController::install();
        QCOMPARE(platform.engine->sources,
                 QStringList{QStringLiteral("    tell application \"Vendel\" to install plugin")});
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void failureShowsBothTextsThenTerminates()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptErrorRecord{-600, QStringLiteral("x"), QStringLiteral("x")}};
        int terminatesDuringAlert = -1;
        platform.alerts->onAlert = [&](const Alert&) {
            terminatesDuringAlert = platform.services->terminateRequests;
        };
        InstallPluginController::install();
        QCOMPARE(platform.alerts->alerts.size(), 1);
        const Alert& alert = platform.alerts->alerts.constFirst();
        QCOMPARE(alert.messageText, QStringLiteral("Plugin cannot be installed."));
        QCOMPARE(
            alert.informativeText,
            QStringLiteral("Please make sure you have the latest version of Vendel installed. If problem "
                           "occurs again, go to Preferences -> Plugins and install the plugin there."));
        QVERIFY(alert.buttons.isEmpty());
        QCOMPARE(terminatesDuringAlert, 0);
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void installAndQuitTerminatesAfterSuccess()
    {
        TestPlatform platform;
        InstallPluginController controller;
        controller.installAndQuit();
        QCOMPARE(platform.engine->sources.size(), 1);
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 1);
    }
};

QTEST_GUILESS_MAIN(InstallPluginControllerTest)
#include "InstallPluginControllerTest.moc"
