// Running the connection's callbacks: sd-bus is C, so no C++ exception may unwind through it.
#pragma once

#include "Bus.h"

#include <exception>
#include <utility>

namespace VendelSDK::SdBus {

// Each callback that sd-bus calls runs its C++ code through guarded(), which catches whatever is thrown and
// keeps the first exception for the thread; process() rethrows it once sd_bus_process has returned, so the
// exception reaches the code that waited, with no C frame in between.
namespace CallbackBoundary {

void keep(std::exception_ptr exception);
// Rethrows the kept exception, if any, and forgets it.
void rethrowKept();

// Returns what `work` returns, or `failed` when it threw.
template <class Work> int guarded(Work&& work, int failed) noexcept
{
    try {
        return std::forward<Work>(work)();
    } catch (...) {
        keep(std::current_exception());
        return failed;
    }
}

} // namespace CallbackBoundary

// Handles one message or step of the connection (sd_bus_process): positive when something was done, zero
// when there was nothing to do, negative when the connection failed, or -EBUSY when called from one of the
// connection's own callbacks. Rethrows an exception that a callback threw meanwhile.
int process(const Bus& bus);
// Whether the calling thread is inside process(), that is in one of a connection's callbacks.
bool isProcessing();

} // namespace VendelSDK::SdBus
