// Stands for the first of two players that can be reached: MPD when it runs, an MPRIS player otherwise.
#pragma once

#include "MusicPlayer.h"

#include <memory>

namespace MusicPlugin {

// Every command goes to the preferred player first. Only when that one reports that it cannot be reached
// (MusicErrors::applicationNotRunning, which promises that nothing was done) does it go to the other;
// any other failure is the answer, because the preferred player did receive the command.
class FallbackMusicPlayer final : public MusicPlayer
{
public:
    FallbackMusicPlayer(std::unique_ptr<MusicPlayer> preferred, std::unique_ptr<MusicPlayer> fallback);

    ScriptOutcome setShuffle(bool enabled) override;
    ScriptOutcome playPlaylist(const QString& name) override;
    ScriptOutcome pause() override;
    PlaylistNames playlistNames() override;

private:
    template <typename Result, typename Command> Result run(Command command);

    std::unique_ptr<MusicPlayer> m_preferred;
    std::unique_ptr<MusicPlayer> m_fallback;
};

} // namespace MusicPlugin
