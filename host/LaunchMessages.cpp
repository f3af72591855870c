// One place for these texts, so that the window and the desktop's notifications say the same thing.
#include "LaunchMessages.h"

#include <QFileInfo>

namespace VendelHost {

QString LaunchMessages::notStarted(Verb verb, const QString& label)
{
    switch (verb) {
    case Verb::Run:
        //: Headline of a run that did not start; %1 is the action's title; the reason follows
        return tr("“%1” did not run.").arg(label);
    case Verb::Edit:
        //: Headline of an edit that did not start; %1 is the action's title; the reason follows
        return tr("“%1” could not be opened in its editor.").arg(label);
    case Verb::Configure:
        break;
    }
    //: Headline of a plugin's preferences that did not open; %1 is the plugin's display name
    return tr("The preferences of %1 could not be opened.").arg(label);
}

QString LaunchMessages::endedBadly(Verb verb, const QString& label, int exitStatus)
{
    switch (verb) {
    case Verb::Run:
        if (exitStatus > 0) {
            //: A run ended with a failure status; %1 is the action's title, %2 the status (a number)
            return tr("“%1” failed: its plugin ended with exit status %2.").arg(label).arg(exitStatus);
        }
        //: A run crashed or was stopped at the time limit; the host's own sentence saying which follows
        return tr("“%1” did not finish by itself.").arg(label);
    case Verb::Edit:
        //: An editor's process failed; %1 is the action's title; the host's own sentence follows
        return tr("The editor of “%1” ended with a failure.").arg(label);
    case Verb::Configure:
        break;
    }
    //: A preferences window's process failed; %1 is the plugin's display name; the host's sentence follows
    return tr("The preferences of %1 ended with a failure.").arg(label);
}

QString LaunchMessages::stillRunning()
{
    //: Reason: the action's earlier run is under way (one run of an action at a time)
    return tr("It is still running; it can run again when this run has ended.");
}

QString LaunchMessages::tooManyPlugins()
{
    //: Reason: the host's limit on plugins running at once is reached
    return tr("The host is running as many plugins as it runs at once; try again when one has ended.");
}

QString LaunchMessages::noLongerExists()
{
    //: Reason: the action was deleted meanwhile, for example from the command line
    return tr("It no longer exists.");
}

QString LaunchMessages::notInstalled(const QString& plugin)
{
    //: Reason: %1 is the plugin's name (its executable's file name)
    return tr("Its plugin %1 is not installed; plugins install themselves when started on their own.")
        .arg(plugin);
}

QString LaunchMessages::executableProblem(const QString& executable)
{
    // The host refuses a plugin whose executable is gone or cannot be run; which one, the file says.
    if (!QFileInfo::exists(executable)) {
        //: Reason: %1 is the path of the plugin's executable
        return tr("Its plugin's executable %1 is missing; install the plugin again.").arg(executable);
    }
    //: Reason: %1 is the path of the plugin's executable, which exists but is no program
    return tr("Its plugin's executable %1 cannot be run.").arg(executable);
}

QString LaunchMessages::hostUnreachable(const QString& busMessage)
{
    //: Reason: the served host did not answer on the session bus; %1 is the bus's error message (English)
    return tr("The host could not be reached: %1").arg(busMessage);
}

} // namespace VendelHost
