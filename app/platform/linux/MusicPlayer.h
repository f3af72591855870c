// A music player that "Music" can stand for: the three commands of its dictionary and its playlist names.
#pragma once

#include <VendelSDK/ScriptEngine.h>

#include <QStringList>

#include <memory>
#include <variant>

namespace MusicPlugin {

// The players answer as the script engine's applications do.
using VendelSDK::ScriptErrorRecord;
using VendelSDK::ScriptNoResult;
using VendelSDK::ScriptOutcome;

using PlaylistNames = std::variant<QStringList, ScriptErrorRecord>;

// Every command either succeeds with no result or fails with a record shaped as the scripting language
// reports it, so that the alert shown for it reads as it would on a platform with that language.
class MusicPlayer
{
public:
    virtual ~MusicPlayer() = default;

    virtual ScriptOutcome setShuffle(bool enabled) = 0;
    virtual ScriptOutcome playPlaylist(const QString& name) = 0;
    virtual ScriptOutcome pause() = 0;
    // Every playlist name in the player's own order, duplicates kept.
    virtual PlaylistNames playlistNames() = 0;
};

// The errors that the players report; numbers and texts follow the scripting language's own.
namespace MusicErrors {

// No player could be reached; nothing was done, so another player may be tried instead.
inline constexpr qint64 applicationNotRunning = -600;
// The connection broke while a command was under way.
inline constexpr qint64 connectionInvalid = -609;
// The player lacks what a command needs (an MPRIS player without playlists).
inline constexpr qint64 messageNotUnderstood = -1708;
// The player did not answer in time.
inline constexpr qint64 timedOut = -1712;
// The named playlist does not exist.
inline constexpr qint64 objectNotFound = -1728;
// VENDEL_MUSIC names no known kind of player.
inline constexpr qint64 unknownError = -2700;
// The player refused or failed the command; the message is the player's own, or says that it did not play.
inline constexpr qint64 eventFailed = -10000;

ScriptErrorRecord notRunning();
ScriptErrorRecord connectionLost();
ScriptErrorRecord playlistsNotSupported(const QString& player);
ScriptErrorRecord noAnswer();
ScriptErrorRecord playlistNotFound(const QString& name);
// The player took the playlist but did not start playing it; `player` is how the user knows the player.
ScriptErrorRecord notPlaying(const QString& player, const QString& playlist);
ScriptErrorRecord unknownPlayerKind(const QString& kind);
ScriptErrorRecord failed(const QString& detail);

bool isNotRunning(const ScriptErrorRecord& error);

} // namespace MusicErrors

} // namespace MusicPlugin
