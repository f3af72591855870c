// Tests launching plugins: the launch URLs, waiting for a run, every way a run can fail, and end to end:
// the host, the music plugin and a private MPD, through run URLs.
#include "PluginLauncher.h"
#include "HostError.h"
#include "HostErrorText.h"
#include "HostProcess.h"
#include "HostStorage.h"
#include "MpdTestServer.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace VendelHost;
using namespace VendelHost::Testing;
using VendelSDK::Testing::MpdTestServer;
using namespace std::chrono_literals;

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);
const QString musicPlugin = QStringLiteral(VENDEL_MUSIC_PLUGIN);
const QStringList roadTripSongs{QStringLiteral("road/one.wav"), QStringLiteral("road/two.wav"),
                                QStringLiteral("road/three.wav")};
const QStringList focusSongs{QStringLiteral("focus/deep.wav")};

} // namespace

class PluginLauncherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        qputenv("VENDEL_STUB_RECORD", m_directory->filePath(QStringLiteral("record")).toUtf8());
        qunsetenv("VENDEL_STUB_EXIT");
        qunsetenv("VENDEL_STUB_HANG");
        qunsetenv("VENDEL_STUB_CRASH");
    }

    void cleanup() { m_directory.reset(); }

    void cleanupTestCase()
    {
        if (m_host) {
            QVERIFY2(m_host->terminate(), qPrintable(m_host->serverOutput()));
        }
    }

    void launchUrlsCarryThePercentEncodedIdentifier()
    {
        QCOMPARE(PluginLauncher::runUrl(QStringLiteral("4f0c-9a")),
                 QStringLiteral("vendelplugin://run/4f0c-9a"));
        QCOMPARE(PluginLauncher::editUrl(QStringLiteral("Road Trip/2\"")),
                 QStringLiteral("vendelplugin://edit/Road%20Trip%2F2%22"));
        // A configure URL names its plugin, so that the host that claims the scheme can route it.
        QCOMPARE(PluginLauncher::configureUrl(QStringLiteral("vendel-music-plugin")),
                 QStringLiteral("vendelplugin://configure/vendel-music-plugin"));
        QCOMPARE(PluginLauncher::configureUrl(QStringLiteral("odd name")),
                 QStringLiteral("vendelplugin://configure/odd%20name"));
    }

    void aRunIsWaitedFor()
    {
        PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 30s);
        QCOMPARE(record(), QByteArray("vendelplugin://run/a\n"));
    }

    void aFailedRunIsReported()
    {
        qputenv("VENDEL_STUB_EXIT", "3");
        const QString message =
            errorOf([] { PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("exit status 3")), qPrintable(message));
    }

    void aCrashIsReported()
    {
        qputenv("VENDEL_STUB_CRASH", "1");
        const QString message =
            errorOf([] { PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("crashed")), qPrintable(message));
    }

    void aRunThatNeverEndsIsStopped()
    {
        qputenv("VENDEL_STUB_HANG", "1");
        const QString message =
            errorOf([] { PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 300ms); });
        QVERIFY2(message.contains(QStringLiteral("did not finish")), qPrintable(message));
    }

    void aMissingOrUnrunnableExecutableIsReported()
    {
        const QString missing = m_directory->filePath(QStringLiteral("missing"));
        QString message = errorOf(
            [&] { PluginLauncher::runAndWait(missing, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("is missing; install the plugin again")),
                 qPrintable(message));
        message = errorOf([&] {
            PluginLauncher::startDetached(missing, PluginLauncher::configureUrl(QStringLiteral("stub")));
        });
        QVERIFY2(message.contains(QStringLiteral("is missing")), qPrintable(message));

        const QString text = m_directory->filePath(QStringLiteral("text"));
        QFile(text).open(QIODevice::WriteOnly);
        message =
            errorOf([&] { PluginLauncher::runAndWait(text, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("cannot be run")), qPrintable(message));
        message = errorOf([&] {
            PluginLauncher::startDetached(m_directory->path(),
                                          PluginLauncher::configureUrl(QStringLiteral("stub")));
        });
        QVERIFY2(message.contains(QStringLiteral("cannot be run")), qPrintable(message));
    }

    void aDetachedLaunchIsNotWaitedFor()
    {
        QVERIFY(PluginLauncher::startDetached(stub, PluginLauncher::editUrl(QStringLiteral("x"))) > 0);
        QTRY_COMPARE(record(), QByteArray("vendelplugin://edit/x\n"));
    }

    void aRunUrlPlaysAShuffledPlaylistThroughTheHostAndThePlugin()
    {
        QVERIFY(startMusic());
        QVERIFY(m_mpd->reset());
        const QString record = QStringLiteral("{\"action\":0,\"name\":\"Road Trip\",\"shouldShuffle\":true}");
        const QString id = newMusicAction(record);
        QVERIFY(!id.isEmpty());

        const auto run = m_host->run({QStringLiteral("run"), id});
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        const auto status = m_mpd->status();
        QVERIFY(status);
        QCOMPARE(status->state, QStringLiteral("play"));
        QVERIFY(status->random);
        QCOMPARE(m_mpd->queue().value_or(QStringList{}), roadTripSongs);
        // The plugin wrote the record back through the host as it ended, with nothing lost.
        QCOMPARE(QJsonDocument::fromJson(HostStorage(m_data->path()).action(id)->config.toUtf8()),
                 QJsonDocument::fromJson(record.toUtf8()));
    }

    void aRunUrlPausesThroughTheHostAndThePlugin()
    {
        QVERIFY(startMusic());
        QVERIFY(m_mpd->playStoredPlaylist(QStringLiteral("Focus")));
        const QString id = newMusicAction(QStringLiteral("{\"action\":1,\"shouldShuffle\":false}"));
        const auto run = m_host->run({QStringLiteral("run"), id});
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QCOMPARE(m_mpd->status().value_or(MpdTestServer::Status{}).state, QStringLiteral("pause"));
        QCOMPARE(m_mpd->queue().value_or(QStringList{}), focusSongs);
    }

    void aRunOfAMissingPlaylistFailsAndLeavesThePlayerAlone()
    {
        QVERIFY(startMusic());
        QVERIFY(m_mpd->playStoredPlaylist(QStringLiteral("Focus")));
        const QString id =
            newMusicAction(QStringLiteral("{\"action\":0,\"name\":\"Nope\",\"shouldShuffle\":false}"));
        const auto run = m_host->run({QStringLiteral("run"), id});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("Nope")), qPrintable(run.err));
        QCOMPARE(m_mpd->status().value_or(MpdTestServer::Status{}).state, QStringLiteral("play"));
        QCOMPARE(m_mpd->queue().value_or(QStringList{}), focusSongs);
    }

