// The player that "Music" stands for, chosen from the environment.
#pragma once

#include "MusicPlayer.h"

#include <memory>

namespace MusicPlugin {

// Which player "Music" stands for:
// - VENDEL_MUSIC=mpd: always MPD; VENDEL_MUSIC=mpris: always an MPRIS player; any other non-empty value
//   makes every command fail with MusicErrors::unknownError.
// - Unset or empty: MPD when it can be reached, otherwise an MPRIS player; the choice is made anew for every
//   command, so a player started or stopped later is taken into account.
// - MPD is reached at MPD_HOST and MPD_PORT (MPD_HOST may be "password@host", a host name, an address or a
//   socket path); without them at libmpdclient's default socket, then localhost.
// - VENDEL_MUSIC_PLAYER names the MPRIS player to use (see MprisMusicPlayer); it does not override MPD.
std::unique_ptr<MusicPlayer> makeMusicPlayer();

} // namespace MusicPlugin
