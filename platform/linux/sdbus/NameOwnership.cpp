// Requests and releases are sent asynchronously and answered through the layer's own wait.
#include "NameOwnership.h"

#include "Call.h"
#include "Process.h"
#include "Wait.h"

#include <systemd/sd-bus.h>

#include <cstdint>
#include <optional>

namespace VendelSDK::SdBus {

namespace {

// RequestName's answers, as the bus daemon numbers them.
constexpr std::uint32_t primaryOwnerReply = 1;
constexpr std::uint32_t inQueueReply = 2;
constexpr std::uint32_t alreadyOwnerReply = 4;

int requestAnswered(sd_bus_message* reply, void* userdata, sd_bus_error*)
{
    std::uint32_t code = 0;
    auto& result = *static_cast<std::optional<NameRequest>*>(userdata);
    if (sd_bus_message_is_method_error(reply, nullptr) || sd_bus_message_read_basic(reply, 'u', &code) <= 0) {
        result = NameRequest::failed;
    } else if (code == primaryOwnerReply || code == alreadyOwnerReply) {
        result = NameRequest::owner;
    } else {
        result = code == inQueueReply ? NameRequest::queued : NameRequest::failed;
    }
    return 0;
}

int releaseAnswered(sd_bus_message*, void* userdata, sd_bus_error*)
{
    *static_cast<bool*>(userdata) = true;
    return 0;
}

} // namespace

NameRequest requestName(const Bus& bus, const QString& name)
{
    if (!bus.isConnected()) {
        return NameRequest::failed;
    }
    // Sent without waiting for the answer to the connection's greeting, the request travels with it: every
    // launch asks for the name, so this saves a round trip to the bus daemon on each.
    std::optional<NameRequest> answer;
    sd_bus_slot* pending = nullptr;
    if (sd_bus_request_name_async(bus.get(), &pending, name.toUtf8().constData(), SD_BUS_NAME_QUEUE,
                                  requestAnswered, &answer) < 0) {
        return NameRequest::failed;
    }
    const Slot slot(pending);
    // The bus's own time-out for the call ends the wait with an error reply, as for any call.
    waitUntil(
        bus, [&answer] { return answer.has_value(); }, unbounded());
    return answer.value_or(NameRequest::failed);
}

void releaseName(const Bus& bus, const QString& name)
{
    bool answered = false;
    sd_bus_slot* pending = nullptr;
    if (!bus.isConnected() || sd_bus_release_name_async(bus.get(), &pending, name.toUtf8().constData(),
                                                        releaseAnswered, &answered) < 0) {
        return;
    }
    const Slot slot(pending);
    waitUntil(
        bus, [&answered] { return answered; }, unbounded());
}

QString nameOwner(const Bus& bus, const QString& name)
{
    Message message = bus.methodCall(QStringLiteral("org.freedesktop.DBus"), "/org/freedesktop/DBus",
                                     "org.freedesktop.DBus", "GetNameOwner");
    message.append(name);
    Reply reply = call(bus, message);
    QString owner;
    if (reply.error || !reply.message.read(owner)) {
        return {};
    }
    return owner;
}

} // namespace VendelSDK::SdBus
