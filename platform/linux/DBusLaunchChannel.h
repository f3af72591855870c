// One running instance per user over the session bus: later launches hand their URL to it.
#pragma once

#include "SdBus.h"

#include <VendelSDK/LaunchChannel.h>

#include <QStringList>

#include <chrono>
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
    // How long a launch waits for the running instance: to answer the hand-over, then, if it refused, to end.
    static constexpr std::chrono::milliseconds defaultHandOverTimeout{25000};
    // VENDEL_HANDOVER_TIMEOUT, in seconds (a day at most), or the default when unset or not a positive
    // number.
    static std::chrono::milliseconds handOverTimeoutFromEnvironment();

    explicit DBusLaunchChannel(SdBus::Bus bus = SdBus::Bus::session(),
                               std::chrono::milliseconds handOverTimeout = defaultHandOverTimeout);
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
    std::chrono::milliseconds m_handOverTimeout;
    LaunchService m_service;
    QString m_name;
    SdBus::Slot m_object;
    std::unique_ptr<SdBus::EventLoopDispatcher> m_dispatcher;
};

} // namespace VendelSDK
