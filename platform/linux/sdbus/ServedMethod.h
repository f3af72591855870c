// Served methods: one method of an object, answered by a handler.
#pragma once

#include "Bus.h"
#include "Message.h"

#include <functional>

namespace VendelSDK::SdBus {

// Reads the call's arguments and appends the reply's; false when the arguments are not what it takes, and
// the caller then gets InvalidArgs. A handler that throws gives the caller Failed, and the exception goes on
// to the code that handled the connection's messages.
using MethodHandler = std::function<bool(Message& call, Message& reply)>;

// Serves the method while the slot lives. Calls are handled wherever the thread handles the connection's
// messages: its waits, or an EventLoopDispatcher. Nothing when the connection is not open.
Slot serveMethod(const Bus& bus, const char* path, const char* interface, const char* member,
                 const char* signature, const char* result, MethodHandler handler);

} // namespace VendelSDK::SdBus
