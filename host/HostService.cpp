// Answers each method from storage. A write is committed before its method returns, so by the time the
// client has the reply, the value is on disk.
#include "HostService.h"

#include "HostAdaptor.h"
#include "HostError.h"

#include <QDBusConnectionInterface>

namespace VendelHost {

HostService::HostService(HostStorage& storage, QObject* parent)
    : QObject(parent), m_storage(storage), m_installer(storage)
{
    new Host1Adaptor(this);
}

void HostService::serveOn(QDBusConnection bus)
{
    if (!bus.isConnected()) {
        throw HostError(
            QStringLiteral("Cannot connect to the session bus: %1").arg(bus.lastError().message()));
    }
    if (!bus.registerObject(QString::fromLatin1(objectPath), this)) {
        throw HostError(QStringLiteral("Cannot export %1: %2")
                            .arg(QString::fromLatin1(objectPath), bus.lastError().message()));
    }
    const auto reply = bus.interface()->registerService(QString::fromLatin1(serviceName),
                                                        QDBusConnectionInterface::DontQueueService,
                                                        QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        throw HostError(QStringLiteral("Cannot claim %1: %2")
                            .arg(QString::fromLatin1(serviceName), reply.error().message()));
    }
    if (reply.value() != QDBusConnectionInterface::ServiceRegistered) {
        throw HostError(QStringLiteral("Another host already serves %1 on this bus.")
                            .arg(QString::fromLatin1(serviceName)));
    }
}

void HostService::fail(const char* errorName, const QString& message)
{
    // A method called directly, not over the bus, has no message to reply to: the caller gets the error.
    if (!calledFromDBus()) {
        throw HostError(message);
    }
    sendErrorReply(QString::fromLatin1(errorName), message);
}

QString HostService::GetConfig(const QString& actionID)
{
    try {
        // An action the host does not know has no configuration, which the plugin reads as its default.
        const auto action = m_storage.action(actionID);
        return action ? action->config : QString();
    } catch (const HostError& error) {
        fail(storageError, error.message());
        return {};
    }
}

void HostService::SetConfig(const QString& config, const QString& actionID)
{
    try {
        // Only the host makes actions, so a write for an unknown one is a plugin's mistake, not a new action.
        if (!m_storage.setConfig(actionID, config)) {
            fail(noSuchActionError, QStringLiteral("There is no action \"%1\".").arg(actionID));
        }
    } catch (const HostError& error) {
        fail(storageError, error.message());
    }
}

QString HostService::GetGlobalConfig(const QString& bundleID)
{
    try {
        return m_storage.globalConfig(bundleID);
    } catch (const HostError& error) {
        fail(storageError, error.message());
        return {};
    }
}

void HostService::SetGlobalConfig(const QString& config, const QString& bundleID)
{
    if (bundleID.isEmpty()) {
        fail("org.freedesktop.DBus.Error.InvalidArgs", QStringLiteral("The bundle identifier is empty."));
        return;
    }
    try {
        m_storage.setGlobalConfig(bundleID, config);
    } catch (const HostError& error) {
        fail(storageError, error.message());
    }
}

QString HostService::GetPluginFolderPath()
{
    return m_storage.pluginFolder();
}

QString HostService::GetPathOfPlugin(const QString& pluginID)
{
    try {
        if (const auto plugin = m_storage.plugin(pluginID)) {
            return plugin->path;
        }
        fail(noSuchPluginError, QStringLiteral("There is no plugin \"%1\".").arg(pluginID));
    } catch (const HostError& error) {
        fail(storageError, error.message());
    }
    return {};
}

QString HostService::IsPluginInstalledAtPath(const QString& path)
{
    try {
        return m_installer.isInstalledAtPath(path) ? QStringLiteral("true") : QStringLiteral("false");
    } catch (const HostError& error) {
        fail(storageError, error.message());
        return {};
    }
}

void HostService::InstallPlugin()
{
    // The caller is who the bus says it is: its process, then that process's executable. Nothing the
    // caller could claim about itself is trusted.
    const auto pid = connection().interface()->servicePid(message().service());
    if (!pid.isValid()) {
        fail(installError, QStringLiteral("Cannot identify the caller: %1").arg(pid.error().message()));
        return;
    }
    try {
        m_installer.install(PluginInstaller::executableOfProcess(pid.value()));
    } catch (const HostError& error) {
        fail(installError, error.message());
    }
}

} // namespace VendelHost
