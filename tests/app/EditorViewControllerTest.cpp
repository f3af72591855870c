// Tests the editor's state against a fake host: loading through the setters, the write-through and its
// coalescing, an editor without an action, a playlist that is gone, and the failures.
#include "EditorViewController.h"
#include "App.h"

#include "FakeHost.h"
#include "FixedMediaLibrary.h"
#include "TestPlatform.h"
#include "UserPace.h"

#include <VendelSDK/ConfigCoding.h>

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace MusicPlugin;
using namespace MusicPlugin::Testing;
using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

namespace {

const QString actionID = QStringLiteral("A1");
const QString eveningRecord = QStringLiteral("{\"action\":1,\"name\":\"Evening\",\"shouldShuffle\":true}");

LocalConfig record(LocalConfig::Action action, std::optional<QString> name, bool shouldShuffle)
{
    LocalConfig config;
    config.action = action;
    config.name = std::move(name);
    config.shouldShuffle = shouldShuffle;
    return config;
}

LocalConfig written(const FakeHost::Write& write)
{
    // A text that decodes to nothing would compare equal to no record made here.
    return decodeConfig(write.text, record(LocalConfig::Action::play, QStringLiteral("<undecodable>"), true));
}

} // namespace

class EditorViewControllerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestPlatform> platform;
    std::unique_ptr<FakeHost> host;
    std::unique_ptr<FixedMediaLibrary> library;

    std::unique_ptr<EditorViewController> makeEditor()
    {
        return std::make_unique<EditorViewController>(new PlaylistStore(*library));
    }

    std::unique_ptr<EditorViewController> loadedEditor()
    {
        auto editor = makeEditor();
        editor->setActionIdentifier(actionID);
        editor->loadConfiguration();
        return editor;
    }

