// Tests the application's wiring: the handlers, the windows they keep, and later launches.
#include "app/AppDelegate.h"

#include "app/App.h"
#include "app/Storyboard.h"

#include "TestPlatform.h"

#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

// A window controller that only remembers whether it was shown.
class FakeWindowController final : public WindowController
{
public:
    explicit FakeWindowController(QString sceneIdentifier) : scene(std::move(sceneIdentifier)) {}

    void showWindow() override { shown = true; }
    QObject* contentViewController() const override { return nullptr; }

    QString scene;
    bool shown = false;
};

void registerFakeScenes()
{
    Storyboard::registerScene(QStringLiteral("Main"), QStringLiteral("Edit Window Controller"), [] {
        return std::make_unique<FakeWindowController>(QStringLiteral("Edit Window Controller"));
    });
    Storyboard::registerScene(
        QStringLiteral("Preferences"), QStringLiteral("Preferences Window Controller"), [] {
            return std::make_unique<FakeWindowController>(QStringLiteral("Preferences Window Controller"));
        });
}

const FakeWindowController& window(const AppDelegate& delegate, std::size_t index)
{
    return static_cast<const FakeWindowController&>(*delegate.runControllers.at(index));
}

int countContaining(const QStringList& sources, const QString& part)
{
    return int(std::count_if(sources.begin(), sources.end(),
                             [&](const QString& source) { return source.contains(part); }));
}

} // namespace

class AppDelegateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Storyboard::clear(); }
    void cleanup() { Storyboard::clear(); }

    void twoEditUrlsOpenTwoWindowsBothKept()
    {
        TestPlatform platform;
        registerFakeScenes();
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/A"));
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/B"));
        QCOMPARE(delegate.runControllers.size(), std::size_t(2));
        QVERIFY(window(delegate, 0).shown);
        QVERIFY(window(delegate, 1).shown);
        QCOMPARE(window(delegate, 0).scene, QStringLiteral("Edit Window Controller"));
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void configureOpensANewPreferencesWindowEachTime()
    {
        TestPlatform platform;
        registerFakeScenes();
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://configure"));
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://configure"));
        QCOMPARE(delegate.runControllers.size(), std::size_t(2));
        QCOMPARE(window(delegate, 1).scene, QStringLiteral("Preferences Window Controller"));
        QVERIFY(window(delegate, 1).shown);
    }

    void editWithoutWindowsTellsTheUserAndTerminates()
    {
        TestPlatform platform;
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/A"));
        QVERIFY(delegate.runControllers.empty());
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.first().messageText, QStringLiteral("The window cannot be opened."));
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void runUrlRunsTheActionAndTerminates()
    {
        TestPlatform platform;
        platform.engine->responder = [](const QString& source) -> ScriptOutcome {
            return source.contains(QStringLiteral("get config"))
                       ? ScriptOutcome(QStringLiteral("{\"action\":1,\"shouldShuffle\":false}"))
                       : ScriptOutcome(ScriptNoResult{});
        };
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://run/R1"));
        QCOMPARE(platform.engine->sources,
                 (QStringList{QStringLiteral("    tell application \"Vendel\" to get config \"R1\""),
                              QStringLiteral("tell application \"Music\" to pause")}));
        QCOMPARE(platform.services->terminateRequests, 1);
        QVERIFY(delegate.runControllers.empty());
    }

    void runUrlWhileAnEditorIsOpenCompletesAndTerminates()
    {
        TestPlatform platform;
        registerFakeScenes();
        platform.engine->fallback = QStringLiteral("{\"action\":1,\"shouldShuffle\":false}");
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/A"));
        QVERIFY(delegate.acceptLaunch(QStringLiteral("vendelplugin://run/R2")));
        QTRY_COMPARE(platform.services->terminateRequests, 1);
        QCOMPARE(countContaining(platform.engine->sources, QStringLiteral("to pause")), 1);
    }

    void laterLaunchIsDispatchedFromTheEventLoopNotDuringTheHandOver()
    {
        TestPlatform platform;
        registerFakeScenes();
        AppDelegate delegate;
        QVERIFY(delegate.acceptLaunch(QStringLiteral("vendelplugin://edit/L")));
        QVERIFY(delegate.runControllers.empty());
        QTRY_COMPARE(delegate.runControllers.size(), std::size_t(1));
    }

    void laterLaunchDoesNotRunTheStartUpCheckAgain()
    {
        TestPlatform platform;
        registerFakeScenes();
        AppDelegate delegate;
        QVERIFY(delegate.acceptLaunch(QStringLiteral("vendelplugin://configure")));
        QTRY_COMPARE(delegate.runControllers.size(), std::size_t(1));
        QCOMPARE(countContaining(platform.engine->sources, QStringLiteral("is plugin installed")), 0);
        QVERIFY(App::shared().vendelPlugin().actionController.didPerformAction);
    }

    void terminatingInstanceRefusesLaterLaunches()
    {
        TestPlatform platform;
        registerFakeScenes();
        AppDelegate delegate;
        platform.services->terminate();
        QVERIFY(!delegate.acceptLaunch(QStringLiteral("vendelplugin://edit/A")));
        QVERIFY(!delegate.acceptLaunch(std::nullopt));
        QTest::qWait(0);
        QVERIFY(delegate.runControllers.empty());
    }

    void instanceWithoutWindowsRefusesWindowLaunchesButTakesRuns()
    {
        TestPlatform platform;
        platform.engine->fallback = QStringLiteral("{\"action\":1,\"shouldShuffle\":false}");
        AppDelegate delegate;
        QVERIFY(!delegate.acceptLaunch(QStringLiteral("vendelplugin://edit/A")));
        QVERIFY(!delegate.acceptLaunch(QStringLiteral("vendelplugin://configure")));
        QVERIFY(delegate.acceptLaunch(QStringLiteral("vendelplugin://run/R3")));
        QTRY_COMPARE(platform.services->terminateRequests, 1);
        QVERIFY(platform.alerts->alerts.isEmpty());
    }

    void handlersOutlivingTheDelegateDoNothing()
    {
        TestPlatform platform;
        registerFakeScenes();
        {
            AppDelegate delegate;
        }
        PluginController& controller = App::shared().vendelPlugin().actionController;
        controller.onEdit(QStringLiteral("A"));
        controller.onConfigure();
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void systemDeliveredUrlIsDispatchedWhileItIsHandled()
    {
        TestPlatform platform;
        registerFakeScenes();
        AppDelegate delegate;
        Q_EMIT platform.services->getURLEvent(QStringLiteral("vendelplugin://edit/G"));
        QCOMPARE(delegate.runControllers.size(), std::size_t(1));
        QVERIFY(window(delegate, 0).shown);
    }

    void systemDeliveredUrlIsMatchedByItsExactText()
    {
        TestPlatform platform;
        registerFakeScenes();
        platform.engine->fallback = QStringLiteral("{\"action\":1,\"shouldShuffle\":false}");
        AppDelegate delegate;
        Q_EMIT platform.services->getURLEvent(QStringLiteral("vendelplugin://Run/X"));
        Q_EMIT platform.services->getURLEvent(QStringLiteral("VENDELPLUGIN://run/X"));
        QVERIFY(platform.engine->sources.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
        Q_EMIT platform.services->getURLEvent(QStringLiteral("vendelplugin://run/X"));
        QCOMPARE(countContaining(platform.engine->sources, QStringLiteral("get config \"X\"")), 1);
        QCOMPARE(platform.services->terminateRequests, 1);
    }
};

QTEST_GUILESS_MAIN(AppDelegateTest)
#include "AppDelegateTest.moc"
