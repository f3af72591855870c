// The timer seam: runs work on the main thread after a delay, measured on the scheduler's own clock.
#pragma once

#include <VendelSDK/Export.h>

#include <QObject>

#include <chrono>
#include <functional>

namespace VendelSDK {

/// Runs work later on the main thread, and tells the time that its delays are measured in.
///
/// Everything in the SDK that waits (the delayed write of the configuration providers) goes through the
/// scheduler of Platform::scheduler(), so a test that installs a scheduler of its own decides when each
/// wait ends; VendelSDK::Testing::ManualScheduler is one that the test moves on by hand.
class VENDELSDK_EXPORT Scheduler
{
public:
    /// The clock whose readings now() returns: monotonic, never set back.
    using Clock = std::chrono::steady_clock;
    /// A reading of the scheduler's clock.
    using TimePoint = Clock::time_point;

    virtual ~Scheduler() = default;

    /// The current time on the scheduler's clock.
    virtual TimePoint now() const = 0;

    /// Runs `task` once on the main thread, `delay` after now(), unless `context` has been destroyed by
    /// then. Each call schedules a task of its own: nothing is merged or cancelled. Tasks due at the same
    /// moment run in the order in which they were scheduled. Call it on the main thread.
    virtual void schedule(std::chrono::milliseconds delay, const QObject* context,
                          std::function<void()> task) = 0;
};

} // namespace VendelSDK
