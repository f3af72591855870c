// Calls and replies: a method call is sent once and its answer awaited with the time that remains.
#pragma once

#include "Bus.h"
#include "Message.h"

#include <chrono>
#include <optional>

namespace VendelSDK::SdBus {

// What came back from a call: a method return, or an error.
struct Reply
{
    std::optional<Error> error;
    Message message;
};

// Sends the call once and blocks the calling thread until its reply, an error or the time-out (the bus's
// default without one); a time-out reads as NoReply, as the bus daemon reports it, and a lost connection as
// Disconnected. Meanwhile the connection's other messages are handled and the program's interruption is let
// through (see waitUntil); a signal never ends the call early and never makes it go out twice.
Reply call(const Bus& bus, Message& message, std::optional<std::chrono::milliseconds> timeout = std::nullopt);

} // namespace VendelSDK::SdBus
