// Tells the music player what to do through one-line scripts, and shows their failures to the user.
#pragma once

#include <VendelSDK/Error.h>
#include <VendelSDK/ScriptEngine.h>

#include <QString>

namespace MusicPlugin {

class MusicAppController
{
public:
    // Runs the source; a failure is shown in a modal alert before this returns. Nothing is reported back.
    void runScript(const QString& source);
    // Sets shuffle, then plays the named playlist, as two scripts in that order whatever the first did.
    void play(const QString& playlist, bool shuffle);

    static QString shuffleScript(bool shuffle);
    static QString playScript(const QString& playlist);
    static QString pauseScript();

    // The error that a failed script's record becomes: OS-status domain, the record's number or -1753,
    // the message as failure reason and the brief message as description, each left out when missing.
    static VendelSDK::Error errorFrom(const VendelSDK::ScriptErrorRecord& record);
};

} // namespace MusicPlugin
