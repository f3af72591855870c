// A plugin is known by its executable: /proc tells which one a caller runs, a symbolic link shows it.
#include "PluginInstaller.h"

#include "HostError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace VendelHost {

QString PluginInstaller::executableOfProcess(qint64 pid)
{
    const QString link = QStringLiteral("/proc/%1/exe").arg(pid);
    const QString target = QFileInfo(link).symLinkTarget();
    if (target.isEmpty()) {
        throw HostError(QStringLiteral("Cannot find the executable of process %1.").arg(pid));
    }
    // The kernel marks an executable that was removed after the process started; that file is no plugin.
    const QString canonical = QFileInfo(target).canonicalFilePath();
    if (canonical.isEmpty()) {
        throw HostError(QStringLiteral("The executable of process %1 (%2) no longer exists; start it again.")
                            .arg(pid)
                            .arg(target));
    }
    return canonical;
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
    const HostStorage::Plugin plugin{pluginName(path), path};

    // A new link takes the old one's place in one rename, so the folder never lacks the plugin meanwhile.
    const QDir folder(m_storage.pluginFolder());
    const QString linkPath = folder.filePath(plugin.name);
    const QString temporaryPath = folder.filePath(
        QStringLiteral(".%1.%2").arg(plugin.name, QUuid::createUuid().toString(QUuid::Id128)));
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
