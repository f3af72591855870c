// Installs plugins: finds a process's executable, links it into the plugin folder and records it.
#pragma once

#include "HostStorage.h"

#include <QString>

namespace VendelHost {

class PluginInstaller
{
public:
    explicit PluginInstaller(HostStorage& storage) : m_storage(storage) {}

    // The canonical path of the process's executable. Throws HostError when the process is gone, its
    // executable cannot be read, or it was deleted or replaced since the process started.
    static QString executableOfProcess(qint64 pid);
    // The name by which people call a plugin: its executable's file name.
    static QString pluginName(const QString& executablePath);

    // Links the executable into the plugin folder under the plugin's name, then records it, replacing an
    // earlier plugin of that name. Throws HostError when the link cannot be made or the record written.
    HostStorage::Plugin install(const QString& executablePath);
    // Whether the path, or what it links to, is an installed plugin's executable.
    bool isInstalledAtPath(const QString& path) const;

private:
    HostStorage& m_storage;
};

} // namespace VendelHost
