// A desktop notification service for tests: org.freedesktop.Notifications on the session bus, on a connection
// of its own, that records every notification it is sent.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace VendelHost::Testing {

class RecordingNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Notification
    {
        QString appName;
        QString appIcon;
        QString summary;
        QString body;
        QVariantMap hints;
        int timeout = 0;
    };

    // What GetCapabilities answers: "body" alone, or with "body-markup" for a service that reads markup.
    explicit RecordingNotifications(QStringList capabilities = {QStringLiteral("body")});
    // Gives the name up and leaves the bus.
    ~RecordingNotifications() override;

    // Claims the service's name; false when the bus refuses.
    bool start();

    QList<Notification> notifications;

public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& appName, uint replacesId, const QString& appIcon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout);
    void CloseNotification(uint id);
    QString GetServerInformation(QString& vendor, QString& version, QString& specVersion);

private:
    QStringList m_capabilities;
    QString m_connectionName;
};

} // namespace VendelHost::Testing
