// Tests the players that "Music" stands for against Mopidy, a real player that nobody here wrote, over MPRIS
// and over MPD's protocol: what a user does while music plays must leave the requested playlist playing.
#include "MusicPlayerChoice.h"
#include "MopidyTestServer.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;
using VendelSDK::Testing::MopidyTestServer;

namespace {

const QString roadTrip = QStringLiteral("Road Trip");
const QString evening = QStringLiteral("Evening");

} // namespace

class MusicPlayerTest : public QObject
{
    Q_OBJECT

private:
    // The player the environment chooses for the row's protocol, as a run would get it.
    std::unique_ptr<MusicPlayer> player() const
    {
        QFETCH(QString, kind);
        qputenv("VENDEL_MUSIC", kind.toUtf8());
        qputenv("MPD_HOST", m_server.socketPath().toUtf8());
        return makeMusicPlayer();
    }

    QString state() const
    {
        const auto status = m_server.status();
        return status ? status->state : QStringLiteral("(no status)");
    }

    MopidyTestServer m_server;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "no session bus");
        for (const char* song :
             {"road/01.wav", "road/02.wav", "road/03.wav", "evening/01.wav", "evening/02.wav"}) {
            m_server.addSong(QString::fromLatin1(song));
        }
        m_server.addPlaylist(roadTrip, {QStringLiteral("road/01.wav"), QStringLiteral("road/02.wav"),
                                        QStringLiteral("road/03.wav")});
        m_server.addPlaylist(evening, {QStringLiteral("evening/01.wav"), QStringLiteral("evening/02.wav")});
        QElapsedTimer timer;
        timer.start();
        QVERIFY2(m_server.start(), qPrintable(m_server.errorString()));
        qInfo("mopidy started and answered in %lld ms", timer.elapsed());
    }

    void init() { QVERIFY2(m_server.reset(), qPrintable(m_server.logTail())); }

    void cleanupTestCase()
    {
        qunsetenv("VENDEL_MUSIC");
        qunsetenv("MPD_HOST");
    }

    void protocols_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("MPRIS") << QStringLiteral("mpris");
        QTest::newRow("MPD") << QStringLiteral("mpd");
    }

    void playlistNamesListsMopidysPlaylists_data() { protocols_data(); }

    void playlistNamesListsMopidysPlaylists()
    {
        auto names = player()->playlistNames();

        QVERIFY(std::holds_alternative<QStringList>(names));
        QStringList sorted = std::get<QStringList>(names);
        sorted.sort();
        QCOMPARE(sorted, (QStringList{evening, roadTrip}));
    }

    void playWithShuffleOnPlaysThePlaylistShuffled_data() { protocols_data(); }

    void playWithShuffleOnPlaysThePlaylistShuffled()
    {
        const auto music = player();

        QCOMPARE(music->setShuffle(true), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(music->playPlaylist(roadTrip), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(state(), QStringLiteral("play"));
        QCOMPARE(m_server.status()->random, true);
        QVERIFY2(m_server.currentSong().startsWith(u"road/"), qPrintable(m_server.currentSong()));
    }

    void playWithShuffleOffPlaysThePlaylistInOrder_data() { protocols_data(); }

    void playWithShuffleOffPlaysThePlaylistInOrder()
    {
        const auto music = player();
        QCOMPARE(music->setShuffle(true), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(music->setShuffle(false), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(music->playPlaylist(roadTrip), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(state(), QStringLiteral("play"));
        QCOMPARE(m_server.status()->random, false);
        QCOMPARE(m_server.currentSong(), QStringLiteral("road/01.wav"));
    }

    void pausePausesWhatPlays_data() { protocols_data(); }

    void pausePausesWhatPlays()
    {
        const auto music = player();
        QCOMPARE(music->playPlaylist(evening), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(music->pause(), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(state(), QStringLiteral("pause"));
    }

    void aMissingPlaylistFailsAndLeavesPlaybackAlone_data() { protocols_data(); }

    void aMissingPlaylistFailsAndLeavesPlaybackAlone()
    {
        const auto music = player();
        QCOMPARE(music->playPlaylist(evening), ScriptOutcome(ScriptNoResult{}));

        const auto outcome = music->playPlaylist(QStringLiteral("Road"));

        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
        QCOMPARE(std::get<ScriptErrorRecord>(outcome).number, -1728);
        QCOMPARE(state(), QStringLiteral("play"));
        QVERIFY2(m_server.currentSong().startsWith(u"evening/"), qPrintable(m_server.currentSong()));
    }

    void anotherPlaylistWhilePlayingPlaysTheRequestedOne_data() { protocols_data(); }

    void anotherPlaylistWhilePlayingPlaysTheRequestedOne()
    {
        const auto music = player();
        QCOMPARE(music->playPlaylist(roadTrip), ScriptOutcome(ScriptNoResult{}));
        QCOMPARE(state(), QStringLiteral("play"));

        QCOMPARE(music->playPlaylist(evening), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(state(), QStringLiteral("play"));
        QCOMPARE(m_server.currentSong(), QStringLiteral("evening/01.wav"));
    }

    void theSamePlaylistWhilePlayingKeepsItPlaying_data() { protocols_data(); }

    void theSamePlaylistWhilePlayingKeepsItPlaying()
    {
        const auto music = player();
        QCOMPARE(music->playPlaylist(evening), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(music->playPlaylist(evening), ScriptOutcome(ScriptNoResult{}));

        QCOMPARE(state(), QStringLiteral("play"));
        QCOMPARE(m_server.currentSong(), QStringLiteral("evening/01.wav"));
    }
};

QTEST_GUILESS_MAIN(MusicPlayerTest)
#include "MusicPlayerTest.moc"
