// Installs plugins: finds a process's executable, links it into the plugin folder and records it.
#pragma once

#include "HostStorage.h"

#include <QString>

#include <functional>

namespace VendelHost {

class PluginInstaller
{
public:
    explicit PluginInstaller(HostStorage& storage) : m_storage(storage) {}

    // The canonical path of the process's executable, checked to be the very file the process runs. Throws
    // HostError when the process is gone, its executable cannot be read, or it was deleted or replaced
    // since the process started.
    static QString executableOfProcess(qint64 pid);
    // The executable of a bus caller: its process, that process's executable, then a check that the caller
    // is still connected. An exec keeps the pid but closes a connection opened close-on-exec, so a caller
    // still there after the read ran that executable; one that keeps its connection across an exec is not
    // caught. Throws HostError when the caller cannot be identified or has left.
    static QString callerExecutable(const std::function<qint64()>& callerProcess,
                                    const std::function<bool()>& callerStillConnected);
    // The name by which people call a plugin: its executable's file name.
    static QString pluginName(const QString& executablePath);

    // Links the executable into the plugin folder under the plugin's name, then records it with the name
    // and icon of its desktop entry, replacing an earlier plugin of that name. Throws HostError when the link
    // cannot be made or the record written.
    HostStorage::Plugin install(const QString& executablePath);
    // Whether the path, or what it links to, is an installed plugin's executable.
    bool isInstalledAtPath(const QString& path) const;

private:
    HostStorage& m_storage;
};

} // namespace VendelHost
