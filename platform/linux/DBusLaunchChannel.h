// One running instance per user over the session bus: later launches hand their URL to it.
#pragma once

#include "SdBus.h"

#include <VendelSDK/LaunchChannel.h>

#include <QStringList>

#include <memory>

namespace VendelSDK {

// What the running instance does with a launch handed over to it.
class LaunchService
{
public:
    // Until the receiver is set, this process is not the running instance and refuses every launch.
    LaunchChannel::LaunchReceiver receiver;

    bool Launch(const QStringList& urls);
};

class DBusLaunchChannel final : public LaunchChannel
{
public:
    explicit DBusLaunchChannel(SdBus::Bus bus = SdBus::Bus::session(), int takeOverTimeoutMs = 25000);
    // Keeps the bus name: the bus releases it when the process ends, without a round trip at exit.
    ~DBusLaunchChannel() override;
    DBusLaunchChannel(const DBusLaunchChannel&) = delete;
    DBusLaunchChannel& operator=(const DBusLaunchChannel&) = delete;

    // Gives up the bus name now, so that a queued launch takes over while this process goes on.
    void release();

    Role claim(const QString& applicationID, const std::optional<QString>& url,
               LaunchReceiver receiver) override;

    // The bus name of an application: its identifier where that is a valid bus name, else a cleaned copy.
    static QString busName(const QString& applicationID);

    // The object and method that the running instance serves (platform/linux/dbus/org.vendel.Plugin1.xml).
    static constexpr auto objectPath = "/org/vendel/Plugin";
    static constexpr auto interfaceName = "org.vendel.Plugin1";
    static constexpr auto launchMethod = "Launch";
    static constexpr auto launchSignature = "as";
    static constexpr auto launchResult = "b";

private:
    bool forward(const QString& name, const std::optional<QString>& url);
    bool waitToTakeOver(const QString& name, const std::optional<QString>& url);
    void giveUpName();

    SdBus::Bus m_bus;
    int m_takeOverTimeoutMs;
    LaunchService m_service;
    QString m_name;
    SdBus::Slot m_object;
    std::unique_ptr<SdBus::EventLoopDispatcher> m_dispatcher;
};

} // namespace VendelSDK
