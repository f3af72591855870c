// Starts an installed plugin with a vendelplugin:// launch URL as its one argument.
#pragma once

#include <QString>

#include <chrono>

namespace VendelHost {

class PluginLauncher
{
public:
    static QString runUrl(const QString& actionID);
    static QString editUrl(const QString& actionID);
    static QString configureUrl();

    // Starts the plugin and waits until it ends, its output going to ours. Throws HostError when it cannot
    // start, crashes, exits with a failure, or is still running after the time-out (it is killed then).
    static void runAndWait(const QString& executable, const QString& url, std::chrono::milliseconds timeout);
    // Starts the plugin on its own, for launches that show windows; returns its process identifier.
    static qint64 startDetached(const QString& executable, const QString& url);
};

} // namespace VendelHost
