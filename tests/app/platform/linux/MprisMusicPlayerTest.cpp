// Tests the MPRIS player against test players on a private session bus: which player is chosen, and what it
// is told.
#include "MprisMusicPlayer.h"
#include "TestMprisPlayerProcess.h"

#include <QDBusConnection>
#include <QTest>

#include <memory>

using namespace MusicPlugin;
using namespace VendelSDK;
using VendelSDK::Testing::TestMprisPlayerProcess;

namespace {

ScriptErrorRecord notRunning()
{
    return {-600, QStringLiteral("Application isn’t running."), QStringLiteral("Application isn’t running.")};
}

TestMprisPlayerProcess::Options player(const char* name, const char* status = "Stopped")
{
    TestMprisPlayerProcess::Options options;
    options.name = QString::fromLatin1(name);
    options.playbackStatus = QString::fromLatin1(status);
    options.playlists = {QStringLiteral("Focus"), QStringLiteral("Mix"), QStringLiteral("Evening"),
                         QStringLiteral("Mix")};
    return options;
}

// A bound for tests whose player is meant to fail: long enough for a player that would answer at once,
// short enough that the test does not wait on it for long. Tests that expect playback keep the default.
constexpr std::chrono::milliseconds failingBound{500};

ScriptErrorRecord timedOut()
{
    return {-1712, QStringLiteral("Music got an error: AppleEvent timed out."),
            QStringLiteral("AppleEvent timed out.")};
}

TestMprisPlayerProcess::Options quirky(const char* name, const QString& quirk, const char* status = "Stopped")
{
    auto options = player(name, status);
    if (!quirk.isEmpty()) {
        options.quirks = {quirk};
    }
    return options;
}

QString chosen(const MprisMusicPlayer& music)
{
    const auto choice = music.choosePlayer();
    return std::holds_alternative<QString>(choice) ? std::get<QString>(choice) : QStringLiteral("(none)");
}

} // namespace

class MprisMusicPlayerTest : public QObject
{
    Q_OBJECT

private:
    TestMprisPlayerProcess& start(TestMprisPlayerProcess::Options options)
    {
        m_players.push_back(std::make_unique<TestMprisPlayerProcess>(std::move(options)));
        if (!m_players.back()->start()) {
            qWarning("the test player %s did not start", qPrintable(m_players.back()->busName()));
        }
        return *m_players.back();
    }

    std::vector<std::unique_ptr<TestMprisPlayerProcess>> m_players;

private Q_SLOTS:
    void initTestCase() { QVERIFY2(QDBusConnection::sessionBus().isConnected(), "no session bus"); }

    void cleanup() { m_players.clear(); }

