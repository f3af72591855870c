// Tests the playlist store: names in the library's order with duplicates, the alert and termination when
// the library cannot be opened, and the names of a real MPD through the platform's library.
#include "PlaylistStore.h"
#include "MediaLibrary.h"

#include "FixedMediaLibrary.h"
#include "TestPlatform.h"

#ifdef VENDEL_HAVE_MPD_TEST_SERVER
#include "MpdTestServer.h"
#endif

#include <QSignalSpy>
#include <QTest>

using namespace MusicPlugin;
using namespace MusicPlugin::Testing;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

class PlaylistStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreKeptInLibraryOrderWithDuplicates()
    {
        TestPlatform platform;
        const QStringList names{QStringLiteral("Mix"), QStringLiteral("Focus"), QStringLiteral("Mix"),
                                QStringLiteral("Abc")};
        FixedMediaLibrary library(names);
        const PlaylistStore store(library);
        QCOMPARE(store.playlists(), names);
        QCOMPARE(store.property("playlists").toStringList(), names);
        QCOMPARE(library.reads, 1);
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void emptyLibraryGivesNoNamesAndNoMessage()
    {
        TestPlatform platform;
        FixedMediaLibrary library(QStringList{});
        const PlaylistStore store(library);
        QVERIFY(store.playlists().isEmpty());
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }

    void libraryThatCannotBeOpenedShowsOneAlertThenTerminates()
    {
        TestPlatform platform;
        int terminatesDuringAlert = -1;
        platform.alerts->onAlert = [&](const Alert&) {
            terminatesDuringAlert = platform.services->terminateRequests;
        };
        FixedMediaLibrary library(cannotOpenMediaLibraryError(QStringLiteral("No player runs.")));
        const PlaylistStore store(library);
        QCOMPARE(platform.alerts->alerts.size(), 1);
        QCOMPARE(platform.alerts->alerts.constFirst(),
                 (Alert{QStringLiteral("The music library could not be opened."),
                        QStringLiteral("No player runs."),
                        {}}));
        // The alert comes first; termination is asked for once it has been dismissed.
        QCOMPARE(terminatesDuringAlert, 0);
        QCOMPARE(platform.services->terminateRequests, 1);
        QVERIFY(store.playlists().isEmpty());
    }

    void settingTheListNotifiesOnlyOnChange()
    {
        TestPlatform platform;
        FixedMediaLibrary library(QStringList{QStringLiteral("A")});
        PlaylistStore store(library);
        QSignalSpy changed(&store, &PlaylistStore::playlistsChanged);
        QVERIFY(store.setProperty("playlists", QStringList{QStringLiteral("B")}));
        QCOMPARE(store.playlists(), QStringList{QStringLiteral("B")});
        store.setPlaylists({QStringLiteral("B")});
        QCOMPARE(changed.size(), 1);
    }

#ifdef VENDEL_HAVE_MPD_TEST_SERVER
    void platformStoreListsTheStoredPlaylistsOfARealMpd()
    {
        MpdTestServer mpd;
        mpd.addSong(QStringLiteral("01.wav"), 5);
        for (const char* name : {"Evening", "Morning", "Mix"}) {
            mpd.addPlaylist(QString::fromUtf8(name), {QStringLiteral("01.wav")});
        }
        QVERIFY2(mpd.start(), qPrintable(mpd.errorString()));
        qunsetenv("VENDEL_MUSIC");
        qunsetenv("MPD_PORT");
        qputenv("MPD_HOST", mpd.socketPath().toUtf8());

        TestPlatform platform;
        const PlaylistStore store;
        // MPD keeps no order of its own, so the library lists its playlists by name.
        QCOMPARE(store.playlists(),
                 (QStringList{QStringLiteral("Evening"), QStringLiteral("Mix"), QStringLiteral("Morning")}));
        QVERIFY(platform.alerts->alerts.isEmpty());
        QCOMPARE(platform.services->terminateRequests, 0);
    }
#endif
};

QTEST_GUILESS_MAIN(PlaylistStoreTest)
#include "PlaylistStoreTest.moc"
