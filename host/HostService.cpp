// Answers each method from storage: reads at once on the bus thread, writes in order on a writer thread.
#include "HostService.h"

#include "ActionsAdaptor.h"
#include "HostAdaptor.h"
#include "HostError.h"
#include "HostInput.h"
#include "PluginInstaller.h"
#include "PluginLauncher.h"

#include <QDBusConnectionInterface>

namespace VendelHost {

namespace {} // namespace

// Failures the host expects have names of their own; anything else is still answered, never left to end
// the host.
QDBusMessage HostService::replyTo(const QDBusMessage& call, const WriterThread::Outcome& outcome)
{
    if (!outcome.failure) {
        return call.createReply(outcome.values);
    }
    try {
        std::rethrow_exception(outcome.failure);
    } catch (const Refusal& refusal) {
        return call.createErrorReply(QString::fromLatin1(refusal.errorName), refusal.message);
    } catch (const HostError& error) {
        return call.createErrorReply(QString::fromLatin1(HostService::storageError), error.message());
    } catch (const std::exception& error) {
        return call.createErrorReply(
            QString::fromLatin1(HostService::failedError),
            QStringLiteral("The host failed: %1").arg(QString::fromLocal8Bit(error.what())));
    } catch (...) {
        return call.createErrorReply(QString::fromLatin1(HostService::failedError),
                                     QStringLiteral("The host failed for an unknown reason."));
    }
}

HostService::HostService(HostStorage& storage, QObject* parent)
    : QObject(parent), m_storage(storage), m_writer(storage.dataDirectory()),
      m_launches(PluginLauncher::runTimeLimit)
{
    registerEntryTypes();
    new Host1Adaptor(this);
    new Actions1Adaptor(this);
    connect(&m_launches, &Launches::ended, this, [this](const Launches::Outcome& outcome) {
        Q_EMIT LaunchEnded(outcome.launch, Launches::verbName(outcome.request.verb), outcome.request.actionID,
                           outcome.request.plugin, outcome.exitStatus, outcome.failure);
    });
}

HostService::~HostService() = default;

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

void HostService::refuse(const char* errorName, const QString& message)
{
    sendErrorReply(QString::fromLatin1(errorName), message);
}

// Reads never wait for a lock on the bus thread: the write-ahead log lets a reader go past a writer. Writes
// run one after another on their own thread, so a write that waits for another process's lock holds up
// only the writes queued behind it, and the same client's later calls, which must see its own writes. A
// write is committed before its reply is sent, so an answered write survives the host being killed.
void HostService::perform(Work work, const Job& job, const Finish& finish)
{
    setDelayedReply(true);
    const QDBusMessage call = message();
    QDBusConnection bus = connection();
    const QString client = call.service();
    // What the job found becomes the reply here, on the service's thread, whichever thread ran the job.
    const auto answer = [call, finish](WriterThread::Outcome outcome) {
        if (!outcome.failure && finish) {
            outcome = WriterThread::capture([&] { return finish(outcome.values); });
        }
        return replyTo(call, outcome);
    };
    if (work == Work::Read && !m_queued.contains(client)) {
        bus.send(answer(WriterThread::run(job, [this]() -> HostStorage& { return m_storage; })));
        return;
    }
    ++m_queued[client];
    m_writer.post(job, this, [this, answer, bus, client](const WriterThread::Outcome& outcome) mutable {
        bus.send(answer(outcome));
        if (--m_queued[client] == 0) {
            m_queued.remove(client);
        }
    });
}

QString HostService::GetConfig(const QString& actionID)
{
    perform(Work::Read, [actionID](HostStorage& storage) -> QVariantList {
        // An action the host does not know has no configuration, which the plugin reads as its default.
        const auto action = storage.action(actionID);
        return {action ? action->config : QString()};
    });
    return {};
}

void HostService::SetConfig(const QString& config, const QString& actionID)
{
    if (const auto problem = HostInput::configProblem(config)) {
        refuse(invalidConfigError, problem->at(0).toUpper() + problem->mid(1));
        return;
    }
    perform(Work::Write, [config, actionID](HostStorage& storage) -> QVariantList {
        // Only the host makes actions, so a write for an unknown one is a plugin's mistake, not a new action.
        if (!storage.setConfig(actionID, config)) {
            throw Refusal{noSuchActionError, QStringLiteral("There is no action \"%1\".").arg(actionID)};
        }
        return {};
    });
}

QString HostService::GetGlobalConfig(const QString& bundleID)
{
    if (!HostInput::isBundleIdentifier(bundleID)) {
        refuse(invalidArgumentError,
               QStringLiteral("\"%1\" is no reverse-DNS bundle identifier, such as org.example.plugin.")
                   .arg(bundleID));
        return {};
    }
    perform(Work::Read,
            [bundleID](HostStorage& storage) -> QVariantList { return {storage.globalConfig(bundleID)}; });
    return {};
}

void HostService::SetGlobalConfig(const QString& config, const QString& bundleID)
{
    if (!HostInput::isBundleIdentifier(bundleID)) {
        refuse(invalidArgumentError,
               QStringLiteral("\"%1\" is no reverse-DNS bundle identifier, such as org.example.plugin.")
                   .arg(bundleID));
        return;
    }
    if (const auto problem = HostInput::configProblem(config)) {
        refuse(invalidConfigError, problem->at(0).toUpper() + problem->mid(1));
        return;
    }
    perform(Work::Write, [config, bundleID](HostStorage& storage) -> QVariantList {
        storage.setGlobalConfig(bundleID, config);
        return {};
    });
}

QString HostService::GetPluginFolderPath()
{
    return m_storage.pluginFolder();
}

QString HostService::GetPathOfPlugin(const QString& pluginID)
{
    perform(Work::Read, [pluginID](HostStorage& storage) -> QVariantList {
        if (const auto plugin = storage.plugin(pluginID)) {
            return {plugin->path};
        }
        throw Refusal{noSuchPluginError, QStringLiteral("There is no plugin \"%1\".").arg(pluginID)};
    });
    return {};
}

QString HostService::IsPluginInstalledAtPath(const QString& path)
{
    perform(Work::Read, [path](HostStorage& storage) -> QVariantList {
        return {PluginInstaller(storage).isInstalledAtPath(path) ? QStringLiteral("true")
                                                                 : QStringLiteral("false")};
    });
    return {};
}

void HostService::InstallPlugin()
{
    // The caller is who the bus says it is: its process, then that process's executable. Nothing the
    // caller could claim about itself is trusted.
    const QString caller = message().service();
    QDBusConnectionInterface* daemon = connection().interface();
    QString executable;
    try {
        executable = PluginInstaller::callerExecutable(
            [&] {
                const auto pid = daemon->servicePid(caller);
                if (!pid.isValid()) {
                    throw HostError(
                        QStringLiteral("Cannot identify the caller: %1").arg(pid.error().message()));
                }
                return qint64(pid.value());
            },
            [&] {
                const auto connected = daemon->isServiceRegistered(caller);
                return connected.isValid() && connected.value();
            });
    } catch (const HostError& error) {
        refuse(installError, error.message());
        return;
    }
    perform(Work::Write, [executable](HostStorage& storage) -> QVariantList {
        try {
            PluginInstaller(storage).install(executable);
        } catch (const HostError& error) {
            throw Refusal{installError, error.message()};
        }
        return {};
    });
}

} // namespace VendelHost