    void withoutAnyPlayerEveryCommandFailsWithApplicationNotRunning()
    {
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.setShuffle(true), ScriptOutcome(notRunning()));
        QCOMPARE(music.playPlaylist(QStringLiteral("Focus")), ScriptOutcome(notRunning()));
        QCOMPARE(music.pause(), ScriptOutcome(notRunning()));
        QCOMPARE(music.playlistNames(), PlaylistNames(notRunning()));
    }

    void withoutABusEveryCommandFailsWithApplicationNotRunning()
    {
        MprisMusicPlayer music((SdBus::Bus()));

        QCOMPARE(music.pause(), ScriptOutcome(notRunning()));
    }

    void theOnlyPlayerIsChosenWhateverItsStatus()
    {
        auto& only = start(player("only", "Stopped"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(chosen(music), only.busName());
    }

    void aPlayingPlayerIsPreferredToPausedAndStoppedOnes()
    {
        start(player("a", "Paused"));
        auto& playing = start(player("b", "Playing"));
        start(player("c", "Stopped"));
        MprisMusicPlayer music(SdBus::Bus::session());
        QCOMPARE(chosen(music), QStringLiteral("org.mpris.MediaPlayer2.b"));

        QCOMPARE(music.pause(), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(playing.calls(), QStringList{QStringLiteral("Pause")});
        QCOMPARE(playing.playbackStatus(), QStringLiteral("Paused"));
        QCOMPARE(m_players.at(0)->calls(), QStringList());
        QCOMPARE(m_players.at(2)->calls(), QStringList());
    }

    void aPausedPlayerIsPreferredWhenNoneIsPlaying()
    {
        start(player("a", "Stopped"));
        start(player("b", "Paused"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(chosen(music), QStringLiteral("org.mpris.MediaPlayer2.b"));
    }

    void amongEquallyIdlePlayersTheFirstByNameIsChosen()
    {
        start(player("zeta", "Stopped"));
        start(player("alpha.instance7", "Stopped"));
        start(player("beta", "Stopped"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(chosen(music), QStringLiteral("org.mpris.MediaPlayer2.alpha.instance7"));
    }

    void namesThatOnlyResembleThePrefixAreNoPlayers()
    {
        const QString resembling = QStringLiteral("org.mpris.MediaPlayer2Extra");
        QVERIFY(QDBusConnection::sessionBus().registerService(resembling));
        MprisMusicPlayer music(SdBus::Bus::session());

        const auto outcome = music.pause();

        QVERIFY(QDBusConnection::sessionBus().unregisterService(resembling));
        QCOMPARE(outcome, ScriptOutcome(notRunning()));
    }

    void theRequestedPlayerIsChosenEvenWhenAnotherIsPlaying_data()
    {
        QTest::addColumn<QString>("requested");
        QTest::addColumn<QString>("expected");
        QTest::newRow("part after the prefix")
            << QStringLiteral("quiet") << QStringLiteral("org.mpris.MediaPlayer2.quiet");
        QTest::newRow("full bus name") << QStringLiteral("org.mpris.MediaPlayer2.quiet")
                                       << QStringLiteral("org.mpris.MediaPlayer2.quiet");
        QTest::newRow("an instance of it")
            << QStringLiteral("other") << QStringLiteral("org.mpris.MediaPlayer2.other.instance42");
        QTest::newRow("an exact instance") << QStringLiteral("other.instance42")
                                           << QStringLiteral("org.mpris.MediaPlayer2.other.instance42");
    }

    void theRequestedPlayerIsChosenEvenWhenAnotherIsPlaying()
    {
        QFETCH(QString, requested);
        QFETCH(QString, expected);
        start(player("loud", "Playing"));
        start(player("quiet", "Stopped"));
        start(player("quieter", "Stopped"));
        start(player("other.instance42", "Stopped"));
        MprisMusicPlayer music(SdBus::Bus::session(), requested);

        QCOMPARE(chosen(music), expected);
    }

    void aRequestedPlayerThatIsNotRunningFailsWithApplicationNotRunning()
    {
        auto& playing = start(player("loud", "Playing"));
        MprisMusicPlayer music(SdBus::Bus::session(), QStringLiteral("lou"));

        QCOMPARE(music.pause(), ScriptOutcome(notRunning()));
        QCOMPARE(playing.calls(), QStringList());
    }

    void setShuffleSetsTheShuffleProperty()
    {
        auto& only = start(player("only"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.setShuffle(true), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(only.shuffle(), true);

        QCOMPARE(music.setShuffle(false), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(only.shuffle(), false);
        QCOMPARE(only.calls(),
                 (QStringList{QStringLiteral("Shuffle=true"), QStringLiteral("Shuffle=false")}));
    }

    void playPlaylistActivatesThePlaylistOfThatName()
    {
        auto& only = start(player("only"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playPlaylist(QStringLiteral("Evening")), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(only.calls().last(),
                 QStringLiteral("ActivatePlaylist ") + TestMprisPlayerProcess::playlistId(2));
        QCOMPARE(only.playbackStatus(), QStringLiteral("Playing"));
    }

    void playPlaylistWithADuplicateNameActivatesTheFirstInThePlayersOrder()
    {
        auto& only = start(player("only"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playPlaylist(QStringLiteral("Mix")), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(only.calls().last(),
                 QStringLiteral("ActivatePlaylist ") + TestMprisPlayerProcess::playlistId(1));
    }

    void missingPlaylistFailsAndActivatesNothing()
    {
        auto& only = start(player("only", "Paused"));
        MprisMusicPlayer music(SdBus::Bus::session());

        const auto outcome = music.playPlaylist(QStringLiteral("mix"));

        const ScriptErrorRecord expected{-1728,
                                         QStringLiteral("Music got an error: Can’t get playlist \"mix\"."),
                                         QStringLiteral("Can’t get playlist \"mix\".")};
        QCOMPARE(outcome, ScriptOutcome(expected));
        for (const QString& call : only.calls()) {
            QVERIFY2(!call.startsWith(u"ActivatePlaylist"), qPrintable(call));
        }
        QCOMPARE(only.playbackStatus(), QStringLiteral("Paused"));
    }

    void aPlayerWithoutPlaylistsCannotPlayOneAndSaysSo()
    {
        auto options = player("plain");
        options.servesPlaylists = false;
        auto& plain = start(options);
        MprisMusicPlayer music(SdBus::Bus::session());

        const auto outcome = music.playPlaylist(QStringLiteral("Focus"));

        const QString brief =
            QStringLiteral("The player “org.mpris.MediaPlayer2.plain” cannot play a playlist: it "
                           "has no org.mpris.MediaPlayer2.Playlists interface.");
        const ScriptErrorRecord expected{-1708, QStringLiteral("Music got an error: ") + brief, brief};
        QCOMPARE(outcome, ScriptOutcome(expected));
        QCOMPARE(music.playlistNames(), PlaylistNames(expected));
        QCOMPARE(plain.playbackStatus(), QStringLiteral("Stopped"));
        // Shuffle and pause need no playlists.
        QCOMPARE(music.setShuffle(true), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(plain.shuffle(), true);
    }

    void pauseCallsPause()
    {
        auto& only = start(player("only", "Playing"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.pause(), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(only.calls(), QStringList{QStringLiteral("Pause")});
        QCOMPARE(only.playbackStatus(), QStringLiteral("Paused"));
    }

    void aRefusedCommandFailsWithThePlayersMessage()
    {
        auto options = player("stubborn", "Playing");
        options.refusesPause = true;
        auto& stubborn = start(options);
        MprisMusicPlayer music(SdBus::Bus::session());

        const auto outcome = music.pause();

        const ScriptErrorRecord expected{-10000,
                                         QStringLiteral("Music got an error: Pausing is not allowed now."),
                                         QStringLiteral("Pausing is not allowed now.")};
        QCOMPARE(outcome, ScriptOutcome(expected));
        QCOMPARE(stubborn.playbackStatus(), QStringLiteral("Playing"));
    }

    void playlistNamesComeInThePlayersOwnOrderWithDuplicates()
    {
        auto& only = start(player("only"));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playlistNames(),
                 PlaylistNames(QStringList{QStringLiteral("Focus"), QStringLiteral("Mix"),
                                           QStringLiteral("Evening"), QStringLiteral("Mix")}));
        QCOMPARE(only.calls(), QStringList{QStringLiteral("GetPlaylists 0 4 UserDefined false")});
    }

    void playlistNamesUseThePlayersFirstOrderingWhenItHasNoOrderOfItsOwn()
    {
        auto options = player("only");
        options.orderings = {QStringLiteral("Alphabetical"), QStringLiteral("CreationDate")};
        auto& only = start(options);
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playlistNames(),
                 PlaylistNames(QStringList{QStringLiteral("Evening"), QStringLiteral("Focus"),
                                           QStringLiteral("Mix"), QStringLiteral("Mix")}));
        QCOMPARE(only.calls(), QStringList{QStringLiteral("GetPlaylists 0 4 Alphabetical false")});
    }

    void aPlayerWithNoPlaylistsListsNone()
    {
        auto options = player("only");
        options.playlists.clear();
        start(options);
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playlistNames(), PlaylistNames(QStringList()));
        QCOMPARE(std::get<ScriptErrorRecord>(music.playPlaylist(QStringLiteral("Focus"))).number, -1728);
    }

    // While the first playlist plays, the second is asked for: it must then play, from its first track.
    void aPlaylistAskedForWhileOnePlaysPlaysFromItsStart_data()
    {
        QTest::addColumn<QString>("quirk");
        QTest::addColumn<QString>("first");
        const std::pair<const char*, const char*> quirks[] = {
            {"as MPRIS says", ""},
            {"toggles while playing", "toggle-while-playing"},
            {"skips on activate", "skip-on-activate"},
            {"changes ids", "changing-ids"},
            {"only the User ordering", "user-ordering-only"},
            {"keeps a stale ActivePlaylist", "stale-active-playlist"},
        };
        for (const auto& [description, quirk] : quirks) {
            QTest::addRow("another playlist, %s", description)
                << QString::fromLatin1(quirk) << QStringLiteral("Focus");
            QTest::addRow("the same playlist, %s", description)
                << QString::fromLatin1(quirk) << QStringLiteral("Evening");
        }
    }

    void aPlaylistAskedForWhileOnePlaysPlaysFromItsStart()
    {
        QFETCH(QString, quirk);
        QFETCH(QString, first);
        auto& only = start(quirky("only", quirk));
        MprisMusicPlayer music(SdBus::Bus::session());
        QCOMPARE(music.playPlaylist(first), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(only.playbackStatus(), QStringLiteral("Playing"));

        QCOMPARE(music.playPlaylist(QStringLiteral("Evening")), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(only.playbackStatus(), QStringLiteral("Playing"));
        QVERIFY2(only.activePlaylist().startsWith(TestMprisPlayerProcess::playlistId(2)),
                 qPrintable(only.activePlaylist()));
        QCOMPARE(only.track(), 0);
    }

    void aPlayingOrPausedPlayerIsStoppedBeforeTheActivation_data()
    {
        QTest::addColumn<bool>("paused");
        QTest::newRow("playing") << false;
        QTest::newRow("paused") << true;
    }

    void aPlayingOrPausedPlayerIsStoppedBeforeTheActivation()
    {
        QFETCH(bool, paused);
        auto& only = start(player("only"));
        MprisMusicPlayer music(SdBus::Bus::session());
        QCOMPARE(music.playPlaylist(QStringLiteral("Focus")), ScriptOutcome(ScriptNoResult{}));
        if (paused) {
            QCOMPARE(music.pause(), ScriptOutcome(ScriptNoResult{}));
            QCOMPARE(only.playbackStatus(), QStringLiteral("Paused"));
        }

        QCOMPARE(music.playPlaylist(QStringLiteral("Mix")), ScriptOutcome(ScriptNoResult{}));

        const QStringList calls = only.calls();
        QVERIFY(calls.size() >= 2);
        QCOMPARE(calls.at(calls.size() - 2), QStringLiteral("Stop"));
        QCOMPARE(calls.last(), QStringLiteral("ActivatePlaylist ") + TestMprisPlayerProcess::playlistId(1));
    }

    void aPlaylistRemovedBeforeItsActivationLeavesThePlayerAsItWas_data()
    {
        QTest::addColumn<QString>("status");
        QTest::newRow("playing") << QStringLiteral("Playing");
        QTest::newRow("paused") << QStringLiteral("Paused");
    }

    void aPlaylistRemovedBeforeItsActivationLeavesThePlayerAsItWas()
    {
        QFETCH(QString, status);
        // The player plays (or has paused) the third track of "Evening"; "Focus" is deleted in the player
        // between the plugin's look-up and its activation.
        auto options = player("only", qPrintable(status));
        options.activePlaylist = 2;
        options.track = 2;
        options.vanishingPlaylist = QStringLiteral("Focus");
        auto& only = start(options);
        MprisMusicPlayer music(SdBus::Bus::session());

        const ScriptErrorRecord expected{-1728,
                                         QStringLiteral("Music got an error: Can’t get playlist \"Focus\"."),
                                         QStringLiteral("Can’t get playlist \"Focus\".")};
        QCOMPARE(music.playPlaylist(QStringLiteral("Focus")), ScriptOutcome(expected));

        QCOMPARE(only.playbackStatus(), status);
        QCOMPARE(only.activePlaylist(), TestMprisPlayerProcess::playlistId(2));
        QCOMPARE(only.track(), 2);
        // Stopped for the activation, then put back: Play goes on with the same track.
        const QStringList calls = only.calls();
        const auto stop = calls.indexOf(QStringLiteral("Stop"));
        QVERIFY2(stop >= 0, qPrintable(calls.join(u", ")));
        QStringList after = calls.mid(stop);
        QStringList expectedCalls{QStringLiteral("Stop"),
                                  QStringLiteral("ActivatePlaylist ") + TestMprisPlayerProcess::playlistId(0),
                                  QStringLiteral("Play")};
        if (status == u"Paused") {
            expectedCalls.append(QStringLiteral("Pause"));
        }
        after.removeIf([](const QString& call) { return call.startsWith(u"GetPlaylists"); });
        QCOMPARE(after, expectedCalls);
    }

    void aPausedPlaylistAskedForAgainPlaysFromItsStart_data()
    {
        QTest::addColumn<QString>("quirk");
        QTest::newRow("as MPRIS says") << QString();
        QTest::newRow("skips on activate") << QStringLiteral("skip-on-activate");
        QTest::newRow("toggles while playing") << QStringLiteral("toggle-while-playing");
        QTest::newRow("keeps a stale ActivePlaylist") << QStringLiteral("stale-active-playlist");
    }

    void aPausedPlaylistAskedForAgainPlaysFromItsStart()
    {
        QFETCH(QString, quirk);
        auto& only = start(quirky("only", quirk));
        MprisMusicPlayer music(SdBus::Bus::session());
        QCOMPARE(music.playPlaylist(QStringLiteral("Focus")), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(music.pause(), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(music.playPlaylist(QStringLiteral("Focus")), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(only.playbackStatus(), QStringLiteral("Playing"));
        QCOMPARE(only.activePlaylist(), TestMprisPlayerProcess::playlistId(0));
        QCOMPARE(only.track(), 0);
    }

    void aStoppedPlayerIsActivatedWithoutBeingStopped()
    {
        auto options = quirky("only", QStringLiteral("toggle-while-playing"));
        options.playbackStatus = QStringLiteral("Stopped");
        auto& only = start(options);
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playPlaylist(QStringLiteral("Focus")), ScriptOutcome(ScriptNoResult{}));

        QVERIFY(!only.calls().contains(QStringLiteral("Stop")));
        QCOMPARE(only.playbackStatus(), QStringLiteral("Playing"));
    }

    void changingIdsAreTakenFromTheListingOfTheSameCommand()
    {
        auto& only = start(quirky("only", QStringLiteral("changing-ids")));
        MprisMusicPlayer music(SdBus::Bus::session());
        // Another client's listing makes the ids of an earlier one invalid.
        QCOMPARE(music.playlistNames().index(), 0);

        QCOMPARE(music.playPlaylist(QStringLiteral("Evening")), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(only.calls().last(), QStringLiteral("ActivatePlaylist ") +
                                          TestMprisPlayerProcess::playlistId(2) + QStringLiteral("/g2"));
        QCOMPARE(only.playbackStatus(), QStringLiteral("Playing"));
    }

    void aPlayerWithOnlyTheUserOrderingListsItsPlaylistsInThatOrdering()
    {
        auto& only = start(quirky("only", QStringLiteral("user-ordering-only")));
        MprisMusicPlayer music(SdBus::Bus::session());

        QCOMPARE(music.playlistNames(),
                 PlaylistNames(QStringList{QStringLiteral("Focus"), QStringLiteral("Mix"),
                                           QStringLiteral("Evening"), QStringLiteral("Mix")}));
        QCOMPARE(only.calls(), QStringList{QStringLiteral("GetPlaylists 0 4 User false")});
    }

    void aPlayerThatNeverPlaysFailsNamingThePlayerAndThePlaylist_data()
    {
        QTest::addColumn<QString>("status");
        QTest::newRow("from stopped") << QStringLiteral("Stopped");
        QTest::newRow("while playing") << QStringLiteral("Playing");
    }

    void aPlayerThatNeverPlaysFailsNamingThePlayerAndThePlaylist()
    {
        QFETCH(QString, status);
        auto options = quirky("stuck", QStringLiteral("never-plays"));
        options.playbackStatus = status;
        auto& stuck = start(options);
        MprisMusicPlayer music(SdBus::Bus::session(), {}, failingBound);

        const auto outcome = music.playPlaylist(QStringLiteral("Evening"));

        const QString brief =
            QStringLiteral("The player “org.mpris.MediaPlayer2.stuck” did not start playing the playlist "
                           "“Evening”.");
        const ScriptErrorRecord expected{-10000, QStringLiteral("Music got an error: ") + brief, brief};
        QCOMPARE(outcome, ScriptOutcome(expected));
        QVERIFY(stuck.calls().contains(QStringLiteral("ActivatePlaylist ") +
                                       TestMprisPlayerProcess::playlistId(2)));
        QVERIFY(stuck.playbackStatus() != u"Playing");
    }

    void aPlayerThatNeverAnswersTheActivationTimesOut()
    {
        auto& silent = start(quirky("silent", QStringLiteral("never-answers")));
        MprisMusicPlayer music(SdBus::Bus::session(), {}, failingBound);

        QCOMPARE(music.playPlaylist(QStringLiteral("Evening")), ScriptOutcome(timedOut()));
        QCOMPARE(silent.calls().last(),
                 QStringLiteral("ActivatePlaylist ") + TestMprisPlayerProcess::playlistId(2));
    }

    void aFrozenPlayerTimesOutOnEveryCommand()
    {
        auto& frozen = start(player("frozen", "Playing"));
        MprisMusicPlayer music(SdBus::Bus::session(), {}, failingBound);
        QVERIFY(frozen.freeze());

        const auto shuffle = music.setShuffle(true);
        const auto play = music.playPlaylist(QStringLiteral("Focus"));
        const auto pause = music.pause();
        const auto names = music.playlistNames();

        QVERIFY(frozen.thaw());
        QCOMPARE(shuffle, ScriptOutcome(timedOut()));
        QCOMPARE(play, ScriptOutcome(timedOut()));
        QCOMPARE(pause, ScriptOutcome(timedOut()));
        QCOMPARE(names, PlaylistNames(timedOut()));
    }

    void aFrozenPlayerAmongOthersTimesOutRatherThanHangingTheChoice()
    {
        start(player("a", "Stopped"));
        auto& frozen = start(player("b", "Playing"));
        MprisMusicPlayer music(SdBus::Bus::session(), {}, failingBound);
        QVERIFY(frozen.freeze());

        const auto outcome = music.pause();

        QVERIFY(frozen.thaw());
        // The frozen one may be the one playing: another is not paused in its place.
        QCOMPARE(outcome, ScriptOutcome(timedOut()));
        QCOMPARE(m_players.at(0)->calls(), QStringList());
    }
};

QTEST_GUILESS_MAIN(MprisMusicPlayerTest)
#include "MprisMusicPlayerTest.moc"
