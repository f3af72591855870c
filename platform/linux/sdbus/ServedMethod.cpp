// A one-method object table per served method; its handler and table live as long as the slot.
#include "ServedMethod.h"

#include "Process.h"

#include <systemd/sd-bus.h>

#include <QByteArray>

#include <array>
#include <climits>
#include <memory>

namespace VendelSDK::SdBus {

namespace {

struct Served
{
    QByteArray member;
    QByteArray signature;
    QByteArray result;
    MethodHandler handler;
    std::array<sd_bus_vtable, 3> vtable{};
};

// What guarded() gives back when the handler threw; no errno is this negative.
constexpr int threw = INT_MIN;

int serveCall(sd_bus_message* call, void* userdata, sd_bus_error* error)
{
    const int status = CallbackBoundary::guarded(
        [&] {
            auto* served = static_cast<Served*>(userdata);
            Message incoming(sd_bus_message_ref(call));
            sd_bus_message* reply = nullptr;
            const int created = sd_bus_message_new_method_return(call, &reply);
            if (created < 0) {
                return created;
            }
            Message outgoing(reply);
            if (!served->handler(incoming, outgoing) || !outgoing.isValid()) {
                return sd_bus_error_set(error, invalidArgsError,
                                        "The arguments are not what the method takes.");
            }
            return sd_bus_send(nullptr, outgoing.get(), nullptr);
        },
        threw);
    // The caller still gets an answer, and the exception is rethrown once processing has returned.
    return status == threw ? sd_bus_error_set(error, failedError, "The method failed.") : status;
}

void deleteServed(void* userdata)
{
    delete static_cast<Served*>(userdata);
}

} // namespace

Slot serveMethod(const Bus& bus, const char* path, const char* interface, const char* member,
                 const char* signature, const char* result, MethodHandler handler)
{
    if (!bus.isConnected()) {
        return nullptr;
    }
    auto served = std::make_unique<Served>();
    served->member = member;
    served->signature = signature;
    served->result = result;
    served->handler = std::move(handler);
    served->vtable = {{
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD(served->member.constData(), served->signature.constData(), served->result.constData(),
                      serveCall, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    }};
    sd_bus_slot* slot = nullptr;
    if (sd_bus_add_object_vtable(bus.get(), &slot, path, interface, served->vtable.data(), served.get()) <
        0) {
        return nullptr;
    }
    sd_bus_slot_set_destroy_callback(slot, deleteServed);
    served.release();
    return Slot(slot);
}

} // namespace VendelSDK::SdBus
