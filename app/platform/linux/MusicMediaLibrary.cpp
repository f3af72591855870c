// Reads the playlist names from the chosen player and turns its failures into the library's error.
#include "MusicMediaLibrary.h"

#include "MusicPlayerChoice.h"

namespace MusicPlugin {

MusicMediaLibrary::MusicMediaLibrary(std::unique_ptr<MusicPlayer> player) : m_player(std::move(player)) {}

std::variant<QStringList, VendelSDK::Error> MusicMediaLibrary::playlistNames()
{
    auto names = m_player->playlistNames();
    if (auto* list = std::get_if<QStringList>(&names)) {
        return std::move(*list);
    }
    const auto& error = std::get<ScriptErrorRecord>(names);
    const QString reason =
        MusicErrors::isNotRunning(error)
            //: Why the playlists cannot be read when neither kind of music player answers.
            ? QCoreApplication::translate("MediaLibrary",
                                          "No music player could be reached: start MPD or a player that "
                                          "offers MPRIS.")
            : error.briefMessage.value_or(error.message.value_or(QString()));
    return cannotOpenMediaLibraryError(reason);
}

std::unique_ptr<MediaLibrary> makePlatformMediaLibrary()
{
    return std::make_unique<MusicMediaLibrary>(makeMusicPlayer());
}

} // namespace MusicPlugin
