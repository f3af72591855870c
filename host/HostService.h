// The host's D-Bus interface org.vendel.Host1: the object behind the adaptor generated from its description.
#pragma once

#include "HostStorage.h"
#include "WriterThread.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QHash>
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
    static constexpr auto invalidConfigError = "org.vendel.Host1.Error.InvalidConfig";
    static constexpr auto invalidArgumentError = "org.freedesktop.DBus.Error.InvalidArgs";
    static constexpr auto failedError = "org.freedesktop.DBus.Error.Failed";

    // Reads are answered from this storage on the bus thread; writes go to a connection of their own on
    // the writer thread.
    explicit HostService(HostStorage& storage, QObject* parent = nullptr);
    ~HostService() override;

    // The reply to a call: the job's values, or its failure as an error that says what went wrong.
    static QDBusMessage replyTo(const QDBusMessage& call, const WriterThread::Outcome& outcome);

    // Exports the object, then claims the name, so a client that sees the name can call at once. Throws
    // HostError when the bus refuses, or another process already serves the name.
    void serveOn(QDBusConnection bus);

    // The interface's methods, called by the adaptor. Every reply is sent by the service itself, now or
    // when the writer has finished; what these return is not used.
    QString GetConfig(const QString& actionID);
    void SetConfig(const QString& config, const QString& actionID);
    QString GetGlobalConfig(const QString& bundleID);
    void SetGlobalConfig(const QString& config, const QString& bundleID);
    QString GetPluginFolderPath();
    QString GetPathOfPlugin(const QString& pluginID);
    QString IsPluginInstalledAtPath(const QString& path);
    void InstallPlugin();

private:
    enum class Work
    {
        Read,
        Write,
    };
    using Job = WriterThread::Job;

    // Answers the current call with what the job returns. A read runs at once, unless the same client
    // still has a write queued, which it must see; a write is queued for the writer thread.
    void perform(Work work, const Job& job);
    void refuse(const char* errorName, const QString& message);

    HostStorage& m_storage;
    WriterThread m_writer;
    // How many calls of each client, by unique bus name, are queued on the writer thread.
    QHash<QString, int> m_queued;
};

} // namespace VendelHost
