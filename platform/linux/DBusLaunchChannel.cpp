// Uses the bus name's queue, so that the bus daemon alone decides which launch becomes the running instance.
#include "DBusLaunchChannel.h"

#include "PluginLaunchAdaptor.h"
#include "PluginLaunchProxy.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>

namespace VendelSDK {

bool LaunchService::Launch(const QStringList& urls)
{
    if (!receiver || urls.size() > 1) {
        return false;
    }
    return receiver(urls.isEmpty() ? std::nullopt : std::optional<QString>(urls.first()));
}

DBusLaunchChannel::DBusLaunchChannel(QDBusConnection connection, int takeOverTimeoutMs)
    : m_connection(std::move(connection)), m_takeOverTimeoutMs(takeOverTimeoutMs)
{
    new Plugin1Adaptor(&m_service);
}

DBusLaunchChannel::~DBusLaunchChannel()
{
    // Launches handed over from now on find no object and wait for the name instead.
    if (m_connection.isConnected()) {
        m_connection.unregisterObject(QString::fromLatin1(objectPath));
    }
}

void DBusLaunchChannel::release()
{
    m_service.receiver = nullptr;
    if (m_connection.isConnected() && !m_name.isEmpty()) {
        m_connection.interface()->unregisterService(m_name);
        m_name.clear();
    }
}

QString DBusLaunchChannel::busName(const QString& applicationID)
{
    // Elements of a bus name are made of ASCII letters, digits, "_" and "-", and do not start with a digit.
    QStringList elements;
    for (const QString& part : applicationID.split(QLatin1Char('.'))) {
        QString element;
        for (const QChar c : part) {
            const bool allowed = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
                                 (c >= u'0' && c <= u'9') || c == u'_' || c == u'-';
            element.append(allowed ? c : QLatin1Char('_'));
        }
        if (element.isEmpty() || element.front().isDigit()) {
            element.prepend(QLatin1Char('_'));
        }
        elements.append(element);
    }
    if (elements.size() < 2) {
        elements.prepend(QStringLiteral("org.vendel.plugin"));
    }
    // A bus name is at most 255 characters; a longer identifier keeps its beginning.
    return elements.join(QLatin1Char('.')).left(255);
}

LaunchChannel::Role DBusLaunchChannel::claim(const QString& applicationID, const std::optional<QString>& url,
                                             LaunchReceiver receiver)
{
    if (!m_connection.isConnected()) {
        // Without a session bus there is no one to hand over to: this launch serves itself.
        return Role::running;
    }
    m_name = busName(applicationID);
    m_connection.registerObject(QString::fromLatin1(objectPath), &m_service);
    const auto reply = m_connection.interface()->registerService(
        m_name, QDBusConnectionInterface::QueueService, QDBusConnectionInterface::DontAllowReplacement);
    bool running = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceQueued) {
        if (forward(m_name, url)) {
            m_connection.interface()->unregisterService(m_name);
            m_name.clear();
            return Role::forwarded;
        }
        running = waitToTakeOver(m_name, url);
        if (!running) {
            m_connection.interface()->unregisterService(m_name);
            m_name.clear();
            return Role::forwarded;
        }
    }
    // The name could not be asked for at all (an odd bus): serve this launch alone rather than lose it.
    m_service.receiver = std::move(receiver);
    return Role::running;
}

bool DBusLaunchChannel::forward(const QString& name, const std::optional<QString>& url)
{
    Plugin1Proxy proxy(name, QString::fromLatin1(objectPath), m_connection);
    const QDBusReply<bool> accepted = proxy.Launch(url ? QStringList{*url} : QStringList{});
    return accepted.isValid() && accepted.value();
}

bool DBusLaunchChannel::waitToTakeOver(const QString& name, const std::optional<QString>& url)
{
    // The running instance refused, usually because it is ending. The queue makes this launch the owner
    // when it has gone; a launch queued earlier may take over first, and is then asked again.
    QEventLoop loop;
    bool done = false;
    bool running = false;
    const QString self = m_connection.baseService();
    const QString refusedBy = m_connection.interface()->serviceOwner(name).value();
    const auto settle = [&](const QString& owner) {
        if (owner == self) {
            running = true;
            done = true;
        } else if (!owner.isEmpty() && owner != refusedBy && forward(name, url)) {
            done = true;
        }
        if (done) {
            loop.quit();
        }
    };
    QDBusServiceWatcher watcher(name, m_connection, QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, &loop,
                     [&](const QString&, const QString&, const QString& owner) { settle(owner); });
    QTimer::singleShot(m_takeOverTimeoutMs, &loop, [&] {
        std::fputs("The running instance did not answer; this launch goes on by itself.\n", stderr);
        running = true;
        done = true;
        loop.quit();
    });
    // The owner may have changed between the refusal and the start of the watch.
    settle(m_connection.interface()->serviceOwner(name).value());
    if (!done) {
        loop.exec();
    }
    return running;
}

} // namespace VendelSDK
