// Sent with sd_bus_call_async, not sd_bus_call: the blocking call gives up on EINTR, and sending it again
// would make the peer act twice.
#include "Call.h"

#include "Process.h"
#include "Wait.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cstdint>

namespace VendelSDK::SdBus {

namespace {

Error errorOf(const sd_bus_error& error)
{
    return Error{QString::fromUtf8(error.name), QString::fromUtf8(error.message)};
}

// What sd-bus reports for an errno that no reply carried: a local failure rather than the peer's answer.
Error localError(int status)
{
    sd_bus_error error{};
    sd_bus_error_set_errno(&error, status);
    Error result = errorOf(error);
    sd_bus_error_free(&error);
    return result;
}

// What a call on a missing or lost session bus reports, in the words the bus clients have always seen.
Error disconnected()
{
    return {QString::fromLatin1(disconnectedError), QStringLiteral("Not connected to D-Bus server")};
}

int keepReply(sd_bus_message* reply, void* userdata, sd_bus_error*)
{
    return CallbackBoundary::guarded(
        [&] {
            auto& answer = *static_cast<std::optional<Reply>*>(userdata);
            if (const sd_bus_error* error = sd_bus_message_get_error(reply)) {
                answer = Reply{errorOf(*error), {}};
            } else {
                answer = Reply{std::nullopt, Message(sd_bus_message_ref(reply))};
            }
            return 0;
        },
        0);
}

} // namespace

Reply call(const Bus& bus, Message& message, std::optional<std::chrono::milliseconds> timeout)
{
    if (!bus.isConnected()) {
        return {disconnected(), {}};
    }
    if (!message.isValid()) {
        return {Error{QString::fromLatin1(invalidArgsError),
                      QStringLiteral("The call holds a value that the bus cannot carry.")},
                {}};
    }
    // Zero asks for the bus's default time-out; a shorter wait is at least a microsecond. The bus answers a
    // call that has timed out itself, with NoReply, so the wait needs no deadline of its own.
    const std::uint64_t microseconds =
        timeout ? std::uint64_t(std::max<std::chrono::milliseconds::rep>(timeout->count(), 0)) * 1000 + 1 : 0;
    std::optional<Reply> answer;
    sd_bus_slot* pending = nullptr;
    const int status =
        sd_bus_call_async(bus.get(), &pending, message.get(), keepReply, &answer, microseconds);
    if (status < 0) {
        return {bus.isConnected() ? localError(status) : disconnected(), {}};
    }
    // Going with this function, the slot drops a reply that comes too late for anyone to read.
    const Slot slot(pending);
    const WaitEnd end = waitUntil(
        bus, [&answer] { return answer.has_value(); }, unbounded());
    if (answer && (!answer->error || bus.isConnected())) {
        return std::move(*answer);
    }
    if (end == WaitEnd::busy) {
        return {Error{QString::fromLatin1(failedError),
                      QStringLiteral("A call cannot wait inside a handler of the same connection.")},
                {}};
    }
    // A connection that closed answers its pending calls itself; the caller hears what happened.
    return {disconnected(), {}};
}

} // namespace VendelSDK::SdBus