private Q_SLOTS:
    void init()
    {
        platform = std::make_unique<TestPlatform>();
        host = std::make_unique<FakeHost>(*platform->engine);
        library = std::make_unique<FixedMediaLibrary>(
            QStringList{QStringLiteral("Morning"), QStringLiteral("Evening"), QStringLiteral("Morning")});
    }

    // Termination lets go of the providers that the editors left behind.
    void cleanup()
    {
        platform->services->terminateNow();
        platform.reset();
        host.reset();
        library.reset();
    }

    void newEditorHoldsTheInitialValuesAndTheLibrarysPlaylists()
    {
        const auto editor = makeEditor();
        QCOMPARE(editor->actionIndex(), 0);
        QCOMPARE(editor->selectedPlaylist(), std::nullopt);
        QVERIFY(!editor->shouldShuffle());
        QCOMPARE(editor->actionIdentifier(), std::nullopt);
        QVERIFY(!editor->configProvider());
        QVERIFY(editor->action == LocalConfig::Action::play);
        QCOMPARE(
            editor->playlistStore()->playlists(),
            (QStringList{QStringLiteral("Morning"), QStringLiteral("Evening"), QStringLiteral("Morning")}));
        QCOMPARE(library->reads, 1);
        QVERIFY(platform->engine->sources.isEmpty());
    }

    void loadingPauseEveningShuffleShowsItAndWritesTheSameRecordOnceAboutASecondLater()
    {
        host->configs.insert(actionID, eveningRecord);
        const auto editor = loadedEditor();
        QCOMPARE(editor->actionIndex(), 1);
        QCOMPARE(editor->selectedPlaylist(), std::optional<QString>(QStringLiteral("Evening")));
        QVERIFY(editor->shouldShuffle());
        QVERIFY(editor->configProvider());

        platform->scheduler->advance(999ms);
        QVERIFY(host->writes.isEmpty());
        platform->scheduler->advance(1ms);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.constFirst().key, actionID);
        QCOMPARE(written(host->writes.constFirst()),
                 record(LocalConfig::Action::pause, QStringLiteral("Evening"), true));
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
    }

    void loadingAssignsTheOperationThenThePlaylistThenShuffle()
    {
        host->configs.insert(actionID, eveningRecord);
        auto editor = makeEditor();
        editor->setActionIdentifier(actionID);
        QStringList order;
        connect(editor.get(), &EditorViewController::actionIndexChanged, this,
                [&] { order.append(QStringLiteral("actionIndex")); });
        connect(editor.get(), &EditorViewController::selectedPlaylistChanged, this,
                [&] { order.append(QStringLiteral("selectedPlaylist")); });
        connect(editor.get(), &EditorViewController::shouldShuffleChanged, this,
                [&] { order.append(QStringLiteral("shouldShuffle")); });
        editor->loadConfiguration();
        QCOMPARE(order, (QStringList{QStringLiteral("actionIndex"), QStringLiteral("selectedPlaylist"),
                                     QStringLiteral("shouldShuffle")}));
        QCOMPARE(platform->engine->sources,
                 QStringList{QStringLiteral("    tell application \"Vendel\" to get config \"A1\"")});
    }

    void operationIndexOtherThanOneIsKeptOnTheEditorButRecordsPlay_data()
    {
        QTest::addColumn<qint64>("index");
        QTest::newRow("5") << qint64(5);
        QTest::newRow("-1") << qint64(-1);
        QTest::newRow("0") << qint64(0);
    }

    void operationIndexOtherThanOneIsKeptOnTheEditorButRecordsPlay()
    {
        QFETCH(qint64, index);
        host->configs.insert(actionID, eveningRecord);
        const auto editor = loadedEditor();
        runAtUserPace(*platform->scheduler, {[&] { editor->setActionIndex(index); }});
        QCOMPARE(editor->actionIndex(), index);
        QVERIFY(editor->configProvider()->config.action == LocalConfig::Action::play);
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(written(host->writes.constFirst()),
                 record(LocalConfig::Action::play, QStringLiteral("Evening"), true));
    }

    void fiveQuickChangesWriteOnceWithAllFiveApplied()
    {
        const auto editor = loadedEditor();
        // The write of the loaded record comes first; the changes come after it.
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(written(host->writes.constFirst()), record(LocalConfig::Action::play, std::nullopt, false));

        runAtUserPace(*platform->scheduler, {[&] { editor->setActionIndex(1); },
                                             [&] { editor->setSelectedPlaylist(QStringLiteral("Morning")); },
                                             [&] { editor->setShouldShuffle(true); },
                                             [&] { editor->setSelectedPlaylist(QStringLiteral("Evening")); },
                                             [&] { editor->setActionIndex(0); }});
        QCOMPARE(host->writes.size(), 1);

        platform->scheduler->advance(999ms);
        QCOMPARE(host->writes.size(), 1);
        platform->scheduler->advance(1ms);
        QCOMPARE(host->writes.size(), 2);
        QCOMPARE(written(host->writes.at(1)),
                 record(LocalConfig::Action::play, QStringLiteral("Evening"), true));
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 2);
    }

    void withoutAnActionIdentifierChangesNeverReachTheHost()
    {
        const auto editor = makeEditor();
        editor->loadConfiguration();
        editor->setActionIndex(1);
        editor->setSelectedPlaylist(QStringLiteral("Evening"));
        editor->setShouldShuffle(true);
        QCOMPARE(editor->actionIndex(), 1);
        QCOMPARE(editor->selectedPlaylist(), std::optional<QString>(QStringLiteral("Evening")));
        QVERIFY(editor->shouldShuffle());
        QVERIFY(!editor->configProvider());
        platform->scheduler->advance(60s);
        QVERIFY(platform->engine->sources.isEmpty());
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void playlistThatIsGoneIsShownAndWrittenBackUnchanged()
    {
        host->configs.insert(actionID,
                             QStringLiteral("{\"action\":0,\"name\":\"Gone\",\"shouldShuffle\":false}"));
        const auto editor = loadedEditor();
        QVERIFY(!editor->playlistStore()->playlists().contains(QStringLiteral("Gone")));
        QCOMPARE(editor->selectedPlaylist(), std::optional<QString>(QStringLiteral("Gone")));
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.constFirst().text,
                 QStringLiteral("{\"action\":0,\"name\":\"Gone\",\"shouldShuffle\":false}"));
        QVERIFY(platform->alerts->alerts.isEmpty());
    }

    void recordThatCannotBeDecodedShowsTheDefaultAndWritesIt()
    {
        host->configs.insert(actionID, QStringLiteral("{\"action\":\"pause\"}"));
        const auto editor = makeEditor();
        editor->setShouldShuffle(true);
        editor->setActionIdentifier(actionID);
        editor->loadConfiguration();
        QCOMPARE(editor->actionIndex(), 0);
        QCOMPARE(editor->selectedPlaylist(), std::nullopt);
        QVERIFY(!editor->shouldShuffle());
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.constFirst().text, QStringLiteral("{\"action\":0,\"shouldShuffle\":false}"));
    }

    void hostThatCannotBeAskedAlertsTerminatesAndChangesNothing()
    {
        host->failReads = true;
        const auto editor = makeEditor();
        editor->setActionIndex(1);
        editor->setShouldShuffle(true);
        editor->setActionIdentifier(actionID);
        editor->loadConfiguration();
        QCOMPARE(platform->alerts->alerts.size(), 1);
        QCOMPARE(platform->alerts->alerts.constFirst().messageText,
                 QStringLiteral("Could not read action data in Vendel."));
        QCOMPARE(platform->services->terminateRequests, 1);
        QVERIFY(!editor->configProvider());
        QCOMPARE(editor->actionIndex(), 1);
        QVERIFY(editor->shouldShuffle());
    }

    void propertiesAreReachableByNameAndNotifyOnlyOnChange()
    {
        const auto editor = makeEditor();
        QSignalSpy indexChanged(editor.get(), &EditorViewController::actionIndexChanged);
        QSignalSpy playlistChanged(editor.get(), &EditorViewController::selectedPlaylistChanged);
        QSignalSpy shuffleChanged(editor.get(), &EditorViewController::shouldShuffleChanged);
        QVERIFY(editor->setProperty("actionIndex", qint64(1)));
        QVERIFY(editor->setProperty("actionIndex", qint64(1)));
        QVERIFY(editor->setProperty("selectedPlaylist", QStringLiteral("Evening")));
        QVERIFY(editor->setProperty("shouldShuffle", true));
        QCOMPARE(editor->property("actionIndex").toLongLong(), 1);
        QCOMPARE(editor->property("selectedPlaylist").toString(), QStringLiteral("Evening"));
        QVERIFY(editor->property("shouldShuffle").toBool());
        QCOMPARE(editor->property("playlistStore").value<PlaylistStore*>(), editor->playlistStore());
        QCOMPARE(indexChanged.size(), 1);
        QCOMPARE(playlistChanged.size(), 1);
        QCOMPARE(shuffleChanged.size(), 1);

        // A null value is no playlist; the empty name is a name.
        QVERIFY(editor->setProperty("selectedPlaylist", QVariant()));
        QCOMPARE(editor->selectedPlaylist(), std::nullopt);
        QVERIFY(editor->property("selectedPlaylist").isNull());
        editor->setSelectedPlaylist(QString());
        QCOMPARE(editor->selectedPlaylist(), std::optional<QString>(QString()));
        QCOMPARE(playlistChanged.size(), 3);
    }

    void replacingThePlaylistStoreDropsTheOldOneAndWritesNothing()
    {
        host->configs.insert(actionID, eveningRecord);
        const auto editor = loadedEditor();
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        const QPointer<PlaylistStore> previous = editor->playlistStore();
        QSignalSpy storeChanged(editor.get(), &EditorViewController::playlistStoreChanged);
        FixedMediaLibrary other(QStringList{QStringLiteral("Other")});
        auto* replacement = new PlaylistStore(other);
        editor->setPlaylistStore(replacement);
        QCOMPARE(storeChanged.size(), 1);
        QCOMPARE(editor->playlistStore(), replacement);
        QCOMPARE(replacement->parent(), editor.get());
        QVERIFY(previous.isNull());
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 1);
    }

    void showPreferencesCallsTheConfigureHandler()
    {
        int configures = 0;
        PluginController& controller = App::shared().vendelPlugin().actionController;
        const auto previous = std::exchange(controller.onConfigure, [&] { ++configures; });
        const auto editor = makeEditor();
        QVERIFY(QMetaObject::invokeMethod(editor.get(), "showPreferences"));
        controller.onConfigure = previous;
        QCOMPARE(configures, 1);
    }
};

QTEST_GUILESS_MAIN(EditorViewControllerTest)
#include "EditorViewControllerTest.moc"
