// The connection of the sd-bus layer: a shared reference to one bus connection.
#pragma once

#include "Message.h"

#include <QString>

#include <memory>

namespace VendelSDK::SdBus {

// A default-constructed bus is not connected: every call on it fails with Disconnected, as calls on a session
// bus that could not be reached do. Calls, waits, matches, served methods and names are in the layer's other
// parts, which all take a Bus.
class Bus
{
public:
    Bus() = default;
    // Adds one reference.
    explicit Bus(sd_bus* bus);
    Bus(const Bus& other);
    Bus& operator=(const Bus& other);
    Bus(Bus&&) noexcept = default;
    Bus& operator=(Bus&&) noexcept = default;
    ~Bus();

    // The calling thread's connection to the user's session bus (DBUS_SESSION_BUS_ADDRESS), opened on first
    // use and kept for the thread's life, so that every client in the thread shares one connection.
    static Bus session();
    // A connection of its own to the bus daemon at `address` (a private bus); not connected when it cannot
    // be reached.
    static Bus open(const QString& address);

    sd_bus* get() const { return m_bus.get(); }
    bool isConnected() const;
    // The connection's unique name, such as ":1.42"; empty when not connected.
    QString uniqueName() const;

    Message methodCall(const QString& destination, const char* path, const char* interface,
                       const char* member) const;

private:
    std::unique_ptr<sd_bus, Unref> m_bus;
};

} // namespace VendelSDK::SdBus
