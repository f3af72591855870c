// The media library on Linux: the playlists of the player that "Music" stands for.
#pragma once

#include "MusicPlayer.h"

#include "MediaLibrary.h"

#include <memory>

namespace MusicPlugin {

class MusicMediaLibrary final : public MediaLibrary
{
public:
    explicit MusicMediaLibrary(std::unique_ptr<MusicPlayer> player);

    // Any failure of the player means the library cannot be opened; its reason is the player's message,
    // or, when no player runs, a sentence that says which players were looked for.
    std::variant<QStringList, VendelSDK::Error> playlistNames() override;

private:
    std::unique_ptr<MusicPlayer> m_player;
};

} // namespace MusicPlugin
