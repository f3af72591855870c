// A plugin is known by its executable: /proc tells which one a caller runs, a symbolic link shows it.
#include "PluginInstaller.h"

#include "DesktopEntry.h"
#include "HostError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

namespace VendelHost {

QString PluginInstaller::executableOfProcess(qint64 pid)
{
    const QString link = QStringLiteral("/proc/%1/exe").arg(pid);
    const QString target = QFileInfo(link).symLinkTarget();
    if (target.isEmpty()) {
        throw HostError(QStringLiteral("Cannot find the executable of process %1.").arg(pid));
    }
    // The kernel marks an executable removed since the start with " (deleted)", and a file may be named
    // like that on purpose: only the very file the process runs, the same device and inode, is its plugin.
    const QString canonical = QFileInfo(target).canonicalFilePath();
    struct stat running = {};
    struct stat named = {};
    if (canonical.isEmpty() || ::stat(QFile::encodeName(link).constData(), &running) != 0 ||
        ::stat(QFile::encodeName(canonical).constData(), &named) != 0 || running.st_dev != named.st_dev ||
        running.st_ino != named.st_ino) {
        throw HostError(
            QStringLiteral(
                "The executable of process %1 (%2) no longer exists or was replaced; start it again.")
                .arg(pid)
                .arg(target));
    }
    return canonical;
}

QString PluginInstaller::callerExecutable(const std::function<qint64()>& callerProcess,
                                          const std::function<bool()>& callerStillConnected)
{
    const qint64 pid = callerProcess();
    const QString executable = executableOfProcess(pid);
    if (!callerStillConnected()) {
        throw HostError(
            QStringLiteral("The caller (process %1) left the bus before it could be identified, as "
                           "when it starts another program; nothing was installed.")
                .arg(pid));
    }
    return executable;
}

QString PluginInstaller::pluginName(const QString& executablePath)
{
    return QFileInfo(executablePath).fileName();
}

HostStorage::Plugin PluginInstaller::install(const QString& executablePath)
{
    const QFileInfo executable(executablePath);
    const QString path = executable.canonicalFilePath();
    if (path.isEmpty() || !executable.isFile() || !executable.isExecutable()) {
        throw HostError(
            QStringLiteral("Cannot install %1: it is not an executable file.").arg(executablePath));
    }
    HostStorage::Plugin plugin{pluginName(path), path, {}, {}};
    // What the desktop shows for the plugin is read now, so that every listing need not read it again.
    if (const auto entry = DesktopEntry::forExecutable(plugin.name)) {
        plugin.entryName = entry->name;
        plugin.entryIcon = entry->icon;
    }

    // A new link takes the old one's place in one rename, so the folder never lacks the plugin meanwhile.
    const QDir folder(m_storage.pluginFolder());
    const QString linkPath = folder.filePath(plugin.name);
    // Named apart from the plugin, so that any name that fits in a folder fits here too.
    const QString temporaryPath =
        folder.filePath(QStringLiteral(".install-%1").arg(QUuid::createUuid().toString(QUuid::Id128)));
    if (!QFile::link(path, temporaryPath)) {
        throw HostError(QStringLiteral("Cannot link %1 into the plugin folder %2.").arg(path, folder.path()));
    }
    if (std::rename(QFile::encodeName(temporaryPath).constData(), QFile::encodeName(linkPath).constData()) !=
        0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        QFile::remove(temporaryPath);
        throw HostError(QStringLiteral("Cannot link %1 as %2: %3").arg(path, linkPath, reason));
    }
    m_storage.recordPlugin(plugin);
    return plugin;
}

bool PluginInstaller::isInstalledAtPath(const QString& path) const
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return m_storage.pluginWithPath(canonical.isEmpty() ? path : canonical).has_value();
}

} // namespace VendelHost
