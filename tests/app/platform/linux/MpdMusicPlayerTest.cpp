// Tests the MPD player against a real MPD on a private socket, checking MPD's status after every command.
#include "MpdMusicPlayer.h"
#include "MpdTestServer.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <mpd/client.h>

using namespace MusicPlugin;
using namespace VendelSDK;
using VendelSDK::Testing::MpdTestServer;

namespace {

const QString focus = QStringLiteral("Focus");
const QString evening = QStringLiteral("Evening");
const QString unusual = QStringLiteral("My \"Best\" ☕ mix");
const QStringList focusSongs{QStringLiteral("01.wav"), QStringLiteral("02.wav"), QStringLiteral("03.wav"),
                             QStringLiteral("04.wav")};
const QStringList eveningSongs{QStringLiteral("late/05.wav"), QStringLiteral("late/06.wav")};

MpdAddress addressOf(const MpdTestServer& server)
{
    return MpdAddress{server.socketPath().toUtf8(), 0};
}

void addLibrary(MpdTestServer& server)
{
    for (const QString& song : focusSongs + eveningSongs) {
        server.addSong(song);
    }
    server.addPlaylist(focus, focusSongs);
    server.addPlaylist(evening, eveningSongs);
    server.addPlaylist(unusual, {eveningSongs.first()});
    server.addPlaylist(QStringLiteral("afternoon"), {focusSongs.first()});
}

ScriptErrorRecord notRunning()
{
    return {-600, QStringLiteral("Application isn’t running."), QStringLiteral("Application isn’t running.")};
}

ScriptErrorRecord noAnswer()
{
    return {-1712, QStringLiteral("Music got an error: AppleEvent timed out."),
            QStringLiteral("AppleEvent timed out.")};
}

} // namespace

class MpdMusicPlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        addLibrary(m_server);
        QElapsedTimer timer;
        timer.start();
        QVERIFY2(m_server.start(), qPrintable(m_server.errorString()));
        qInfo("mpd started and indexed its music in %lld ms", timer.elapsed());
    }

    void init() { QVERIFY(m_server.reset()); }

    void setShuffleTurnsRandomOnAndOff()
    {
        MpdMusicPlayer player(addressOf(m_server));

        QCOMPARE(player.setShuffle(true), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_server.status()->random, true);

        QCOMPARE(player.setShuffle(false), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_server.status()->random, false);
    }

    void playPlaylistReplacesTheQueueWithThePlaylistAndPlaysItFromTheStart()
    {
        QVERIFY(m_server.playStoredPlaylist(evening));
        MpdMusicPlayer player(addressOf(m_server));

        QCOMPARE(player.playPlaylist(focus), ScriptOutcome(ScriptNoResult{}));

        const auto status = m_server.status();
        QVERIFY(status);
        QCOMPARE(status->state, QStringLiteral("play"));
        QCOMPARE(status->queueLength, 4U);
        QCOMPARE(status->songPosition, 0);
        QCOMPARE(m_server.queue(), focusSongs);
    }

    void playPlaylistWithShuffleOnStartsAtARandomSong()
    {
        MpdMusicPlayer player(addressOf(m_server));
        QCOMPARE(player.setShuffle(true), ScriptOutcome(ScriptNoResult{}));

        // A play sent with position 0 would always start at the first song; 4^-30 is the chance that a random
        // start does so thirty times in a row.
        QSet<int> startPositions;
        for (int attempt = 0; attempt < 30 && startPositions.size() < 2; ++attempt) {
            QCOMPARE(player.playPlaylist(focus), ScriptOutcome(ScriptNoResult{}));
            const auto status = m_server.status();
            QVERIFY(status);
            QCOMPARE(status->state, QStringLiteral("play"));
            QCOMPARE(status->queueLength, 4U);
            QVERIFY(status->random);
            startPositions.insert(status->songPosition);
        }
        QVERIFY2(startPositions.size() > 1, "every play started at the same song");
    }

    void playPlaylistFindsANameWithQuotesAndNonAsciiCharacters()
    {
        MpdMusicPlayer player(addressOf(m_server));

        QCOMPARE(player.playPlaylist(unusual), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(m_server.status()->state, QStringLiteral("play"));
        QCOMPARE(m_server.queue(), QStringList{eveningSongs.first()});
    }

    void missingPlaylistFailsAndLeavesTheQueueAsItWas()
    {
        QVERIFY(m_server.playStoredPlaylist(evening));
        const auto before = m_server.status();
        QVERIFY(before);
        MpdMusicPlayer player(addressOf(m_server));

        const auto outcome = player.playPlaylist(QStringLiteral("Nope"));

        const ScriptErrorRecord expected{-1728,
                                         QStringLiteral("Music got an error: Can’t get playlist \"Nope\"."),
                                         QStringLiteral("Can’t get playlist \"Nope\".")};
        QCOMPARE(outcome, ScriptOutcome(expected));
        const auto after = m_server.status();
        QVERIFY(after);
        QVERIFY2(after->state == u"play", qPrintable(m_server.logTail()));
        QCOMPARE(after->queueLength, 2U);
        QCOMPARE(after->songId, before->songId);
        QCOMPARE(m_server.queue(), eveningSongs);
    }

    void playlistRemovedBetweenTheCheckAndTheLoadLeavesTheQueueAndItsCurrentSongAsTheyWere()
    {
        QVERIFY(m_server.playStoredPlaylist(evening));
        {
            const auto connection = m_server.connect();
            QVERIFY(connection && mpd_run_play_pos(connection.get(), 1) &&
                    mpd_run_pause(connection.get(), true));
        }
        const auto before = m_server.status();
        QVERIFY(before);
        MpdMusicPlayer player(addressOf(m_server));
        // Another client deletes the playlist right after the player has found it.
        player.setBeforeLoad([this] {
            const auto connection = m_server.connect();
            QVERIFY(connection && mpd_run_rm(connection.get(), "Focus"));
        });

        const auto outcome = player.playPlaylist(focus);
        m_server.addPlaylist(focus, focusSongs);

        const ScriptErrorRecord expected{-1728,
                                         QStringLiteral("Music got an error: Can’t get playlist \"Focus\"."),
                                         QStringLiteral("Can’t get playlist \"Focus\".")};
        QCOMPARE(outcome, ScriptOutcome(expected));
        const auto after = m_server.status();
        QVERIFY(after);
        QCOMPARE(after->state, QStringLiteral("pause"));
        QCOMPARE(after->songPosition, 1);
        QCOMPARE(after->songId, before->songId);
        QCOMPARE(m_server.queue(), eveningSongs);
    }

    void playAfterAQueueOfOtherSongsLeavesOnlyThePlaylistPlayingFromItsStart()
    {
        QVERIFY(m_server.playStoredPlaylist(evening));
        {
            const auto connection = m_server.connect();
            QVERIFY(connection && mpd_run_play_pos(connection.get(), 1));
        }
        MpdMusicPlayer player(addressOf(m_server));

        QCOMPARE(player.playPlaylist(focus), ScriptOutcome(ScriptNoResult{}));

        const auto status = m_server.status();
        QVERIFY(status);
        QCOMPARE(status->state, QStringLiteral("play"));
        QCOMPARE(status->songPosition, 0);
        QCOMPARE(m_server.queue(), focusSongs);
    }

    void playlistNamesDifferingOnlyInCaseOrSpacesAreDifferentPlaylists()
    {
        MpdMusicPlayer player(addressOf(m_server));

        const auto outcome = player.playPlaylist(QStringLiteral("focus"));

        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
        QCOMPARE(std::get<ScriptErrorRecord>(outcome).number, -1728);
        QCOMPARE(std::get<ScriptErrorRecord>(player.playPlaylist(QStringLiteral("Focus "))).number, -1728);
        QCOMPARE(m_server.status()->queueLength, 0U);
    }

    void pauseSetsTheStateToPause()
    {
        QVERIFY(m_server.playStoredPlaylist(focus));
        MpdMusicPlayer player(addressOf(m_server));

        QCOMPARE(player.pause(), ScriptOutcome(ScriptNoResult{}));

        const auto status = m_server.status();
        QVERIFY(status);
        QCOMPARE(status->state, QStringLiteral("pause"));
        QCOMPARE(status->queueLength, 4U);
    }

    void pauseTwiceStaysPaused()
    {
        QVERIFY(m_server.playStoredPlaylist(focus));
        MpdMusicPlayer player(addressOf(m_server));

        QCOMPARE(player.pause(), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(player.pause(), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(m_server.status()->state, QStringLiteral("pause"));
    }

    void playlistNamesAreSortedByNameIgnoringCase()
    {
        MpdMusicPlayer player(addressOf(m_server));

        const auto names = player.playlistNames();

        QCOMPARE(names, PlaylistNames(QStringList{QStringLiteral("afternoon"), evening, focus, unusual}));
    }

    void everyCommandFailsWithApplicationNotRunningWhenNothingListens()
    {
        MpdMusicPlayer player(MpdAddress{QTemporaryDir().filePath(QStringLiteral("no-socket")).toUtf8(), 0});

        QCOMPARE(player.setShuffle(true), ScriptOutcome(notRunning()));
        QCOMPARE(player.playPlaylist(focus), ScriptOutcome(notRunning()));
        QCOMPARE(player.pause(), ScriptOutcome(notRunning()));
        QCOMPARE(player.playlistNames(), PlaylistNames(notRunning()));
    }

    void refusedCommandFailsWithMpdsMessage()
    {
        MpdTestServer guarded;
        guarded.addSong(focusSongs.first());
        guarded.setDefaultPermissions(QStringLiteral("read"), QStringLiteral("secret"));
        QVERIFY2(guarded.start(), qPrintable(guarded.errorString()));
        MpdMusicPlayer player(MpdAddress{guarded.socketPath().toUtf8(), 0});

        const auto outcome = player.setShuffle(true);

        const ScriptErrorRecord expected{
            -10000, QStringLiteral("Music got an error: you don't have permission for \"random\"."),
            QStringLiteral("you don't have permission for \"random\".")};
        QCOMPARE(outcome, ScriptOutcome(expected));
        QCOMPARE(guarded.status()->random, false);
        // The connection stays usable after MPD refused a command.
        QCOMPARE(std::get<ScriptErrorRecord>(player.pause()).number, -10000);
    }

    void passwordInTheHostIsSentToMpd()
    {
        MpdTestServer guarded;
        guarded.addSong(focusSongs.first());
        guarded.setDefaultPermissions(QStringLiteral("read"), QStringLiteral("secret"));
        QVERIFY2(guarded.start(), qPrintable(guarded.errorString()));
        MpdMusicPlayer player(MpdAddress{"secret@" + guarded.socketPath().toUtf8(), 0});

        QCOMPARE(player.setShuffle(true), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(guarded.status()->random, true);
    }

    void addressComesFromMpdHostAndMpdPort()
    {
        qputenv("MPD_HOST", "secret@music.example");
        qputenv("MPD_PORT", "6601");
        const auto address = MpdAddress::fromEnvironment();
        QCOMPARE(address.host, QByteArray("secret@music.example"));
        QCOMPARE(address.port, 6601U);

        qunsetenv("MPD_HOST");
        qputenv("MPD_PORT", "not a port");
        const auto fallback = MpdAddress::fromEnvironment();
        QCOMPARE(fallback.host, QByteArray());
        QCOMPARE(fallback.port, 0U);
        qunsetenv("MPD_PORT");
    }

    void mpdTimeoutIsReadInSecondsWithADefaultOtherwise_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<qint64>("milliseconds");
        QTest::newRow("unset") << QByteArray() << qint64(MpdMusicPlayer::defaultTimeout.count());
        QTest::newRow("whole seconds") << QByteArray("3") << qint64(3000);
        QTest::newRow("fraction") << QByteArray(" 0.25 ") << qint64(250);
        QTest::newRow("zero") << QByteArray("0") << qint64(MpdMusicPlayer::defaultTimeout.count());
        QTest::newRow("negative") << QByteArray("-5") << qint64(MpdMusicPlayer::defaultTimeout.count());
        QTest::newRow("not a number") << QByteArray("soon") << qint64(MpdMusicPlayer::defaultTimeout.count());
        QTest::newRow("huge") << QByteArray("1e30") << qint64(86400000);
    }

    void mpdTimeoutIsReadInSecondsWithADefaultOtherwise()
    {
        QFETCH(QByteArray, value);
        QFETCH(qint64, milliseconds);
        const QByteArray previous = qgetenv("MPD_TIMEOUT");
        if (value.isNull()) {
            qunsetenv("MPD_TIMEOUT");
        } else {
            qputenv("MPD_TIMEOUT", value);
        }
        const auto timeout = MpdMusicPlayer::timeoutFromEnvironment();
        qputenv("MPD_TIMEOUT", previous);
        QCOMPARE(qint64(timeout.count()), milliseconds);
    }

    void defaultTimeoutLetsARunOfTwoCommandsEndWellInsideAMinute()
    {
        QVERIFY(2 * MpdMusicPlayer::defaultTimeout < std::chrono::seconds(30));
    }

    void frozenServerTimesOutAsAnUnansweredEventNotAsNotRunning()
    {
        // Connected before the freeze, and freshly after it: both wait only as long as they were told.
        MpdMusicPlayer kept(addressOf(m_server), std::chrono::milliseconds(300));
        QCOMPARE(kept.setShuffle(true), ScriptOutcome(ScriptNoResult{}));
        QVERIFY(m_server.freeze());
        const auto keptOutcome = kept.pause();
        MpdMusicPlayer fresh(addressOf(m_server), std::chrono::milliseconds(300));
        const auto freshOutcome = fresh.playPlaylist(focus);
        const auto names = fresh.playlistNames();
        QVERIFY(m_server.thaw());
        QCOMPARE(keptOutcome, ScriptOutcome(noAnswer()));
        QCOMPARE(freshOutcome, ScriptOutcome(noAnswer()));
        QCOMPARE(names, PlaylistNames(noAnswer()));
        QCOMPARE(std::get<ScriptErrorRecord>(freshOutcome).number, std::optional<qint64>(-1712));
        QCOMPARE(std::get<ScriptErrorRecord>(freshOutcome).briefMessage,
                 std::optional<QString>(QStringLiteral("AppleEvent timed out.")));
        // Once it answers again, so does the player.
        QCOMPARE(kept.pause(), ScriptOutcome(ScriptNoResult{}));
    }

    // Runs last: it stops and restarts the shared server.
    void serverThatStopsAndReturnsIsReachedAgain()
    {
        MpdMusicPlayer player(addressOf(m_server));
        QCOMPARE(player.setShuffle(true), ScriptOutcome(ScriptNoResult{}));

        m_server.stop();
        QCOMPARE(player.pause(), ScriptOutcome(notRunning()));

        QVERIFY2(m_server.start(), qPrintable(m_server.errorString()));
        QVERIFY(m_server.playStoredPlaylist(focus));
        QCOMPARE(player.pause(), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_server.status()->state, QStringLiteral("pause"));
    }

    void keptConnectionThatMpdClosedIsReplaced()
    {
        MpdMusicPlayer player(addressOf(m_server));
        QCOMPARE(player.setShuffle(true), ScriptOutcome(ScriptNoResult{}));

        // A restart closes every client connection, as MPD's idle time-out does.
        m_server.stop();
        QVERIFY2(m_server.start(), qPrintable(m_server.errorString()));

        QCOMPARE(m_server.status()->random, false);
        QCOMPARE(player.setShuffle(true), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_server.status()->random, true);
    }

    // Runs last: the playlist it adds would change the listings of the tests before it.
    void aPlaylistThatDoesNotPlayFailsNamingMpdAndThePlaylist()
    {
        const QString silent = QStringLiteral("Nothing here");
        m_server.addPlaylist(silent, {});
        // Shorter than the default, as it is waited for in full (nothing will play), yet long enough for
        // every command on a busy machine.
        MpdMusicPlayer player(addressOf(m_server), std::chrono::milliseconds(2000));

        const auto outcome = player.playPlaylist(silent);

        const QString brief =
            QStringLiteral("The player “MPD” did not start playing the playlist “Nothing here”.");
        const ScriptErrorRecord expected{-10000, QStringLiteral("Music got an error: ") + brief, brief};
        QCOMPARE(outcome, ScriptOutcome(expected));
        QCOMPARE(m_server.status()->state, QStringLiteral("stop"));
        // The connection is still good for the next command.
        QCOMPARE(player.playPlaylist(focus), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(m_server.status()->state, QStringLiteral("play"));
    }

private:
    MpdTestServer m_server;
};

QTEST_GUILESS_MAIN(MpdMusicPlayerTest)
#include "MpdMusicPlayerTest.moc"
