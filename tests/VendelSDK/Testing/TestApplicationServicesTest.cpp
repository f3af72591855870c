// Tests the application services that a test drives: a launch URL reaches the handlers, finishing launching
// runs the start-up check, and termination runs the last write, while the test process goes on.
#include <VendelSDK/Testing/TestApplicationServices.h>

#include <VendelSDK/Testing/ManualScheduler.h>
#include <VendelSDK/Testing/RecordingAlertPresenter.h>
#include <VendelSDK/Testing/ScriptedHost.h>

#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelPlugin.h>

#include <QJsonObject>
#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString bundlePath = QStringLiteral("/plugins/kit-test");

struct Note
{
    QString text;

    QJsonObject toJson() const { return {{QStringLiteral("text"), text}}; }
    static std::optional<Note> fromJson(const QJsonObject& object)
    {
        if (!object.value(QStringLiteral("text")).isString()) {
            return std::nullopt;
        }
        return Note{object.value(QStringLiteral("text")).toString()};
    }
};

} // namespace

class TestApplicationServicesTest : public QObject
{
    Q_OBJECT

    TestApplicationServices* services = nullptr;
    RecordingAlertPresenter* alerts = nullptr;
    std::unique_ptr<ScriptedHost> host;

private Q_SLOTS:
    void init()
    {
        Platform::reset();
        Platform::setMainBundle(Bundle(bundlePath, QStringLiteral("org.example.kit-test"), {}));
        services = &TestApplicationServices::install();
        alerts = &RecordingAlertPresenter::install();
        ManualScheduler::install();
        host = std::make_unique<ScriptedHost>();
        host->install();
    }

    void cleanup()
    {
        host.reset();
        Platform::reset();
    }

    void deliveredLaunchUrlReachesTheHandlerThatThePluginConnected()
    {
        VendelPlugin plugin;
        QStringList edited;
        plugin.actionController.onEdit = [&](const QString& actionID) { edited.append(actionID); };
        connect(services, &ApplicationServices::getURLEvent, &plugin,
                [&](const QString& url) { plugin.actionController.handle(url); });
        services->deliverLaunchURL(QStringLiteral("vendelplugin://edit/X%201"));
        QCOMPARE(edited, QStringList{QStringLiteral("X 1")});
        QVERIFY(plugin.actionController.didPerformAction);
    }

    void finishingLaunchingRunsTheStartUpCheckAndTheProcessGoesOn()
    {
        VendelPlugin plugin(
            {.askToInstallPluginIfNotInstalled = true, .alertUserThatPluginMustBeRunByVendelAndQuit = true});
        host->expectIsPluginInstalled(bundlePath, ScriptedHost::text(QStringLiteral("true")));
        services->finishLaunching();
        QCOMPARE(host->remaining(), 0);
        QCOMPARE(alerts->alerts.size(), 1);
        QCOMPARE(alerts->alerts.first().messageText,
                 QStringLiteral("This plugin must be run by Vendel app."));
        QCOMPARE(services->terminateRequests, 1);
        QVERIFY(services->terminationRequested());
    }

    void startUpCheckAfterALaunchUrlThatRanAHandlerAsksTheHostNothing()
    {
        VendelPlugin plugin(
            {.askToInstallPluginIfNotInstalled = true, .alertUserThatPluginMustBeRunByVendelAndQuit = true});
        plugin.actionController.onRun = [](const QString&) {};
        connect(services, &ApplicationServices::getURLEvent, &plugin,
                [&](const QString& url) { plugin.actionController.handle(url); });
        services->deliverLaunchURL(QStringLiteral("vendelplugin://run/A"));
        services->finishLaunching();
        QVERIFY(host->commands().isEmpty());
        QCOMPARE(services->terminateRequests, 0);
    }

    void terminationRunsTheLastWriteAndTheProcessGoesOn()
    {
        host->expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(QStringLiteral("{\"text\":\"old\"}")))
            .expectSetConfig(QStringLiteral("{\"text\":\"new\"}"), QStringLiteral("A1"));
        auto provider = LocalConfigProvider<Note>::create(QStringLiteral("A1"), Note{});
        QVERIFY(provider);
        provider->config.text = QStringLiteral("new");
        services->terminateNow();
        QCOMPARE(host->remaining(), 0);
        QCOMPARE(host->commands().size(), 2);
        // Termination let go of the provider's closures: the owner's reference is now the only one.
        QCOMPARE(provider.use_count(), 1);
    }

    void terminateIsCountedAndEndsNothing()
    {
        QVERIFY(!services->terminationRequested());
        Platform::applicationServices().terminate();
        Platform::applicationServices().terminate();
        QCOMPARE(services->terminateRequests, 2);
    }

    void windowListComesFromTheSourceWhenOneIsSet()
    {
        services->windowList = {WindowState{true, false}};
        QCOMPARE(services->windows().size(), 1);
        services->windowSource = [] { return QList<WindowState>{{false, true}, {true, false}}; };
        QCOMPARE(services->windows().size(), 2);
        QVERIFY(services->windows().first().miniaturised);
    }
};

QTEST_GUILESS_MAIN(TestApplicationServicesTest)
#include "TestApplicationServicesTest.moc"
