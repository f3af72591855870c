// Starts /usr/bin/mpd on a socket in a temporary folder and drives it through libmpdclient for checks.
#include "MpdTestServer.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>
#include <QtEndian>

#include <mpd/client.h>

#include <csignal>

namespace VendelSDK::Testing {

namespace {

constexpr int startTimeoutMs = 20000;
constexpr quint32 sampleRate = 4000;

QByteArray quotedForConfig(const QString& text)
{
    QByteArray escaped = text.toUtf8();
    escaped.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + escaped + '"';
}

// An 8-bit mono PCM WAV file of silence; MPD's decoders read it and report its duration.
QByteArray silentWave(int seconds)
{
    const quint32 dataSize = sampleRate * static_cast<quint32>(seconds);
    QByteArray wave;
    const auto append32 = [&wave](quint32 value) {
        const quint32 little = qToLittleEndian(value);
        wave.append(reinterpret_cast<const char*>(&little), 4);
    };
    const auto append16 = [&wave](quint16 value) {
        const quint16 little = qToLittleEndian(value);
        wave.append(reinterpret_cast<const char*>(&little), 2);
    };
    wave.append("RIFF");
    append32(36 + dataSize);
    wave.append("WAVEfmt ");
    append32(16);         // format chunk size
    append16(1);          // PCM
    append16(1);          // mono
    append32(sampleRate); // samples per second
    append32(sampleRate); // bytes per second
    append16(1);          // block alignment
    append16(8);          // bits per sample
    wave.append("data");
    append32(dataSize);
    wave.append(QByteArray(static_cast<qsizetype>(dataSize), '\x80'));
    return wave;
}

} // namespace

bool writeSilentSong(const QString& path, int seconds)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(silentWave(seconds)) > 0;
}

void MpdTestServer::ConnectionDeleter::operator()(mpd_connection* connection) const
{
    mpd_connection_free(connection);
}

MpdTestServer::MpdTestServer() : m_server("mpd", {"music", "playlists"}) {}

MpdTestServer::~MpdTestServer() = default;

void MpdTestServer::addSong(const QString& relativePath, int seconds)
{
    if (writeSilentSong(m_server.filePath(QStringLiteral("music/") + relativePath), seconds)) {
        ++m_songCount;
    }
}

void MpdTestServer::addPlaylist(const QString& name, const QStringList& songs)
{
    QFile file(m_server.filePath(QStringLiteral("playlists/") + name + QStringLiteral(".m3u")));
    if (file.open(QIODevice::WriteOnly)) {
        for (const QString& song : songs) {
            file.write(song.toUtf8() + '\n');
        }
    }
}

void MpdTestServer::setDefaultPermissions(const QString& permissions, const QString& password)
{
    m_permissions = permissions;
    m_password = password;
}

QString MpdTestServer::socketPath() const
{
    return m_server.filePath(QStringLiteral("socket"));
}

bool MpdTestServer::writeConfig()
{
    QFile config(m_server.filePath(QStringLiteral("mpd.conf")));
    if (!config.open(QIODevice::WriteOnly)) {
        return false;
    }
    const auto setting = [&config](const char* name, const QString& value) {
        config.write(QByteArray(name) + ' ' + quotedForConfig(value) + '\n');
    };
    setting("music_directory", m_server.filePath(QStringLiteral("music")));
    setting("playlist_directory", m_server.filePath(QStringLiteral("playlists")));
    setting("db_file", m_server.filePath(QStringLiteral("database")));
    setting("log_file", m_server.filePath(QStringLiteral("log")));
    setting("bind_to_address", socketPath());
    setting("auto_update", QStringLiteral("no"));
    setting("zeroconf_enabled", QStringLiteral("no"));
    if (!m_permissions.isEmpty()) {
        setting("default_permissions", m_permissions);
        setting("password", m_password + QStringLiteral("@read,add,control,admin"));
    }
    config.write("audio_output {\n    type \"null\"\n    name \"null\"\n}\n");
    return true;
}

QString MpdTestServer::logTail() const
{
    return m_server.tail({"log"});
}

bool MpdTestServer::fail(const QString& reason)
{
    m_error = reason + u'\n' + logTail();
    stop();
    return false;
}

