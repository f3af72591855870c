// The players' error records, and the choice of player from the environment.
#include "MusicPlayer.h"

#include "FallbackMusicPlayer.h"
#include "MpdMusicPlayer.h"
#include "MprisMusicPlayer.h"

#include <QCoreApplication>

namespace VendelSDK {

namespace MusicErrors {

namespace {

// The full message names the application, as the scripting language does; the brief one does not.
ScriptErrorRecord musicError(qint64 number, const QString& brief)
{
    return ScriptErrorRecord{number, QStringLiteral("Music got an error: ") + brief, brief};
}

} // namespace

ScriptErrorRecord notRunning()
{
    const QString message = QStringLiteral("Application isn’t running.");
    return ScriptErrorRecord{applicationNotRunning, message, message};
}

ScriptErrorRecord connectionLost()
{
    return musicError(connectionInvalid, QStringLiteral("Connection is invalid."));
}

ScriptErrorRecord playlistsNotSupported(const QString& player)
{
    return musicError(messageNotUnderstood,
                      QStringLiteral("The player “%1” cannot play a playlist: it has no "
                                     "org.mpris.MediaPlayer2.Playlists interface.")
                          .arg(player));
}

ScriptErrorRecord noAnswer()
{
    return musicError(timedOut, QStringLiteral("AppleEvent timed out."));
}

ScriptErrorRecord playlistNotFound(const QString& name)
{
    return musicError(objectNotFound, QStringLiteral("Can’t get playlist \"%1\".").arg(name));
}

ScriptErrorRecord notPlaying(const QString& player, const QString& playlist)
{
    return musicError(
        eventFailed,
        //: A music player answered the command to play a playlist but did not start playing
        //: it; %1 is the player, %2 the playlist.
        QCoreApplication::translate("MusicErrors", "The player “%1” did not start playing the playlist “%2”.")
            .arg(player, playlist));
}

ScriptErrorRecord unknownPlayerKind(const QString& kind)
{
    return musicError(unknownError,
                      QStringLiteral("VENDEL_MUSIC must be “mpd” or “mpris”, not “%1”.").arg(kind));
}

ScriptErrorRecord failed(const QString& detail)
{
    QString sentence = detail.trimmed();
    if (sentence.isEmpty()) {
        sentence = QStringLiteral("The player failed.");
    } else if (!sentence.endsWith(u'.') && !sentence.endsWith(u'!') && !sentence.endsWith(u'?')) {
        sentence.append(u'.');
    }
    return musicError(eventFailed, sentence);
}

bool isNotRunning(const ScriptErrorRecord& error)
{
    return error.number == applicationNotRunning;
}

} // namespace MusicErrors

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

} // namespace VendelSDK
