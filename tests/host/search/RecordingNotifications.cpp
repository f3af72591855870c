// A connection of its own, so that a client in the same test process reaches it through the bus daemon, as a
// real service is reached.
#include "RecordingNotifications.h"

#include <QDBusConnectionInterface>

namespace VendelHost::Testing {

namespace {

constexpr auto serviceName = "org.freedesktop.Notifications";

} // namespace

RecordingNotifications::RecordingNotifications(QStringList capabilities)
    : m_capabilities(std::move(capabilities)),
      m_connectionName(QStringLiteral("recording notifications %1").arg(quintptr(this)))
{}

RecordingNotifications::~RecordingNotifications()
{
    QDBusConnection connection(m_connectionName);
    if (connection.isConnected()) {
        connection.unregisterService(QLatin1String(serviceName));
    }
    QDBusConnection::disconnectFromBus(m_connectionName);
}

bool RecordingNotifications::start()
{
    QDBusConnection connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    return connection.isConnected() &&
           connection.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                     QDBusConnection::ExportAllSlots) &&
           connection.registerService(QLatin1String(serviceName));
}

QStringList RecordingNotifications::GetCapabilities()
{
    return m_capabilities;
}

uint RecordingNotifications::Notify(const QString& appName, uint, const QString& appIcon,
                                    const QString& summary, const QString& body, const QStringList&,
                                    const QVariantMap& hints, int timeout)
{
    notifications.append({appName, appIcon, summary, body, hints, timeout});
    return uint(notifications.size());
}

void RecordingNotifications::CloseNotification(uint) {}

QString RecordingNotifications::GetServerInformation(QString& vendor, QString& version, QString& specVersion)
{
    vendor = QStringLiteral("Vendel tests");
    version = QStringLiteral("1");
    specVersion = QStringLiteral("1.2");
    return QStringLiteral("recording notifications");
}

} // namespace VendelHost::Testing
