// The handlers' tests: a scripted host answers the host's commands; the delayed write runs in virtual time.
#include "Handlers.h"

#include <VendelSDK/Platform.h>
#include <VendelSDK/Testing/ManualScheduler.h>
#include <VendelSDK/Testing/RecordingAlertPresenter.h>
#include <VendelSDK/Testing/ScriptedHost.h>
#include <VendelSDK/Testing/TestApplicationServices.h>

#include <QTest>

using namespace std::chrono_literals;
using VendelSDK::Testing::ManualScheduler;
using VendelSDK::Testing::RecordingAlertPresenter;
using VendelSDK::Testing::ScriptedHost;
using VendelSDK::Testing::TestApplicationServices;

class HandlersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_services = &TestApplicationServices::install();
        m_scheduler = &ManualScheduler::install();
        m_alerts = &RecordingAlertPresenter::install();
        m_host = std::make_unique<ScriptedHost>();
        m_host->install();
        Plugin::installHandlers(m_controller);
    }

    void cleanup()
    {
        QVERIFY2(m_host->mismatches().isEmpty(), qPrintable(m_host->mismatches().join(u'\n')));
        QCOMPARE(m_host->remaining(), 0);
        VendelSDK::Platform::reset();
        m_host.reset();
    }

    void runReadsTheActionsSettingsAndQuits()
    {
        m_host->expectGetConfig(QStringLiteral("A1"),
                                ScriptedHost::text(QStringLiteral(R"({"message":"Hi","timesEdited":2})")));

        QVERIFY(m_controller.handle(QStringLiteral("vendelplugin://run/A1")));

        QCOMPARE(m_services->terminateRequests, 1);
        QVERIFY(m_alerts->alerts.isEmpty());
    }

    void runShowsTheAlertWhenTheHostCannotBeAsked()
    {
        m_host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::failure());

        m_controller.handle(QStringLiteral("vendelplugin://run/A1"));

        QCOMPARE(m_alerts->alerts.size(), 1);
        QCOMPARE(m_services->terminateRequests, 1);
    }

    void editWritesASecondAfterTheSaveAndAgainAtTermination()
    {
        const QString edited = QStringLiteral(R"({"message":"Hello","timesEdited":1})");
        m_host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(QString()))
            .expectSetConfig(edited, QStringLiteral("A1"))
            .expectSetConfig(edited, QStringLiteral("A1"));

        m_controller.handle(QStringLiteral("vendelplugin://edit/A1"));
        QCOMPARE(m_alerts->alerts.size(), 1);
        QCOMPARE(m_services->terminateRequests, 1);

        m_scheduler->advance(999ms);
        QCOMPARE(m_host->commands().size(), 1);
        m_scheduler->advance(1ms);
        QCOMPARE(m_host->commands().size(), 2);
        m_services->terminateNow();
        QCOMPARE(m_host->commands().size(), 3);
    }

    void configureShowsTheNameAndVersion()
    {
        VendelSDK::Platform::setMainBundle(
            VendelSDK::Bundle(QStringLiteral("/opt/plugin"), QStringLiteral("org.example.Test"),
                              {{VendelSDK::Bundle::nameKey, QStringLiteral("Test Plugin")},
                               {VendelSDK::Bundle::shortVersionKey, QStringLiteral("2.5")}}));

        QVERIFY(m_controller.handle(QStringLiteral("vendelplugin://configure")));

        QCOMPARE(m_alerts->alerts.size(), 1);
        QCOMPARE(m_alerts->alerts.at(0).messageText, QStringLiteral("Test Plugin"));
        QCOMPARE(m_alerts->alerts.at(0).informativeText, QStringLiteral("Version 2.5"));
        QCOMPARE(m_services->terminateRequests, 1);
    }

private:
    VendelSDK::PluginController m_controller;
    TestApplicationServices* m_services = nullptr;
    ManualScheduler* m_scheduler = nullptr;
    RecordingAlertPresenter* m_alerts = nullptr;
    std::unique_ptr<ScriptedHost> m_host;
};

QTEST_GUILESS_MAIN(HandlersTest)
#include "HandlersTest.moc"
