// Starts an installed plugin with a vendelplugin:// launch URL as its one argument.
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace VendelHost {

class PluginLauncher
{
public:
    // A run plays or pauses and quits at once; one that takes this long is stuck, not slow.
    static constexpr std::chrono::milliseconds runTimeLimit = std::chrono::seconds(60);

    static QString runUrl(const QString& actionID);
    static QString editUrl(const QString& actionID);
    // A configure URL names its plugin, so that the host that routes launch URLs can find it; the plugin
    // itself takes no argument there.
    static QString configureUrl(const QString& plugin);

    // Starts the plugin and waits until it ends, its output going to ours. Throws HostError when it cannot
    // start, crashes, exits with a failure, or is still running after the time-out (it is killed then).
    static void runAndWait(const QString& executable, const QString& url, std::chrono::milliseconds timeout);
    // Starts the plugin on its own, for launches that show windows; returns its process identifier.
    static qint64 startDetached(const QString& executable, const QString& url);

    // Throws HostError when the executable is missing or cannot be run, saying what to do.
    static void checkExecutable(const QString& executable);
    // How a plugin's end went wrong, or nothing when it succeeded: a signal (a crash; negative when which
    // one is not known) or an exit status other than 0 (negative when the end could not be learnt).
    static std::optional<QString> endProblem(const QString& executable, const QString& url, int exitStatus,
                                             int signal);
    // A plugin still running after the time limit, which the host has stopped.
    static QString timeLimitProblem(const QString& executable, const QString& url,
                                    std::chrono::milliseconds timeout);
};

} // namespace VendelHost
