// Installs a match asynchronously and waits for the daemon's answer with the layer's own wait.
#include "Match.h"

#include "Process.h"
#include "Wait.h"

#include <systemd/sd-bus.h>

#include <memory>
#include <optional>

namespace VendelSDK::SdBus {

namespace {

// Lives on the heap and goes with its slot.
struct Handler
{
    std::function<void(Message&)> deliver;
    // Whether the daemon agreed to the rule; nothing until it has answered.
    std::optional<bool> installed;
};

int deliverMatch(sd_bus_message* message, void* userdata, sd_bus_error*)
{
    return CallbackBoundary::guarded(
        [&] {
            Message incoming(sd_bus_message_ref(message));
            static_cast<Handler*>(userdata)->deliver(incoming);
            return 0;
        },
        0);
}

int answered(sd_bus_message* reply, void* userdata, sd_bus_error*)
{
    // Without this callback, sd-bus would close the connection when the daemon refuses the rule.
    static_cast<Handler*>(userdata)->installed = !sd_bus_message_is_method_error(reply, nullptr);
    return 0;
}

void deleteHandler(void* userdata)
{
    delete static_cast<Handler*>(userdata);
}

} // namespace

Slot addMatch(const Bus& bus, const QString& rule, std::function<void(Message&)> handler)
{
    if (!bus.isConnected()) {
        return nullptr;
    }
    auto owned = std::make_unique<Handler>(Handler{std::move(handler), std::nullopt});
    Handler* watched = owned.get();
    sd_bus_slot* raw = nullptr;
    if (sd_bus_add_match_async(bus.get(), &raw, rule.toUtf8().constData(), deliverMatch, answered, watched) <
        0) {
        return nullptr;
    }
    sd_bus_slot_set_destroy_callback(raw, deleteHandler);
    owned.release();
    Slot slot(raw);
    waitUntil(
        bus, [watched] { return watched->installed.has_value(); }, unbounded());
    if (!watched->installed.value_or(false)) {
        return nullptr;
    }
    return slot;
}

} // namespace VendelSDK::SdBus
