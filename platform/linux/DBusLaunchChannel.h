// One running instance per user over the session bus: later launches hand their URL to it.
#pragma once

#include "VendelSDK/LaunchChannel.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace VendelSDK {

// The object that the running instance serves; the generated adaptor calls Launch.
class LaunchService : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Until the receiver is set, this process is not the running instance and refuses every launch.
    LaunchChannel::LaunchReceiver receiver;

public Q_SLOTS:
    bool Launch(const QStringList& urls);
};

class DBusLaunchChannel final : public LaunchChannel
{
public:
    explicit DBusLaunchChannel(QDBusConnection connection = QDBusConnection::sessionBus(),
                               int takeOverTimeoutMs = 25000);
    // Keeps the bus name: the bus releases it when the process ends, without a round trip at exit.
    ~DBusLaunchChannel() override;

    // Gives up the bus name now, so that a queued launch takes over while this process goes on.
    void release();

    Role claim(const QString& applicationID, const std::optional<QString>& url,
               LaunchReceiver receiver) override;

    // The bus name of an application: its identifier where that is a valid bus name, else a cleaned copy.
    static QString busName(const QString& applicationID);
    static constexpr auto objectPath = "/org/vendel/Plugin";

private:
    bool forward(const QString& name, const std::optional<QString>& url);
    bool waitToTakeOver(const QString& name, const std::optional<QString>& url);

    QDBusConnection m_connection;
    int m_takeOverTimeoutMs;
    LaunchService m_service;
    QString m_name;
};

} // namespace VendelSDK
