// Talks MPD's protocol through libmpdclient and turns its failures into the players' error records.
#include "MpdMusicPlayer.h"

#include <VendelSDK/TerminationSignals.h>

#include <QCoreApplication>

#include <mpd/client.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include <csignal>
#include <ctime>
#include <poll.h>
#include <pthread.h>

namespace MusicPlugin {

namespace {

QString connectionMessage(mpd_connection* connection)
{
    return QString::fromUtf8(mpd_connection_get_error_message(connection));
}

// The connection's failure as an error record. A server error leaves the connection usable, so it is cleared.
ScriptErrorRecord failureOf(mpd_connection* connection)
{
    switch (mpd_connection_get_error(connection)) {
    case MPD_ERROR_SERVER: {
        auto error = MusicErrors::failed(connectionMessage(connection));
        mpd_connection_clear_error(connection);
        return error;
    }
    case MPD_ERROR_TIMEOUT:
        return MusicErrors::noAnswer();
    case MPD_ERROR_CLOSED:
    case MPD_ERROR_SYSTEM:
    case MPD_ERROR_MALFORMED:
    case MPD_ERROR_RESOLVER:
        return MusicErrors::connectionLost();
    default:
        return MusicErrors::failed(connectionMessage(connection));
    }
}

bool isNoSuchObject(mpd_connection* connection)
{
    return mpd_connection_get_error(connection) == MPD_ERROR_SERVER &&
           mpd_connection_get_server_error(connection) == MPD_SERVER_ERROR_NO_EXIST;
}

// Receives the stored playlists' names, in the order MPD sends them, up to the end of the response.
QStringList receivePlaylists(mpd_connection* connection)
{
    QStringList names;
    while (mpd_playlist* playlist = mpd_recv_playlist(connection)) {
        names.append(QString::fromUtf8(mpd_playlist_get_path(playlist)));
        mpd_playlist_free(playlist);
    }
    return names;
}

PlaylistNames storedPlaylists(mpd_connection* connection)
{
    if (!mpd_send_list_playlists(connection)) {
        return failureOf(connection);
    }
    QStringList names = receivePlaylists(connection);
    if (!mpd_response_finish(connection)) {
        return failureOf(connection);
    }
    return names;
}

// What a play checks before it touches the queue: the stored playlists, and how many songs the queue holds.
struct QueueAndPlaylists
{
    QStringList playlists;
    unsigned queueLength = 0;
};

std::variant<QueueAndPlaylists, ScriptErrorRecord> queueAndPlaylists(mpd_connection* connection)
{
    if (!mpd_command_list_begin(connection, true) || !mpd_send_list_playlists(connection) ||
        !mpd_send_status(connection) || !mpd_command_list_end(connection)) {
        return failureOf(connection);
    }
    QueueAndPlaylists found;
    found.playlists = receivePlaylists(connection);
    if (!mpd_response_next(connection)) {
        return failureOf(connection);
    }
    mpd_status* status = mpd_recv_status(connection);
    if (status == nullptr) {
        return failureOf(connection);
    }
    found.queueLength = mpd_status_get_queue_length(status);
    mpd_status_free(status);
    if (!mpd_response_finish(connection)) {
        return failureOf(connection);
    }
    return found;
}

ScriptOutcome noResultOr(bool succeeded, mpd_connection* connection)
{
    if (!succeeded) {
        return failureOf(connection);
    }
    return ScriptNoResult{};
}

// The state of the status that is the next response; nothing when none could be read.
std::optional<mpd_state> receiveState(mpd_connection* connection)
{
    mpd_status* status = mpd_recv_status(connection);
    if (status == nullptr) {
        return std::nullopt;
    }
    const mpd_state state = mpd_status_get_state(status);
    mpd_status_free(status);
    return state;
}

// Waits for changes of the player until it plays or the deadline passes, and answers the state it ended
// in; nothing when the connection failed. MPD keeps the changes made since a client's last idle, so one
// that came before the wait began still ends it.
std::optional<mpd_state> waitWhileNotPlaying(mpd_connection* connection,
                                             std::chrono::steady_clock::time_point deadline)
{
    using namespace std::chrono;
    for (;;) {
        if (!mpd_send_idle_mask(connection, MPD_IDLE_PLAYER)) {
            return std::nullopt;
        }
        // A termination signal is carried out at once, which ends the process; any other signal only starts
        // the wait again with the time that remains.
        pollfd watched[] = {{mpd_connection_get_fd(connection), POLLIN, 0},
                            {VendelSDK::TerminationSignals::descriptor(), POLLIN, 0}};
        int ready = 0;
        for (;;) {
            const auto left = duration_cast<milliseconds>(deadline - steady_clock::now()).count();
            ready = left > 0 ? ::poll(watched, 2, int(std::min<milliseconds::rep>(left, INT_MAX))) : 0;
            if (ready < 0 && errno != EINTR) {
                break;
            }
            if (ready < 0 || (watched[1].revents & POLLIN) != 0) {
                VendelSDK::TerminationSignals::deliverPending();
                continue;
            }
            break;
        }
        // Leaving idle early is answered at once, with the changes so far, possibly none.
        if (ready <= 0 && !mpd_send_noidle(connection)) {
            return std::nullopt;
        }
        mpd_recv_idle(connection, false);
        if (!mpd_response_finish(connection) || !mpd_send_status(connection)) {
            return std::nullopt;
        }
        const auto state = receiveState(connection);
        if (!state || !mpd_response_finish(connection)) {
            return std::nullopt;
        }
        if (*state == MPD_STATE_PLAY || ready <= 0) {
            return state;
        }
    }
}

// libmpdclient writes with send() but without MSG_NOSIGNAL, so writing to a connection that MPD has closed
// raises SIGPIPE, whose default action ends the process. While one exists, SIGPIPE is blocked on this thread
// (the signal goes to the writing thread), and one raised meanwhile is discarded: the write fails with EPIPE.
class SigpipeBlocker
{
public:
    SigpipeBlocker()
    {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_previous);
    }

