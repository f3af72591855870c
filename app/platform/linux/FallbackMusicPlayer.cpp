// Tries the preferred player, then the other when the first cannot be reached.
#include "FallbackMusicPlayer.h"

namespace MusicPlugin {

FallbackMusicPlayer::FallbackMusicPlayer(std::unique_ptr<MusicPlayer> preferred,
                                         std::unique_ptr<MusicPlayer> fallback)
    : m_preferred(std::move(preferred)), m_fallback(std::move(fallback))
{}

template <typename Result, typename Command> Result FallbackMusicPlayer::run(Command command)
{
    Result result = command(*m_preferred);
    const auto* error = std::get_if<ScriptErrorRecord>(&result);
    if (error && MusicErrors::isNotRunning(*error)) {
        return command(*m_fallback);
    }
    return result;
}

ScriptOutcome FallbackMusicPlayer::setShuffle(bool enabled)
{
    return run<ScriptOutcome>([enabled](MusicPlayer& player) { return player.setShuffle(enabled); });
}

ScriptOutcome FallbackMusicPlayer::playPlaylist(const QString& name)
{
    return run<ScriptOutcome>([&name](MusicPlayer& player) { return player.playPlaylist(name); });
}

ScriptOutcome FallbackMusicPlayer::pause()
{
    return run<ScriptOutcome>([](MusicPlayer& player) { return player.pause(); });
}

PlaylistNames FallbackMusicPlayer::playlistNames()
{
    return run<PlaylistNames>([](MusicPlayer& player) { return player.playlistNames(); });
}

} // namespace MusicPlugin
