// Drives a media player over the session bus through its MPRIS interfaces.
#pragma once

#include "MusicPlayer.h"
#include "SdBus.h"

namespace VendelSDK {

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
// Player.Pause. Calls keep the bus's default time-out.
class MprisMusicPlayer final : public MusicPlayer
{
public:
    static constexpr auto busNamePrefix = "org.mpris.MediaPlayer2.";

    explicit MprisMusicPlayer(SdBus::Bus bus, QString requestedPlayer = {});

    ScriptOutcome setShuffle(bool enabled) override;
    ScriptOutcome playPlaylist(const QString& name) override;
    ScriptOutcome pause() override;
    // In the player's own order ("UserDefined") when it offers that ordering, else in its first ordering.
    PlaylistNames playlistNames() override;

    // The bus name that commands go to now, or why there is none.
    std::variant<QString, ScriptErrorRecord> choosePlayer() const;

private:
    struct Playlist
    {
        QString id;
        QString name;
    };
    using Playlists = std::variant<QList<Playlist>, ScriptErrorRecord>;

    Playlists playlists(const QString& player) const;
    SdBus::Reply call(const QString& player, const char* interface, const char* method,
                      const std::function<void(SdBus::Message&)>& arguments = {}) const;

    SdBus::Bus m_bus;
    QString m_requestedPlayer;
};

} // namespace VendelSDK