    ~SigpipeBlocker()
    {
        // A caller that already blocked SIGPIPE keeps whatever is pending; otherwise nothing could have been
        // pending before (an unblocked SIGPIPE is delivered at once), so a pending one was raised here.
        if (sigismember(&m_previous, SIGPIPE) == 1) {
            return;
        }
        sigset_t pending;
        sigpending(&pending);
        if (sigismember(&pending, SIGPIPE) == 1) {
            const timespec immediately{0, 0};
            sigtimedwait(&m_pipe, nullptr, &immediately);
        }
        pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
    }

    SigpipeBlocker(const SigpipeBlocker&) = delete;
    SigpipeBlocker& operator=(const SigpipeBlocker&) = delete;

private:
    sigset_t m_pipe;
    sigset_t m_previous;
};

} // namespace

MpdAddress MpdAddress::fromEnvironment()
{
    MpdAddress address;
    address.host = qgetenv("MPD_HOST");
    bool valid = false;
    const uint port = qEnvironmentVariableIntValue("MPD_PORT", &valid);
    if (valid && port > 0 && port <= 65535) {
        address.port = port;
    }
    return address;
}

void MpdMusicPlayer::ConnectionDeleter::operator()(mpd_connection* connection) const
{
    mpd_connection_free(connection);
}

std::chrono::milliseconds MpdMusicPlayer::timeoutFromEnvironment()
{
    bool valid = false;
    const double seconds = qEnvironmentVariable("MPD_TIMEOUT").trimmed().toDouble(&valid);
    // Whole milliseconds, at least one; a day at most, so the count fits libmpdclient's unsigned.
    if (!valid || !(seconds > 0)) {
        return defaultTimeout;
    }
    return std::chrono::milliseconds(qint64(std::clamp(seconds * 1000.0, 1.0, 86400000.0)));
}

MpdMusicPlayer::MpdMusicPlayer(MpdAddress address, std::chrono::milliseconds timeout)
    : m_address(std::move(address)), m_timeout(timeout)
{}

MpdMusicPlayer::~MpdMusicPlayer() = default;

std::optional<ScriptErrorRecord> MpdMusicPlayer::connect()
{
    // The same bound for connecting, which waits for MPD's greeting, and for every command after it.
    m_connection.reset(mpd_connection_new(m_address.host.isEmpty() ? nullptr : m_address.host.constData(),
                                          m_address.port, unsigned(m_timeout.count())));
    if (!m_connection) {
        //: The system's message when there was no memory left to connect to the music player
        return MusicErrors::failed(QCoreApplication::translate("MpdMusicPlayer", "Out of memory."));
    }
    const auto state = mpd_connection_get_error(m_connection.get());
    if (state == MPD_ERROR_SUCCESS) {
        return std::nullopt;
    }
    // MPD that answers but refuses (a wrong password) was reached: no other player should act instead.
    // Neither should one for an MPD that took the connection but never greeted: it runs, and hangs.
    auto error = state == MPD_ERROR_SERVER    ? MusicErrors::failed(connectionMessage(m_connection.get()))
                 : state == MPD_ERROR_TIMEOUT ? MusicErrors::noAnswer()
                                              : MusicErrors::notRunning();
    m_connection.reset();
    return error;
}

