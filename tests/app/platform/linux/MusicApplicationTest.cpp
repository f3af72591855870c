// Tests "Music" as scripts address it: which player the environment picks, and what each command does to it.
#include "MusicApplication.h"
#include "MpdMusicPlayer.h"
#include "MpdTestServer.h"
#include "MprisMusicPlayer.h"
#include "MusicAppController.h"
#include <VendelSDK/Testing/RecordingAlertPresenter.h>

#include "TellScriptEngine.h"
#include "TestMprisPlayerProcess.h"
#include <VendelSDK/Platform.h>

#include "MusicScriptApplication.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <QTest>

#include <mpd/client.h>

using namespace MusicPlugin;
using namespace VendelSDK;
using VendelSDK::Testing::MpdTestServer;
using VendelSDK::Testing::RecordingAlertPresenter;
using VendelSDK::Testing::TestMprisPlayerProcess;

namespace {

const QString shuffleOnScript = QStringLiteral("tell application \"Music\" to set shuffle enabled to true");
const QString shuffleOffScript = QStringLiteral("tell application \"Music\" to set shuffle enabled to false");
const QString playFocusScript = QStringLiteral("tell application \"Music\" to play playlist \"Focus\"");
const QString pauseScript = QStringLiteral("tell application \"Music\" to pause");

const QStringList focusSongs{QStringLiteral("01.wav"), QStringLiteral("02.wav"), QStringLiteral("03.wav")};

ScriptErrorRecord notRunning()
{
    return {-600, QStringLiteral("Application isn’t running."), QStringLiteral("Application isn’t running.")};
}

// The platform's engine, as the plugin's process makes it.
std::unique_ptr<ScriptEngine> musicEngine()
{
    auto engine = makePlatformScriptEngine();
    engine->registerApplication(QStringLiteral("Music"), makePlatformMusicApplication());
    return engine;
}

TestMprisPlayerProcess::Options mprisPlayer(const char* name, const char* status = "Stopped")
{
    TestMprisPlayerProcess::Options options;
    options.name = QString::fromLatin1(name);
    options.playbackStatus = QString::fromLatin1(status);
    options.playlists = {QStringLiteral("Evening"), QStringLiteral("Focus"), QStringLiteral("Only here")};
    return options;
}

} // namespace

class MusicApplicationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const QString& song : focusSongs) {
            m_mpd.addSong(song);
        }
        m_mpd.addPlaylist(QStringLiteral("Focus"), focusSongs);
        QVERIFY2(m_mpd.start(), qPrintable(m_mpd.errorString()));
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "no session bus");
    }

    void init()
    {
        QVERIFY(m_mpd.reset());
        qunsetenv("VENDEL_MUSIC");
        qunsetenv("VENDEL_MUSIC_PLAYER");
        qunsetenv("MPD_PORT");
        // Never the machine's own MPD: every test says which one it means.
        qputenv("MPD_HOST", m_nowhere.filePath(QStringLiteral("no-socket")).toUtf8());
    }

    void cleanup()
    {
        Platform::reset();
        m_mpris.reset();
    }

    void dictionaryHoldsShuffleWithABooleanPlayWithANameAndPause()
    {
        QCOMPARE(makePlatformMusicApplication()->dictionary(),
                 (QStringList{QStringLiteral("set shuffle enabled to %b"), QStringLiteral("play playlist %s"),
                              QStringLiteral("pause")}));
    }

    void withoutRegistrationThePlatformEngineAnswersMusicAsAnyUnknownApplication()
    {
        useMpd();
        const auto engine = makePlatformScriptEngine();
        auto unknown = std::get<ScriptErrorRecord>(
            engine->execute(QStringLiteral("tell application \"Nowhere\" to set shuffle enabled to true")));
        QCOMPARE(unknown.number, TellScriptEngine::applicationNotFound);

        const QString message = unknown.message->replace(QStringLiteral("Nowhere"), QStringLiteral("Music"));
        QCOMPARE(engine->execute(shuffleOnScript),
                 ScriptOutcome(ScriptErrorRecord{TellScriptEngine::applicationNotFound, message, message}));
        QCOMPARE(m_mpd.status()->random, false);
    }

    void registeredMusicReachesMpdThroughThePlatformEngine()
    {
        useMpd();
        const auto engine = makePlatformScriptEngine();
        engine->registerApplication(QStringLiteral("Music"), makePlatformMusicApplication());

        QCOMPARE(engine->execute(shuffleOnScript), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(m_mpd.status()->random, true);
    }

    void commandTextsDriveMpdWhenItCanBeReached()
    {
        useMpd();
        startMpris(mprisPlayer("waiting"));
        const auto engine = musicEngine();

        QCOMPARE(engine->execute(shuffleOnScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpd.status()->random, true);
        QCOMPARE(engine->execute(shuffleOffScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpd.status()->random, false);

        QCOMPARE(engine->execute(playFocusScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpd.status()->state, QStringLiteral("play"));
        QCOMPARE(m_mpd.status()->queueLength, 3U);

        QCOMPARE(engine->execute(pauseScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpd.status()->state, QStringLiteral("pause"));

        QCOMPARE(m_mpris->calls(), QStringList());
    }

    void commandTextsDriveAnMprisPlayerWhenMpdCannotBeReached()
    {
        startMpris(mprisPlayer("fallback"));
        const auto engine = musicEngine();

        QCOMPARE(engine->execute(shuffleOnScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpris->shuffle(), true);
        QCOMPARE(engine->execute(playFocusScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpris->playbackStatus(), QStringLiteral("Playing"));
        QCOMPARE(engine->execute(pauseScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpris->playbackStatus(), QStringLiteral("Paused"));

        QCOMPARE(
            m_mpris->calls(),
            (QStringList{QStringLiteral("Shuffle=true"), QStringLiteral("GetPlaylists 0 3 UserDefined false"),
                         QStringLiteral("ActivatePlaylist ") + TestMprisPlayerProcess::playlistId(1),
                         QStringLiteral("Pause")}));
    }

    void aFailureOfAReachableMpdIsTheAnswerAndNoOtherPlayerIsTried()
    {
        useMpd();
        startMpris(mprisPlayer("fallback"));

        const auto outcome =
            musicEngine()->execute(QStringLiteral("tell application \"Music\" to play playlist "
                                                  "\"Only here\""));

        QCOMPARE(outcome, ScriptOutcome(ScriptErrorRecord{
                              -1728, QStringLiteral("Music got an error: Can’t get playlist \"Only here\"."),
                              QStringLiteral("Can’t get playlist \"Only here\".")}));
        QCOMPARE(m_mpris->calls(), QStringList());
    }

    void vendelMusicMprisUsesMprisEvenWhenMpdCanBeReached()
    {
        useMpd();
        qputenv("VENDEL_MUSIC", "mpris");
        startMpris(mprisPlayer("chosen"));

        QCOMPARE(musicEngine()->execute(shuffleOnScript), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(m_mpris->shuffle(), true);
        QCOMPARE(m_mpd.status()->random, false);
    }

    void vendelMusicMpdNeverFallsBackToMpris()
    {
        qputenv("VENDEL_MUSIC", "mpd");
        startMpris(mprisPlayer("ignored"));

        QCOMPARE(musicEngine()->execute(shuffleOnScript), ScriptOutcome(notRunning()));

        QCOMPARE(m_mpris->calls(), QStringList());
    }

    void vendelMusicMpdUsesMpd()
    {
        useMpd();
        qputenv("VENDEL_MUSIC", "mpd");

        QCOMPARE(musicEngine()->execute(shuffleOnScript), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(m_mpd.status()->random, true);
    }

    void anUnknownVendelMusicFailsEveryCommandAndTouchesNoPlayer()
    {
        useMpd();
        qputenv("VENDEL_MUSIC", "jukebox");
        startMpris(mprisPlayer("ignored"));
        const auto engine = musicEngine();

        const QString brief = QStringLiteral("VENDEL_MUSIC must be “mpd” or “mpris”, not “jukebox”.");
        const ScriptErrorRecord expected{-2700, QStringLiteral("Music got an error: ") + brief, brief};
        QCOMPARE(engine->execute(shuffleOnScript), ScriptOutcome(expected));
        QCOMPARE(engine->execute(playFocusScript), ScriptOutcome(expected));
        QCOMPARE(engine->execute(pauseScript), ScriptOutcome(expected));

        QCOMPARE(m_mpd.status()->random, false);
        QCOMPARE(m_mpd.status()->queueLength, 0U);
        QCOMPARE(m_mpris->calls(), QStringList());
    }

    void withNeitherPlayerReachableEveryCommandFailsWithApplicationNotRunning()
    {
        const auto engine = musicEngine();

        QCOMPARE(engine->execute(shuffleOnScript), ScriptOutcome(notRunning()));
        QCOMPARE(engine->execute(playFocusScript), ScriptOutcome(notRunning()));
        QCOMPARE(engine->execute(pauseScript), ScriptOutcome(notRunning()));
    }

    void vendelMusicPlayerPicksTheMprisPlayer()
    {
        qputenv("VENDEL_MUSIC_PLAYER", "picked");
        TestMprisPlayerProcess playing(mprisPlayer("busy", "Playing"));
        QVERIFY(playing.start());
        startMpris(mprisPlayer("picked"));

        QCOMPARE(musicEngine()->execute(shuffleOnScript), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(m_mpris->calls(), QStringList{QStringLiteral("Shuffle=true")});
        QCOMPARE(playing.calls(), QStringList());
    }

    void aPlayerStartedAfterTheEngineIsFound()
    {
        const auto engine = musicEngine();
        QCOMPARE(engine->execute(pauseScript), ScriptOutcome(notRunning()));

        startMpris(mprisPlayer("late", "Playing"));

        QCOMPARE(engine->execute(pauseScript), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_mpris->playbackStatus(), QStringLiteral("Paused"));
    }

    // What the user sees when the playlist goes between the player's check and its load: the load-failure
    // alert, after a shuffle that did take effect, with the queue and the current song as they were.
    void playlistRemovedOnMpdBeforeItsLoadKeepsTheQueueAndShowsTheLoadFailure()
    {
        m_mpd.addPlaylist(QStringLiteral("Gone"), {focusSongs.first()});
        QVERIFY(m_mpd.playStoredPlaylist(QStringLiteral("Focus")));
        {
            const auto connection = m_mpd.connect();
            QVERIFY(connection && mpd_run_play_pos(connection.get(), 1) &&
                    mpd_run_pause(connection.get(), true));
        }
        const auto before = m_mpd.status();
        QVERIFY(before);
        auto mpd = std::make_unique<MpdMusicPlayer>(MpdAddress{m_mpd.socketPath().toUtf8(), 0});
        mpd->setBeforeLoad([this] {
            const auto connection = m_mpd.connect();
            QVERIFY(connection && mpd_run_rm(connection.get(), "Gone"));
        });
        RecordingAlertPresenter& alerts = useMusic(std::move(mpd));

        MusicAppController().play(QStringLiteral("Gone"), true);

        QCOMPARE(alerts.alerts.size(), 1);
        QCOMPARE(alerts.alerts.first().messageText, QStringLiteral("Can’t get playlist \"Gone\"."));
        QCOMPARE(alerts.alerts.first().informativeText,
                 QStringLiteral("Music got an error: Can’t get playlist \"Gone\"."));
        const auto after = m_mpd.status();
        QVERIFY(after);
        QVERIFY(after->random);
        QCOMPARE(after->state, QStringLiteral("pause"));
        QCOMPARE(after->songPosition, 1);
        QCOMPARE(after->songId, before->songId);
        QCOMPARE(m_mpd.queue(), focusSongs);
    }

    void playlistRemovedInAnMprisPlayerBeforeItsActivationKeepsThePlayerAndShowsTheLoadFailure()
    {
        auto options = mprisPlayer("vanishing", "Paused");
        options.activePlaylist = 0;
        options.track = 1;
        options.vanishingPlaylist = QStringLiteral("Focus");
        startMpris(options);
        RecordingAlertPresenter& alerts =
            useMusic(std::make_unique<MprisMusicPlayer>(SdBus::Bus::session(), QStringLiteral("vanishing")));

        MusicAppController().play(QStringLiteral("Focus"), true);

        QCOMPARE(alerts.alerts.size(), 1);
        QCOMPARE(alerts.alerts.first().messageText, QStringLiteral("Can’t get playlist \"Focus\"."));
        QCOMPARE(alerts.alerts.first().informativeText,
                 QStringLiteral("Music got an error: Can’t get playlist \"Focus\"."));
        QVERIFY(m_mpris->shuffle());
        QCOMPARE(m_mpris->playbackStatus(), QStringLiteral("Paused"));
        QCOMPARE(m_mpris->activePlaylist(), TestMprisPlayerProcess::playlistId(0));
        QCOMPARE(m_mpris->track(), 1);
    }

private:
    void useMpd() { qputenv("MPD_HOST", m_mpd.socketPath().toUtf8()); }

    // "Music" as the platform's engine runs it, over `player`, and alerts that the test reads afterwards.
    RecordingAlertPresenter& useMusic(std::unique_ptr<MusicPlayer> player)
    {
        std::unique_ptr<ScriptEngine> engine = makePlatformScriptEngine();
        engine->registerApplication(QStringLiteral("Music"),
                                    std::make_unique<MusicApplication>(std::move(player)));
        Platform::setScriptEngine(std::move(engine));
        auto alerts = std::make_unique<RecordingAlertPresenter>();
        RecordingAlertPresenter& recorded = *alerts;
        Platform::setAlertPresenter(std::move(alerts));
        return recorded;
    }

    void startMpris(TestMprisPlayerProcess::Options options)
    {
        m_mpris = std::make_unique<TestMprisPlayerProcess>(std::move(options));
        QVERIFY(m_mpris->start());
    }

    MpdTestServer m_mpd;
    QTemporaryDir m_nowhere;
    std::unique_ptr<TestMprisPlayerProcess> m_mpris;
};

QTEST_GUILESS_MAIN(MusicApplicationTest)
#include "MusicApplicationTest.moc"