bool MpdTestServer::start()
{
    const QString mpd = QStandardPaths::findExecutable(
        QStringLiteral("mpd"), {QStringLiteral("/usr/bin"), QStringLiteral("/usr/sbin")});
    if (mpd.isEmpty()) {
        m_error = QStringLiteral("mpd is not installed (scripts/setup installs it)");
        return false;
    }
    if (!writeConfig()) {
        m_error = QStringLiteral("Cannot write the configuration");
        return false;
    }
    if (!m_server.start(mpd, {QStringLiteral("--no-daemon"), m_server.filePath(QStringLiteral("mpd.conf"))},
                        m_error)) {
        return fail(m_error);
    }
    Connection connection;
    const bool answered = QTest::qWaitFor(
        [&] {
            connection = connect();
            return connection != nullptr || !m_server.isRunning();
        },
        startTimeoutMs);
    if (!answered || !connection) {
        return fail(QStringLiteral("mpd did not answer on its socket"));
    }
    if (!mpd_run_update(connection.get(), nullptr)) {
        return fail(QStringLiteral("update failed: ") +
                    QString::fromUtf8(mpd_connection_get_error_message(connection.get())));
    }
    unsigned songs = 0;
    const bool indexed = QTest::qWaitFor(
        [&] {
            mpd_status* status = mpd_run_status(connection.get());
            if (!status) {
                return true;
            }
            const bool updating = mpd_status_get_update_id(status) != 0;
            mpd_status_free(status);
            if (updating) {
                return false;
            }
            mpd_stats* stats = mpd_run_stats(connection.get());
            if (!stats) {
                return true;
            }
            songs = mpd_stats_get_number_of_songs(stats);
            mpd_stats_free(stats);
            return true;
        },
        startTimeoutMs);
    if (!indexed || songs != static_cast<unsigned>(m_songCount)) {
        return fail(QStringLiteral("mpd indexed %1 of %2 songs").arg(songs).arg(m_songCount));
    }
    return true;
}

void MpdTestServer::stop()
{
    m_server.stop();
}

bool MpdTestServer::isRunning() const
{
    return m_server.isRunning();
}

bool MpdTestServer::freeze()
{
    return isRunning() && ::kill(pid_t(m_server.processId()), SIGSTOP) == 0;
}

bool MpdTestServer::thaw()
{
    return isRunning() && ::kill(pid_t(m_server.processId()), SIGCONT) == 0;
}

MpdTestServer::Connection MpdTestServer::connect() const
{
    const QByteArray host =
        (m_password.isEmpty() ? QString() : m_password + u'@').toUtf8() + socketPath().toUtf8();
    Connection connection(mpd_connection_new(host.constData(), 0, 5000));
    if (!connection || mpd_connection_get_error(connection.get()) != MPD_ERROR_SUCCESS) {
        return nullptr;
    }
    return connection;
}

std::optional<MpdTestServer::Status> MpdTestServer::status() const
{
    const auto connection = connect();
    return connection ? statusOf(connection.get()) : std::nullopt;
}

std::optional<MpdTestServer::Status> MpdTestServer::statusOf(mpd_connection* connection)
{
    mpd_status* status = mpd_run_status(connection);
    if (!status) {
        return std::nullopt;
    }
    Status result;
    result.random = mpd_status_get_random(status);
    switch (mpd_status_get_state(status)) {
    case MPD_STATE_PLAY:
        result.state = QStringLiteral("play");
        break;
    case MPD_STATE_PAUSE:
        result.state = QStringLiteral("pause");
        break;
    case MPD_STATE_STOP:
        result.state = QStringLiteral("stop");
        break;
    default:
        result.state = QStringLiteral("unknown");
        break;
    }
    result.queueLength = mpd_status_get_queue_length(status);
    result.songPosition = mpd_status_get_song_pos(status);
    result.songId = mpd_status_get_song_id(status);
    mpd_status_free(status);
    return result;
}

std::optional<QStringList> MpdTestServer::queue() const
{
    const auto connection = connect();
    if (!connection || !mpd_send_list_queue_meta(connection.get())) {
        return std::nullopt;
    }
    QStringList songs;
    while (mpd_song* song = mpd_recv_song(connection.get())) {
        songs.append(QString::fromUtf8(mpd_song_get_uri(song)));
        mpd_song_free(song);
    }
    if (!mpd_response_finish(connection.get())) {
        return std::nullopt;
    }
    return songs;
}

bool MpdTestServer::reset() const
{
    const auto connection = connect();
    return connection && mpd_run_clear(connection.get()) && mpd_run_random(connection.get(), false);
}

bool MpdTestServer::playStoredPlaylist(const QString& name) const
{
    const auto connection = connect();
    return connection && mpd_run_clear(connection.get()) &&
           mpd_run_load(connection.get(), name.toUtf8().constData()) && mpd_run_play(connection.get());
}

} // namespace VendelSDK::Testing
