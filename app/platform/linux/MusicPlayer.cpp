// The players' error records, as the scripting language words them.
#include "MusicPlayer.h"

#include <QCoreApplication>

namespace MusicPlugin {

namespace MusicErrors {

namespace {

// The full message names the application, as the scripting language does; the brief one does not.
ScriptErrorRecord musicError(qint64 number, const QString& brief)
{
    //: The scripting language's message for an error of the application Music; %1 is its brief message
    return ScriptErrorRecord{
        number, QCoreApplication::translate("MusicPlayer", "Music got an error: %1").arg(brief), brief};
}

} // namespace

ScriptErrorRecord notRunning()
{
    //: The system's message when the music player is not running
    const QString message = QCoreApplication::translate("MusicPlayer", "Application isn’t running.");
    return ScriptErrorRecord{applicationNotRunning, message, message};
}

ScriptErrorRecord connectionLost()
{
    //: The system's message when the connection to the music player was lost
    return musicError(connectionInvalid,
                      QCoreApplication::translate("MusicPlayer", "Connection is invalid."));
}

ScriptErrorRecord playlistsNotSupported(const QString& player)
{
    return musicError(messageNotUnderstood,
                      //: %1 is the music player's bus name; the interface's name stays as it is
                      QCoreApplication::translate("MusicPlayer",
                                                  "The player “%1” cannot play a playlist: it has no "
                                                  "org.mpris.MediaPlayer2.Playlists interface.")
                          .arg(player));
}

ScriptErrorRecord noAnswer()
{
    //: The system's message when the music player did not answer in time
    return musicError(timedOut, QCoreApplication::translate("MusicPlayer", "AppleEvent timed out."));
}

ScriptErrorRecord playlistNotFound(const QString& name)
{
    //: The system's message for a playlist that the music player does not have; %1 is its name
    return musicError(objectNotFound,
                      QCoreApplication::translate("MusicPlayer", "Can’t get playlist \"%1\".").arg(name));
}

ScriptErrorRecord notPlaying(const QString& player, const QString& playlist)
{
    return musicError(
        eventFailed,
        //: A music player answered the command to play a playlist but did not start playing
        //: it; %1 is the player, %2 the playlist.
        QCoreApplication::translate("MusicPlayer", "The player “%1” did not start playing the playlist “%2”.")
            .arg(player, playlist));
}

ScriptErrorRecord unknownPlayerKind(const QString& kind)
{
    return musicError(
        unknownError,
        //: %1 is the environment variable's value; the variable's name and values stay as they are
        QCoreApplication::translate("MusicPlayer", "VENDEL_MUSIC must be “mpd” or “mpris”, not “%1”.")
            .arg(kind));
}

ScriptErrorRecord failed(const QString& detail)
{
    QString sentence = detail.trimmed();
    if (sentence.isEmpty()) {
        //: The music player reported a failure without saying why
        sentence = QCoreApplication::translate("MusicPlayer", "The player failed.");
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

} // namespace MusicPlugin
