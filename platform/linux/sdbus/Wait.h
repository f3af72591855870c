// Waiting on a connection: messages are handled as they come, signals neither cut a wait short nor go unseen.
#pragma once

#include "Bus.h"

#include <chrono>
#include <functional>
#include <optional>

namespace VendelSDK::SdBus {

// What a wait watches besides the bus: a descriptor that becomes readable when the process is asked to end
// (the termination signals' pipe), and what to call then. `deliver` may end the process; when it returns,
// the wait goes on. The layer knows nothing of signals: the program says once what to watch, before it waits,
// from the thread whose waits watch it (the main thread, which reads the termination signals' pipe).
struct Interruption
{
    int (*descriptor)() = nullptr;
    void (*deliver)() = nullptr;
};
void setInterruption(Interruption interruption);

enum class WaitEnd
{
    // The condition holds.
    done,
    // The deadline passed first.
    deadline,
    // The connection failed or was closed, and nothing more will come.
    closed,
    // Called from one of the connection's own callbacks, where nothing can be handled.
    busy,
};

// Handles the connection's messages (replies, matches, served methods) until `done` holds, and sleeps in
// between until the bus has more, its own time-outs are due, or the deadline passes. A signal handled
// meanwhile (EINTR) only starts the sleep again with the time that remains. Rethrows what a callback threw.
WaitEnd waitUntil(const Bus& bus, const std::function<bool()>& done,
                  std::chrono::steady_clock::time_point deadline);

// How long until the bus's own next time-out (a call's, the greeting's) is due; nothing when none is.
std::optional<std::chrono::milliseconds> dueIn(const Bus& bus);

// A deadline far enough away for waits that the bus itself bounds (a call's time-out, the greeting's).
std::chrono::steady_clock::time_point unbounded();

} // namespace VendelSDK::SdBus
