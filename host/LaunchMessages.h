// The sentences that tell a person how a launch of an action went wrong, in the user's language: the host's
// window shows them, and the served host sends them to the desktop's notifications.
#pragma once

#include <QCoreApplication>
#include <QString>

namespace VendelHost {

class LaunchMessages
{
    Q_DECLARE_TR_FUNCTIONS(VendelHost::LaunchMessages)

public:
    enum class Verb
    {
        Run,
        Edit,
        Configure,
    };

    // A headline: the launch was refused or could not start. The label is the action's title, or the
    // plugin's display name for its preferences.
    static QString notStarted(Verb verb, const QString& label);
    // A headline: the launch started and its plugin ended in a failure (an exit status above 0), or did not
    // end by itself (a crash, or the time limit); the host's own sentence saying how follows it.
    static QString endedBadly(Verb verb, const QString& label, int exitStatus);

    // The reasons, each a sentence that follows a headline.
    static QString stillRunning();
    static QString tooManyPlugins();
    static QString noLongerExists();
    static QString notInstalled(const QString& plugin);
    // Missing or not runnable, as the file is now.
    static QString executableProblem(const QString& executable);
    static QString hostUnreachable(const QString& busMessage);
};

} // namespace VendelHost
