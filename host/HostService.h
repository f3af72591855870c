// The host's D-Bus interface org.vendel.Host1: the object behind the adaptor generated from its description.
#pragma once

#include "HostStorage.h"
#include "PluginInstaller.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

namespace VendelHost {

class HostService : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    static constexpr auto serviceName = "org.vendel.Host";
    static constexpr auto objectPath = "/org/vendel/Host";
    static constexpr auto noSuchPluginError = "org.vendel.Host1.Error.NoSuchPlugin";
    static constexpr auto noSuchActionError = "org.vendel.Host1.Error.NoSuchAction";
    static constexpr auto storageError = "org.vendel.Host1.Error.StorageFailed";
    static constexpr auto installError = "org.vendel.Host1.Error.InstallFailed";

    explicit HostService(HostStorage& storage, QObject* parent = nullptr);

    // Exports the object, then claims the name, so a client that sees the name can call at once. Throws
    // HostError when the bus refuses, or another process already serves the name.
    void serveOn(QDBusConnection bus);

    // The interface's methods, called by the adaptor. Failures become error replies; called directly, not
    // over the bus, a method throws HostError instead.
    QString GetConfig(const QString& actionID);
    void SetConfig(const QString& config, const QString& actionID);
    QString GetGlobalConfig(const QString& bundleID);
    void SetGlobalConfig(const QString& config, const QString& bundleID);
    QString GetPluginFolderPath();
    QString GetPathOfPlugin(const QString& pluginID);
    QString IsPluginInstalledAtPath(const QString& path);
    void InstallPlugin();

private:
    void fail(const char* errorName, const QString& message);

    HostStorage& m_storage;
    PluginInstaller m_installer;
};

} // namespace VendelHost
