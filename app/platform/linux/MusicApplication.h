// The application "Music" that scripts address: shuffle, play a playlist by name, pause.
//
// On Linux "Music" is the user's music player, chosen anew for every command:
// - MPD when it can be reached (MPD_HOST and MPD_PORT, else libmpdclient's default socket, then localhost);
//   otherwise a media player on the session bus that offers MPRIS (org.mpris.MediaPlayer2.*).
// - VENDEL_MUSIC=mpd or VENDEL_MUSIC=mpris uses only that kind; any other value fails every command.
// - VENDEL_MUSIC_PLAYER picks one MPRIS player by bus name or by the part after "org.mpris.MediaPlayer2.";
//   without it the playing player is preferred, then a paused one, then the first by name.
// Every command answers with no result. Failures: -600 "Application isn’t running." when no player can be
// reached; -1728 for a missing playlist; -1708 for an MPRIS player without playlists; -1712 when the player
// does not answer; -609 when the connection breaks; -10000 with the player's own message when it refuses;
// -2700 for an unknown VENDEL_MUSIC.
#pragma once

#include "MusicPlayer.h"
#include <VendelSDK/ScriptEngine.h>

#include <memory>

namespace MusicPlugin {

class MusicApplication final : public VendelSDK::ScriptApplication
{
public:
    explicit MusicApplication(std::unique_ptr<MusicPlayer> player);

    QStringList dictionary() const override;
    ScriptOutcome perform(qsizetype entry, const QStringList& arguments) override;

private:
    std::unique_ptr<MusicPlayer> m_player;
};

} // namespace MusicPlugin
