// Tests the Linux media library: playlist names from MPD or an MPRIS player, and the error when neither runs.
#include "MpdTestServer.h"
#include "TestMprisPlayerProcess.h"
#include "MediaLibrary.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <QTest>

using namespace MusicPlugin;
using VendelSDK::Error;
using VendelSDK::Testing::MpdTestServer;
using VendelSDK::Testing::TestMprisPlayerProcess;

class MusicMediaLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_mpd.addSong(QStringLiteral("01.wav"));
        for (const char* name : {"Road trip", "ambient", "Mix", "mix", "Évening", "Zeta"}) {
            m_mpd.addPlaylist(QString::fromUtf8(name), {QStringLiteral("01.wav")});
        }
        QVERIFY2(m_mpd.start(), qPrintable(m_mpd.errorString()));
        QVERIFY2(QDBusConnection::sessionBus().isConnected(), "no session bus");
    }

    void init()
    {
        qunsetenv("VENDEL_MUSIC");
        qunsetenv("VENDEL_MUSIC_PLAYER");
        qunsetenv("MPD_PORT");
        qputenv("MPD_HOST", m_nowhere.filePath(QStringLiteral("no-socket")).toUtf8());
    }

    void mpdPlaylistsAreListedSortedByNameIgnoringCase()
    {
        qputenv("MPD_HOST", m_mpd.socketPath().toUtf8());

        const auto names = makePlatformMediaLibrary()->playlistNames();

        QVERIFY(std::holds_alternative<QStringList>(names));
        // Names that differ only in case are two playlists and stay two entries.
        QCOMPARE(
            std::get<QStringList>(names),
            (QStringList{QStringLiteral("ambient"), QStringLiteral("Mix"), QStringLiteral("mix"),
                         QStringLiteral("Road trip"), QStringLiteral("Zeta"), QStringLiteral("Évening")}));
    }

    void mprisPlaylistsAreListedInThePlayersOrderWithDuplicates()
    {
        TestMprisPlayerProcess::Options options;
        options.name = QStringLiteral("library");
        options.playlists = {QStringLiteral("Mix"), QStringLiteral("Focus"), QStringLiteral("Mix"),
                             QStringLiteral("Abc")};
        TestMprisPlayerProcess player(options);
        QVERIFY(player.start());

        const auto names = makePlatformMediaLibrary()->playlistNames();

        QVERIFY(std::holds_alternative<QStringList>(names));
        QCOMPARE(std::get<QStringList>(names), options.playlists);
    }

    void noPlayerMeansTheLibraryCannotBeOpened()
    {
        const auto names = makePlatformMediaLibrary()->playlistNames();

        QVERIFY(std::holds_alternative<Error>(names));
        const auto& error = std::get<Error>(names);
        QCOMPARE(error.domain(), QStringLiteral("org.vendel.MediaLibrary"));
        QCOMPARE(error.code(), 1);
        QCOMPARE(error.localizedDescription(), QStringLiteral("The music library could not be opened."));
        QCOMPARE(
            error.localizedFailureReason(),
            QStringLiteral("No music player could be reached: start MPD or a player that offers MPRIS."));
    }

    void aPlayerWithoutPlaylistsMeansTheLibraryCannotBeOpened()
    {
        TestMprisPlayerProcess::Options options;
        options.name = QStringLiteral("plain");
        options.servesPlaylists = false;
        TestMprisPlayerProcess player(options);
        QVERIFY(player.start());

        const auto names = makePlatformMediaLibrary()->playlistNames();

        QVERIFY(std::holds_alternative<Error>(names));
        const auto& error = std::get<Error>(names);
        QCOMPARE(error.code(), 1);
        QCOMPARE(error.localizedFailureReason(),
                 QStringLiteral("The player “org.mpris.MediaPlayer2.plain” cannot play a playlist: it has no "
                                "org.mpris.MediaPlayer2.Playlists interface."));
    }

private:
    MpdTestServer m_mpd;
    QTemporaryDir m_nowhere;
};

QTEST_GUILESS_MAIN(MusicMediaLibraryTest)
#include "MusicMediaLibraryTest.moc"