// Runs the command on the kept connection. When MPD closed that connection while it was idle, the command
// never reached it, so it is sent once more on a fresh connection.
template <typename Result, typename Command> Result MpdMusicPlayer::run(Command command)
{
    const SigpipeBlocker sigpipeBlocker;
    const bool reused = m_connection != nullptr;
    if (!reused) {
        if (auto error = connect()) {
            return *error;
        }
    }
    Result result = command(m_connection.get());
    auto state = mpd_connection_get_error(m_connection.get());
    if (reused && (state == MPD_ERROR_CLOSED || state == MPD_ERROR_SYSTEM)) {
        if (auto error = connect()) {
            return *error;
        }
        result = command(m_connection.get());
        state = mpd_connection_get_error(m_connection.get());
    }
    if (state != MPD_ERROR_SUCCESS) {
        m_connection.reset();
    }
    return result;
}

ScriptOutcome MpdMusicPlayer::setShuffle(bool enabled)
{
    return run<ScriptOutcome>([enabled](mpd_connection* connection) {
        return noResultOr(mpd_run_random(connection, enabled), connection);
    });
}

ScriptOutcome MpdMusicPlayer::playPlaylist(const QString& name)
{
    return run<ScriptOutcome>([this, &name](mpd_connection* connection) -> ScriptOutcome {
        auto checked = queueAndPlaylists(connection);
        if (auto* error = std::get_if<ScriptErrorRecord>(&checked)) {
            return *error;
        }
        const auto& [playlists, queueLength] = std::get<QueueAndPlaylists>(checked);
        if (!playlists.contains(name)) {
            return MusicErrors::playlistNotFound(name);
        }
        if (m_beforeLoad) {
            m_beforeLoad();
        }
        const QByteArray utf8 = name.toUtf8();
        // The load comes first, so that a playlist gone since the check stops the list with nothing changed.
        // Stopped, with the old songs gone, the queue has no current song: "play" starts as on a fresh queue.
        // The status comes back in the same round trip: "play" answers OK even when nothing can play (an
        // empty playlist), and only the state says whether anything does.
        const bool sent = mpd_command_list_begin(connection, false) &&
                          mpd_send_load(connection, utf8.constData()) && mpd_send_stop(connection) &&
                          (queueLength == 0 || mpd_send_delete_range(connection, 0, queueLength)) &&
                          mpd_send_play(connection) && mpd_send_status(connection) &&
                          mpd_command_list_end(connection);
        std::optional<mpd_state> state = sent ? receiveState(connection) : std::nullopt;
        const bool answered = state && mpd_response_finish(connection);
        if (!answered && isNoSuchObject(connection)) {
            mpd_connection_clear_error(connection);
            return MusicErrors::playlistNotFound(name);
        }
        if (!answered) {
            return failureOf(connection);
        }
        // Servers of the protocol that start playing in the background (Mopidy) still say "stop" here.
        if (*state != MPD_STATE_PLAY) {
            const auto deadline = std::chrono::steady_clock::now() + m_timeout;
            state = waitWhileNotPlaying(connection, deadline);
            if (!state) {
                return failureOf(connection);
            }
        }
        if (*state != MPD_STATE_PLAY) {
            return MusicErrors::notPlaying(QStringLiteral("MPD"), name);
        }
        return ScriptNoResult{};
    });
}

ScriptOutcome MpdMusicPlayer::pause()
{
    return run<ScriptOutcome>(
        [](mpd_connection* connection) { return noResultOr(mpd_run_pause(connection, true), connection); });
}

PlaylistNames MpdMusicPlayer::playlistNames()
{
    auto names = run<PlaylistNames>(storedPlaylists);
    if (auto* list = std::get_if<QStringList>(&names)) {
        std::sort(list->begin(), list->end(), [](const QString& left, const QString& right) {
            const int folded = left.compare(right, Qt::CaseInsensitive);
            return folded != 0 ? folded < 0 : left < right;
        });
    }
    return names;
}

} // namespace MusicPlugin