private:
    // A private MPD with two playlists, a served host, and the music plugin installed the way a plugin
    // installs itself: started once without a launch URL. Made once, for the end-to-end tests only.
    bool startMusic()
    {
        if (m_host) {
            return true;
        }
        qunsetenv("DISPLAY");
        qunsetenv("WAYLAND_DISPLAY");
        qunsetenv("QT_QPA_PLATFORM");
        m_mpd = std::make_unique<MpdTestServer>();
        for (const QString& song : roadTripSongs + focusSongs) {
            m_mpd->addSong(song);
        }
        m_mpd->addPlaylist(QStringLiteral("Road Trip"), roadTripSongs);
        m_mpd->addPlaylist(QStringLiteral("Focus"), focusSongs);
        if (!m_mpd->start()) {
            qWarning("%s", qPrintable(m_mpd->errorString()));
            return false;
        }
        qputenv("MPD_HOST", m_mpd->socketPath().toUtf8());
        qputenv("VENDEL_MUSIC", "mpd");

        m_data = std::make_unique<QTemporaryDir>();
        auto host = std::make_unique<HostProcess>(m_data->path());
        if (!host->serve()) {
            qWarning("%s", qPrintable(host->serverOutput()));
            return false;
        }
        QProcess install;
        install.setProcessEnvironment(host->environment());
        install.setProcessChannelMode(QProcess::ForwardedChannels);
        install.start(musicPlugin, {});
        if (!install.waitForFinished(30000) || install.exitCode() != 0) {
            return false;
        }
        const auto installed = HostStorage(m_data->path()).plugin(QFileInfo(musicPlugin).fileName());
        if (!installed || installed->path != QFileInfo(musicPlugin).canonicalFilePath()) {
            qWarning("the plugin did not install itself");
            return false;
        }
        m_host = std::move(host);
        return true;
    }

    // An action of the music plugin made and configured through the CLI, as a person would.
    QString newMusicAction(const QString& record)
    {
        const auto created = m_host->run({QStringLiteral("action"), QStringLiteral("new"),
                                          QFileInfo(musicPlugin).fileName(), QStringLiteral("--no-edit")});
        const QString id = created.out.trimmed();
        const auto set = m_host->run({QStringLiteral("config"), QStringLiteral("set"), id, record});
        return created.exitCode == 0 && set.exitCode == 0 ? id : QString();
    }

    QByteArray record() const
    {
        QFile file(m_directory->filePath(QStringLiteral("record")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MpdTestServer> m_mpd;
    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<HostProcess> m_host;
};

QTEST_GUILESS_MAIN(PluginLauncherTest)
#include "PluginLauncherTest.moc"
