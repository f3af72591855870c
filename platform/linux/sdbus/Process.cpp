// One place calls sd_bus_process, so that every callback's exception is rethrown outside sd-bus.
#include "Process.h"

#include <systemd/sd-bus.h>

namespace VendelSDK::SdBus {

namespace {

thread_local std::exception_ptr kept;
thread_local int processing = 0;

} // namespace

void CallbackBoundary::keep(std::exception_ptr exception)
{
    if (!kept) {
        kept = std::move(exception);
    }
}

void CallbackBoundary::rethrowKept()
{
    if (kept) {
        std::rethrow_exception(std::exchange(kept, nullptr));
    }
}

int process(const Bus& bus)
{
    ++processing;
    const int status = sd_bus_process(bus.get(), nullptr);
    --processing;
    CallbackBoundary::rethrowKept();
    return status;
}

bool isProcessing()
{
    return processing > 0;
}

} // namespace VendelSDK::SdBus
