// The host's D-Bus object: org.vendel.Host1 for plugins, org.vendel.Actions1 for the host's own clients,
// behind the adaptors generated from their descriptions.
#pragma once

#include "ActionEntries.h"
#include "HostStorage.h"
#include "Launches.h"
#include "WriterThread.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QHash>
#include <QObject>

#include <functional>

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
    static constexpr auto actionsNoSuchActionError = "org.vendel.Actions1.Error.NoSuchAction";
    static constexpr auto actionsNoSuchPluginError = "org.vendel.Actions1.Error.NoSuchPlugin";
    static constexpr auto invalidTitleError = "org.vendel.Actions1.Error.InvalidTitle";
    static constexpr auto alreadyRunningError = "org.vendel.Actions1.Error.AlreadyRunning";
    static constexpr auto tooManyLaunchesError = "org.vendel.Actions1.Error.TooManyLaunches";
    static constexpr auto launchFailedError = "org.vendel.Actions1.Error.LaunchFailed";

    // A call refused, with the error name the client sees; what jobs throw for their own errors.
    struct Refusal
    {
        const char* errorName;
        QString message;
    };

    // Reads are answered from this storage on the bus thread; writes go to a connection of their own on
    // the writer thread.
    explicit HostService(HostStorage& storage, QObject* parent = nullptr);
    ~HostService() override;

    // The reply to a call: the job's values, or its failure as an error that says what went wrong.
    static QDBusMessage replyTo(const QDBusMessage& call, const WriterThread::Outcome& outcome);

    // What the service reads from, and the launches it has started: the desktop's searches use them too.
    HostStorage& storage() { return m_storage; }
    Launches& launches() { return m_launches; }

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

    // org.vendel.Actions1, the same way (HostServiceActions.cpp).
    ActionEntries ListActions();
    PluginEntries ListPlugins();
    QString CreateAction(const QString& plugin, const QString& title);
    void SetActionTitle(const QString& actionID, const QString& title);
    void DeleteAction(const QString& actionID);
    qulonglong RunAction(const QString& actionID);
    qulonglong EditAction(const QString& actionID);
    qulonglong ConfigurePlugin(const QString& plugin);

Q_SIGNALS:
    // A launch has ended: see org.vendel.Actions1.xml.
    void LaunchEnded(qulonglong launch, const QString& verb, const QString& actionID, const QString& plugin,
                     int exitStatus, const QString& failure);

private:
    enum class Work
    {
        Read,
        Write,
    };
    using Job = WriterThread::Job;
    // Turns what the job read into the reply, on the service's own thread, after the job.
    using Finish = std::function<QVariantList(const QVariantList&)>;

    // Answers the current call with what the job returns, through finish when there is one. A read runs
    // at once, unless the same client still has a write queued, which it must see; a write is queued for
    // the writer thread.
    void perform(Work work, const Job& job, const Finish& finish = {});
    void refuse(const char* errorName, const QString& message);
    // Reads what launching needs, then starts the launch and answers its number.
    void launch(Launches::Verb verb, const QString& name);

    HostStorage& m_storage;
    WriterThread m_writer;
    Launches m_launches;
    // How many calls of each client, by unique bus name, are queued on the writer thread.
    QHash<QString, int> m_queued;
};

} // namespace VendelHost
