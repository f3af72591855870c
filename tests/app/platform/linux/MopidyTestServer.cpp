// Starts /usr/bin/mopidy on a private folder and socket, and reads its state over MPD's protocol.
#include "MopidyTestServer.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <mpd/client.h>

namespace VendelSDK::Testing {

namespace {

constexpr int startTimeoutMs = 30000;

} // namespace

MopidyTestServer::MopidyTestServer() : m_server("mopidy", {"music", "playlists", "data", "cache"}) {}

MopidyTestServer::~MopidyTestServer() = default;

void MopidyTestServer::addSong(const QString& relativePath, int seconds)
{
    writeSilentSong(m_server.filePath(QStringLiteral("music/") + relativePath), seconds);
}

void MopidyTestServer::addPlaylist(const QString& name, const QStringList& songs)
{
    QFile file(m_server.filePath(QStringLiteral("playlists/") + name + QStringLiteral(".m3u8")));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("#EXTM3U\n");
        for (const QString& song : songs) {
            file.write(m_server.filePath(QStringLiteral("music/") + song).toUtf8() + '\n');
        }
    }
}

bool MopidyTestServer::writeConfig() const
{
    // fakesink would swallow a song at once and end it; with sync it plays in real time, as a device does.
    // Zeroconf would look for the system bus, which a test machine may not have.
    const QString config = QStringLiteral(R"([core]
cache_dir = %1/cache
config_dir = %1
data_dir = %1/data
[logging]
verbosity = 0
[audio]
output = fakesink sync=true
[file]
enabled = true
media_dirs = %1/music
[m3u]
enabled = true
base_dir = %1/music
playlists_dir = %1/playlists
default_extension = .m3u8
[mpd]
enabled = true
hostname = unix:%2
zeroconf =
[mpris]
enabled = true
bus_type = session
[http]
enabled = false
[stream]
enabled = false
)")
                               .arg(m_server.folder(), socketPath());
    QFile file(m_server.filePath(QStringLiteral("mopidy.conf")));
    return file.open(QIODevice::WriteOnly) && file.write(config.toUtf8()) > 0;
}

QString MopidyTestServer::socketPath() const
{
    return m_server.filePath(QStringLiteral("mpd.socket"));
}

QString MopidyTestServer::logTail() const
{
    return m_server.tail();
}

bool MopidyTestServer::fail(const QString& reason)
{
    m_error = reason + u'\n' + logTail();
    stop();
    return false;
}

bool MopidyTestServer::start()
{
    const QString mopidy = QStandardPaths::findExecutable(QStringLiteral("mopidy"));
    if (mopidy.isEmpty()) {
        m_error = QStringLiteral("mopidy is not installed (scripts/setup installs it)");
        return false;
    }
    if (!writeConfig()) {
        m_error = QStringLiteral("Cannot write the configuration");
        return false;
    }
    if (!m_server.start(mopidy,
                        {QStringLiteral("--config"), m_server.filePath(QStringLiteral("mopidy.conf"))},
                        m_error)) {
        return fail(m_error);
    }
    const auto* bus = QDBusConnection::sessionBus().interface();
    const bool answered = QTest::qWaitFor(
        [&] {
            return !m_server.isRunning() ||
                   (bus && bus->isServiceRegistered(QString::fromLatin1(busName)).value() && connect());
        },
        startTimeoutMs);
    if (!answered || !m_server.isRunning()) {
        return fail(QStringLiteral("mopidy did not answer on the bus and its socket"));
    }
    return true;
}

void MopidyTestServer::stop()
{
    m_server.stop();
}

MpdTestServer::Connection MopidyTestServer::connect() const
{
    MpdTestServer::Connection connection(mpd_connection_new(socketPath().toUtf8().constData(), 0, 10000));
    if (!connection || mpd_connection_get_error(connection.get()) != MPD_ERROR_SUCCESS) {
        return nullptr;
    }
    return connection;
}

std::optional<MpdTestServer::Status> MopidyTestServer::status() const
{
    const auto connection = connect();
    return connection ? MpdTestServer::statusOf(connection.get()) : std::nullopt;
}

QString MopidyTestServer::currentSong() const
{
    const auto connection = connect();
    mpd_song* song = connection ? mpd_run_current_song(connection.get()) : nullptr;
    if (!song) {
        return {};
    }
    QString uri = QString::fromUtf8(mpd_song_get_uri(song));
    mpd_song_free(song);
    // Mopidy names songs by file URI.
    const QString music = QStringLiteral("file://") + m_server.filePath(QStringLiteral("music/"));
    return uri.startsWith(music) ? uri.mid(music.size()) : uri;
}

bool MopidyTestServer::reset() const
{
    const auto connection = connect();
    return connection && mpd_run_stop(connection.get()) && mpd_run_clear(connection.get()) &&
           mpd_run_random(connection.get(), false);
}

} // namespace VendelSDK::Testing
