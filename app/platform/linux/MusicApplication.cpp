// Maps the dictionary entries of "Music" onto the chosen player's commands.
#include "MusicApplication.h"

#include "MusicPlayerChoice.h"

#include "MusicScriptApplication.h"

#include <QCoreApplication>

namespace MusicPlugin {

namespace {

enum Entry : qsizetype
{
    setShuffleEntry,
    playPlaylistEntry,
    pauseEntry,
};

} // namespace

MusicApplication::MusicApplication(std::unique_ptr<MusicPlayer> player) : m_player(std::move(player)) {}

QStringList MusicApplication::dictionary() const
{
    // In the order of Entry.
    return {QStringLiteral("set shuffle enabled to %b"), QStringLiteral("play playlist %s"),
            QStringLiteral("pause")};
}

ScriptOutcome MusicApplication::perform(qsizetype entry, const QStringList& arguments)
{
    switch (entry) {
    case setShuffleEntry:
        if (arguments.size() == 1) {
            return m_player->setShuffle(arguments.first() == u"true");
        }
        break;
    case playPlaylistEntry:
        if (arguments.size() == 1) {
            return m_player->playPlaylist(arguments.first());
        }
        break;
    case pauseEntry:
        if (arguments.isEmpty()) {
            return m_player->pause();
        }
        break;
    default:
        break;
    }
    // Only a caller that bypassed the dictionary gets here.
    //: The system's message for a command that the application Music does not know
    const QString brief =
        QCoreApplication::translate("MusicApplication", "Music doesn’t understand the command.");
    return ScriptErrorRecord{MusicErrors::messageNotUnderstood, brief, brief};
}

std::unique_ptr<VendelSDK::ScriptApplication> makePlatformMusicApplication()
{
    return std::make_unique<MusicApplication>(makeMusicPlayer());
}

} // namespace MusicPlugin
