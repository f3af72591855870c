// `vendel-host window`: the command line and the service never load a toolkit's windows, so the window is a
// program of its own, which this command becomes.
#pragma once

#include <QString>

namespace VendelHost {

class WindowCommand
{
public:
    // The window's executable: in the host's private folder as installed (/usr/lib/<multiarch>/vendel-host
    // for /usr/bin/vendel-host), found relative to this program, and laid out the same way in the build tree.
    static QString executable();
    // Replaces this process with the window, showing the actions that match the filter. Returns only when
    // it cannot: throws HostError saying why (no display, the window's executable missing).
    [[noreturn]] static void exec(const QString& filter);
};

} // namespace VendelHost
