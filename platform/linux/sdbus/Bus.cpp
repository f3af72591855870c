// Opening and sharing connections; authentication and the greeting are completed by the waits.
#include "Bus.h"

#include "Wait.h"

#include <systemd/sd-bus.h>

namespace VendelSDK::SdBus {

Bus::Bus(sd_bus* bus) : m_bus(sd_bus_ref(bus)) {}

Bus::Bus(const Bus& other) : m_bus(sd_bus_ref(other.get())) {}

Bus& Bus::operator=(const Bus& other)
{
    if (this != &other) {
        m_bus.reset(sd_bus_ref(other.get()));
    }
    return *this;
}

Bus::~Bus() = default;

Bus Bus::session()
{
    // The thread's default bus keeps no reference of its own: this one keeps it open for the thread.
    thread_local const Bus shared = [] {
        Bus bus;
        sd_bus* opened = nullptr;
        if (sd_bus_default_user(&opened) >= 0) {
            bus.m_bus.reset(opened);
        }
        return bus;
    }();
    return shared;
}

Bus Bus::open(const QString& address)
{
    Bus bus;
    sd_bus* opened = nullptr;
    if (sd_bus_new(&opened) < 0) {
        return bus;
    }
    bus.m_bus.reset(opened);
    if (sd_bus_set_address(opened, address.toUtf8().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0) {
        bus.m_bus.reset();
    }
    return bus;
}

bool Bus::isConnected() const
{
    return m_bus && sd_bus_is_open(get()) > 0;
}

QString Bus::uniqueName() const
{
    // The name comes with the answer to the greeting, which may still be on its way; asked before, sd-bus
    // would wait for it in a loop that EINTR ends.
    if (!isConnected() ||
        waitUntil(
            *this, [this] { return sd_bus_is_ready(get()) > 0; }, unbounded()) != WaitEnd::done) {
        return {};
    }
    const char* name = nullptr;
    if (sd_bus_get_unique_name(get(), &name) < 0) {
        return {};
    }
    return QString::fromLatin1(name);
}

Message Bus::methodCall(const QString& destination, const char* path, const char* interface,
                        const char* member) const
{
    sd_bus_message* message = nullptr;
    if (!m_bus) {
        return {};
    }
    const int status = sd_bus_message_new_method_call(get(), &message, destination.toUtf8().constData(), path,
                                                      interface, member);
    Message result(status >= 0 ? message : nullptr);
    result.fail(status);
    return result;
}

} // namespace VendelSDK::SdBus
