// The one wait loop of the layer: process, then poll the bus and the interruption, and start again.
#include "Wait.h"

#include "Process.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <thread>

#include <poll.h>

namespace VendelSDK::SdBus {

using namespace std::chrono;

namespace {

Interruption interruption;
// Only waits on the thread that named the interruption watch it: elsewhere nobody would empty the pipe.
std::thread::id interruptedThread;

} // namespace

std::optional<milliseconds> dueIn(const Bus& bus)
{
    std::uint64_t due = UINT64_MAX;
    if (sd_bus_get_timeout(bus.get(), &due) < 0 || due == UINT64_MAX) {
        return std::nullopt;
    }
    // The bus counts in microseconds of the monotonic clock.
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const std::uint64_t nowMicroseconds =
        std::uint64_t(now.tv_sec) * 1000000 + std::uint64_t(now.tv_nsec) / 1000;
    return milliseconds(due > nowMicroseconds ? qint64((due - nowMicroseconds + 999) / 1000) : 0);
}

void setInterruption(Interruption value)
{
    interruption = value;
    interruptedThread = std::this_thread::get_id();
}

steady_clock::time_point unbounded()
{
    return steady_clock::now() + hours(24 * 365);
}

WaitEnd waitUntil(const Bus& bus, const std::function<bool()>& done, steady_clock::time_point deadline)
{
    for (;;) {
        if (done()) {
            return WaitEnd::done;
        }
        if (!bus.isConnected()) {
            return WaitEnd::closed;
        }
        const int status = process(bus);
        if (status == -EBUSY) {
            return WaitEnd::busy;
        }
        if (status < 0) {
            return WaitEnd::closed;
        }
        // A callback may have run even when sd-bus reports nothing done (a call's time-out does that).
        if (status > 0 || done()) {
            continue;
        }
        const auto left = ceil<milliseconds>(deadline - steady_clock::now()).count();
        if (left <= 0) {
            return done() ? WaitEnd::done : WaitEnd::deadline;
        }
        qint64 sleep = left;
        if (const auto due = dueIn(bus)) {
            sleep = std::min<qint64>(sleep, due->count());
        }
        const bool interruptible = interruption.deliver != nullptr && interruption.descriptor != nullptr &&
                                   std::this_thread::get_id() == interruptedThread;
        const int events = sd_bus_get_events(bus.get());
        pollfd watched[2] = {{sd_bus_get_fd(bus.get()), short(events > 0 ? events : POLLIN), 0},
                             {interruptible ? interruption.descriptor() : -1, POLLIN, 0}};
        const int ready = ::poll(watched, 2, int(std::min<qint64>(sleep, INT_MAX)));
        if (ready < 0 && errno != EINTR) {
            return WaitEnd::closed;
        }
        // After EINTR the loop looks again: the interruption may have arrived with it.
        if (interruptible && (ready < 0 || (watched[1].revents & POLLIN) != 0)) {
            interruption.deliver();
        }
    }
}

} // namespace VendelSDK::SdBus
