// Drives MPD through libmpdclient: shuffle is "random", a playlist replaces the queue, pause is "pause 1".
#pragma once

#include "MusicPlayer.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

struct mpd_connection;

namespace MusicPlugin {

// Where MPD listens. An empty host and port 0 leave the choice to libmpdclient: its default socket, then
// localhost. The host may be "password@host"; libmpdclient then sends the password after connecting.
struct MpdAddress
{
    QByteArray host;
    unsigned port = 0;

    // MPD_HOST and MPD_PORT, as MPD's own clients read them.
    static MpdAddress fromEnvironment();
};

// Keeps one connection between commands and reconnects once when MPD has meanwhile closed it (MPD closes
// idle clients), so that a command costs one round trip. Not thread-safe: one caller at a time.
class MpdMusicPlayer final : public MusicPlayer
{
public:
    // How long one command, connecting included, may wait for MPD by default. MPD answers from memory in
    // milliseconds, a large playlist's load included, so ten seconds only ever runs out on an MPD that
    // hangs; and a run, which sends two commands, still ends well inside the host's 60 seconds for it.
    static constexpr std::chrono::milliseconds defaultTimeout{10000};

    // MPD_TIMEOUT, in seconds as MPD's own client reads it (a fraction allowed); the default when it is
    // unset or not a positive number.
    static std::chrono::milliseconds timeoutFromEnvironment();

    explicit MpdMusicPlayer(MpdAddress address, std::chrono::milliseconds timeout = timeoutFromEnvironment());
    ~MpdMusicPlayer() override;
    MpdMusicPlayer(const MpdMusicPlayer&) = delete;
    MpdMusicPlayer& operator=(const MpdMusicPlayer&) = delete;

    ScriptOutcome setShuffle(bool enabled) override;
    // Checks that the stored playlist exists, reading the queue's length in the same round trip; then, in
    // one command list, loads the playlist after the queue, stops, removes the songs that were there, plays
    // and reads the status. A load that fails (the playlist went in between) ends the list before anything
    // else: the queue and its current song stay as they were. Play is sent without a position on a queue
    // that has no current song, so it starts at the first song or, with random on, at one MPD picks. When
    // the server does not play afterwards, the command waits for its player to change, at most the
    // time-out, and fails with MusicErrors::notPlaying when it still does not play (an empty playlist, songs
    // it cannot decode).
    ScriptOutcome playPlaylist(const QString& name) override;
    ScriptOutcome pause() override;
    // MPD keeps no order of its own, so the names come sorted: case-insensitively, then by case.
    PlaylistNames playlistNames() override;

    // Runs between a play's check of the playlist and its load, where another client may change MPD's
    // playlists; tests remove the playlist there.
    void setBeforeLoad(std::function<void()> hook) { m_beforeLoad = std::move(hook); }

private:
    struct ConnectionDeleter
    {
        void operator()(mpd_connection* connection) const;
    };
    using Connection = std::unique_ptr<mpd_connection, ConnectionDeleter>;

    // Nothing on success, otherwise why MPD could not be used.
    std::optional<ScriptErrorRecord> connect();
    template <typename Result, typename Command> Result run(Command command);

    MpdAddress m_address;
    std::chrono::milliseconds m_timeout;
    Connection m_connection;
    std::function<void()> m_beforeLoad;
};

} // namespace MusicPlugin
