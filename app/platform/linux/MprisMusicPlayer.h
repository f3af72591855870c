// Drives a media player over the session bus through its MPRIS interfaces.
#pragma once

#include "MusicPlayer.h"
#include "SdBus.h"

#include <chrono>

namespace MusicPlugin {

namespace SdBus = VendelSDK::SdBus;

// Which player: every name on the bus that starts with "org.mpris.MediaPlayer2." (instance suffixes such as
// ".instance42" included), looked up anew for every command.
// - A requested player (VENDEL_MUSIC_PLAYER) is given either as its full bus name or as the part after the
//   prefix; the part also matches that player's instances ("vlc" matches "org.mpris.MediaPlayer2.vlc" and
//   "org.mpris.MediaPlayer2.vlc.instance7"); an exact match wins, then the first by name. A requested player
//   that is not on the bus is not running: no other player stands in for it.
// - Otherwise the only player; with several, the first by name whose PlaybackStatus is "Playing", else the
// first
//   by name that is "Paused", else the first by name. Names sort by their text, so the choice is the same
//   every time for the same players.
// Commands: shuffle sets the Player's Shuffle property; a playlist is looked up by its name among the
// Playlists interface's GetPlaylists and started with ActivatePlaylist (the first of equal names); pause is
// Player.Pause.
// Playing is checked, not trusted: some players answer ActivatePlaylist and then do not play (one takes it
// as play/pause while it plays, another skips to the next track of the playlist that plays). So a player
// whose PlaybackStatus is "Playing" or "Paused" is stopped first, and waited for until it no longer is; a
// stopped player starts a playlist afresh on every player seen. A player that then refuses the activation is
// put back as it was: Play, and Pause again when it had been paused. After ActivatePlaylist the command waits
// until PlaybackStatus is "Playing" with the requested playlist active (players that never report an active
// playlist are taken at their status), as the player announces it with PropertiesChanged.
// Every command, with all its calls and waits, ends within the time-out given at construction: a player
// that does not answer in time fails with MusicErrors::timedOut, one that answers but does not play with
// MusicErrors::notPlaying. A player that cannot tell its status in time is not passed over for another.
class MprisMusicPlayer final : public MusicPlayer
{
public:
    static constexpr auto busNamePrefix = "org.mpris.MediaPlayer2.";
    // How long one command may take. Players answer in milliseconds and start a local playlist in well
    // under a second; a run's two commands still end far inside the host's 60 seconds for a run.
    static constexpr std::chrono::milliseconds defaultTimeout{10000};

    explicit MprisMusicPlayer(SdBus::Bus bus, QString requestedPlayer = {},
                              std::chrono::milliseconds timeout = defaultTimeout);

    ScriptOutcome setShuffle(bool enabled) override;
    ScriptOutcome playPlaylist(const QString& name) override;
    ScriptOutcome pause() override;
    // In the player's own order ("UserDefined") when it offers that ordering, else in its first ordering.
    PlaylistNames playlistNames() override;

    // The bus name that commands go to now, or why there is none.
    std::variant<QString, ScriptErrorRecord> choosePlayer() const;

private:
    using Deadline = std::chrono::steady_clock::time_point;

    struct Playlist
    {
        QString id;
        QString name;
    };
    using Playlists = std::variant<QList<Playlist>, ScriptErrorRecord>;

    Deadline deadline() const;
    // Every command's prologue: one deadline for all its calls and waits, then the player, or why there is
    // none; `command` gets both.
    template <class Result, class Command> Result withPlayer(Command command) const;
    std::variant<QString, ScriptErrorRecord> choosePlayer(Deadline deadline) const;
    Playlists playlists(const QString& player, Deadline deadline) const;
    // Activates the playlist and waits until it plays. A player that refuses is put back as it was.
    ScriptOutcome activate(const QString& player, const Playlist& playlist, Deadline deadline) const;
    // Why the player refused the activation: a playlist it no longer lists is the missing playlist.
    ScriptErrorRecord refusal(const QString& player, const Playlist& playlist, const SdBus::Error& error,
                              Deadline deadline) const;
    SdBus::Reply call(const QString& player, const char* interface, const char* method, Deadline deadline,
                      const std::function<void(SdBus::Message&)>& arguments = {}) const;

    SdBus::Bus m_bus;
    QString m_requestedPlayer;
    std::chrono::milliseconds m_timeout;
};

} // namespace MusicPlugin
