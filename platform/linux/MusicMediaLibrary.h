// The media library on Linux: the playlists of the player that "Music" stands for.
#pragma once

#include "MusicPlayer.h"

#include "app/MediaLibrary.h"

#include <memory>

namespace VendelSDK {

class MusicMediaLibrary final : public MusicPlugin::MediaLibrary
{
public:
    explicit MusicMediaLibrary(std::unique_ptr<MusicPlayer> player);

    // Any failure of the player means the library cannot be opened; its reason is the player's message,
    // or, when no player runs, a sentence that says which players were looked for.
    std::variant<QStringList, Error> playlistNames() override;

private:
    std::unique_ptr<MusicPlayer> m_player;
};

} // namespace VendelSDK
