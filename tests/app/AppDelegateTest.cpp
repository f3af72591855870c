// Tests the application's wiring: the handlers, the windows they keep, and later launches.
#include "AppDelegate.h"

#include "App.h"
#include "EditorViewController.h"
#include "MusicScriptApplication.h"
#include "Storyboard.h"

#include "FixedMediaLibrary.h"
#include "TestPlatform.h"

#include <QTest>

using namespace MusicPlugin;
using namespace MusicPlugin::Testing;
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

// The edit scene with a real editor as its content, whose store reads `library`; `shown` counts the windows
// shown, which outlive nothing here: a flow that ends early drops its controller.
class EditorWindowController final : public WindowController
{
public:
    EditorWindowController(MediaLibrary& library, int& shown)
        : m_editor(new EditorViewController(new PlaylistStore(library), this)), m_shown(shown)
    {}

    void showWindow() override { ++m_shown; }
    QObject* contentViewController() const override { return m_editor; }

private:
    EditorViewController* m_editor;
    int& m_shown;
};

void registerEditorScene(MediaLibrary& library, int& shown)
{
    Storyboard::registerScene(
        QStringLiteral("Main"), QStringLiteral("Edit Window Controller"),
        [&library, &shown] { return std::make_unique<EditorWindowController>(library, shown); });
}

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

// The one plugin was made for an earlier test's services; launching finishes in this test's, as it does in a
// process, where both are made once. Nothing has been dispatched yet.
VendelPlugin& pluginLaunchingIn(const TestPlatform& platform)
{
    VendelPlugin& plugin = App::shared().vendelPlugin();
    QObject::connect(platform.services, &ApplicationServices::didFinishLaunching, &plugin,
                     &VendelPlugin::applicationDidFinishLaunching);
    plugin.actionController.didPerformAction = false;
    return plugin;
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

    void delegateRegistersMusicWithTheScriptEngine()
    {
        TestPlatform platform;
        AppDelegate delegate;
        // Whether the plugin supplies "Music" or the system knows it is the platform's business.
        const bool supplied = makePlatformMusicApplication() != nullptr;
        QCOMPARE(platform.engine->registrations,
                 (QList<std::pair<QString, bool>>{{QStringLiteral("Music"), supplied}}));
    }

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
        platform.engine->fallback = QStringLiteral("true");
        VendelPlugin& plugin = pluginLaunchingIn(platform);
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/S"));
        platform.services->finishLaunching();
        QCOMPARE(delegate.runControllers.size(), std::size_t(1));
        // A later identifier-less edit clears the flag; a check run after it would ask the host whether the
        // plugin is installed, tell the user it must be run by the host, and quit.
        QVERIFY(delegate.acceptLaunch(QStringLiteral("vendelplugin://edit")));
        QVERIFY(delegate.acceptLaunch(QStringLiteral("vendelplugin://configure")));
        QTRY_COMPARE(delegate.runControllers.size(), std::size_t(2));
        QCOMPARE(countContaining(platform.engine->sources, QStringLiteral("is plugin installed")), 0);
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
        QVERIFY(plugin.actionController.didPerformAction);
    }

    void urlDeliveredBeforeLaunchingFinishesRunsItsHandlerAndTheStartUpCheckStaysQuiet()
    {
        // As on macOS: the get-URL event of the launch arrives while the application is still launching, and
        // the system says launching has finished only after it.
        TestPlatform platform;
        registerFakeScenes();
        platform.engine->fallback = QStringLiteral("true");
        VendelPlugin& plugin = pluginLaunchingIn(platform);
        AppDelegate delegate;
        Q_EMIT platform.services->getURLEvent(QStringLiteral("vendelplugin://configure"));
        QVERIFY(plugin.actionController.didPerformAction);
        platform.services->finishLaunching();
        QCOMPARE(delegate.runControllers.size(), std::size_t(1));
        QCOMPARE(window(delegate, 0).scene, QStringLiteral("Preferences Window Controller"));
        QCOMPARE(countContaining(platform.engine->sources, QStringLiteral("is plugin installed")), 0);
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void startUpCheckRunsWhenLaunchingFinishesWithoutAHandler()
    {
        // The other side of the test above: in the same set-up, the check does ask and end the process.
        TestPlatform platform;
        platform.engine->fallback = QStringLiteral("true");
        pluginLaunchingIn(platform);
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit"));
        platform.services->finishLaunching();
        QCOMPARE(countContaining(platform.engine->sources, QStringLiteral("is plugin installed")), 1);
        QCOMPARE(platform.services->terminateRequests, 1);
    }

    void editWhoseLibraryCannotBeOpenedStopsBeforeAskingTheHost()
    {
        TestPlatform platform;
        FixedMediaLibrary library(cannotOpenMediaLibraryError(QStringLiteral("No player runs.")));
        int shown = 0;
        registerEditorScene(library, shown);
        platform.engine->fallback = QStringLiteral("{\"action\":1,\"shouldShuffle\":false}");
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/A"));
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.services->terminateRequests, 1);
        QCOMPARE(shown, 0);
        QVERIFY(delegate.runControllers.empty());
        QVERIFY(platform.engine->sources.isEmpty());
        // Nothing was read, so nothing is written back when the application ends.
        platform.services->terminateNow();
        QVERIFY(platform.engine->sources.isEmpty());
    }

    void editWhoseRecordCannotBeReadShowsNoWindowAndWritesNothing()
    {
        TestPlatform platform;
        FixedMediaLibrary library(QStringList{QStringLiteral("Focus")});
        int shown = 0;
        registerEditorScene(library, shown);
        platform.engine->fallback = ScriptErrorRecord{-600, QStringLiteral("Application isn't running."), {}};
        AppDelegate delegate;
        delegate.handleGetURLEvent(QStringLiteral("vendelplugin://edit/A"));
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.first().messageText,
                 QStringLiteral("Could not read action data in Vendel."));
        QCOMPARE(platform.services->terminateRequests, 1);
        QCOMPARE(shown, 0);
        QVERIFY(delegate.runControllers.empty());
        QCOMPARE(platform.engine->sources,
                 QStringList{QStringLiteral("    tell application \"Vendel\" to get config \"A\"")});
        platform.services->terminateNow();
        QCOMPARE(platform.engine->sources.size(), 1);
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
