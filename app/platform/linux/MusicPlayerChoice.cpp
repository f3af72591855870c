// Chooses the player from VENDEL_MUSIC; each kind of player knows how to reach its own.
#include "MusicPlayerChoice.h"

#include "FallbackMusicPlayer.h"
#include "MpdMusicPlayer.h"
#include "MprisMusicPlayer.h"

#include <VendelSDK/TerminationSignals.h>

namespace MusicPlugin {

namespace {

// Stands for a misspelt VENDEL_MUSIC: guessing a player could drive one the user did not mean.
class MisconfiguredMusicPlayer final : public MusicPlayer
{
public:
    explicit MisconfiguredMusicPlayer(QString kind) : m_error(MusicErrors::unknownPlayerKind(kind)) {}

    ScriptOutcome setShuffle(bool) override { return m_error; }
    ScriptOutcome playPlaylist(const QString&) override { return m_error; }
    ScriptOutcome pause() override { return m_error; }
    PlaylistNames playlistNames() override { return m_error; }

private:
    ScriptErrorRecord m_error;
};

std::unique_ptr<MusicPlayer> makeMprisPlayer()
{
    // The players' bus waits let a termination signal through, as the SDK's own do.
    SdBus::setInterruption(
        {&VendelSDK::TerminationSignals::descriptor, &VendelSDK::TerminationSignals::deliverPending});
    return std::make_unique<MprisMusicPlayer>(SdBus::Bus::session(),
                                              qEnvironmentVariable("VENDEL_MUSIC_PLAYER"));
}

} // namespace

std::unique_ptr<MusicPlayer> makeMusicPlayer()
{
    const QString kind = qEnvironmentVariable("VENDEL_MUSIC").trimmed();
    if (kind.compare(u"mpd", Qt::CaseInsensitive) == 0) {
        return std::make_unique<MpdMusicPlayer>(MpdAddress::fromEnvironment());
    }
    if (kind.compare(u"mpris", Qt::CaseInsensitive) == 0) {
        return makeMprisPlayer();
    }
    if (!kind.isEmpty()) {
        return std::make_unique<MisconfiguredMusicPlayer>(kind);
    }
    return std::make_unique<FallbackMusicPlayer>(
        std::make_unique<MpdMusicPlayer>(MpdAddress::fromEnvironment()), makeMprisPlayer());
}

} // namespace MusicPlugin
