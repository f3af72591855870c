// Coalesces a burst of requests into one run of an action, once requests have stopped for a second.
#pragma once

#include <VendelSDK/Export.h>
#include <VendelSDK/Scheduler.h>

#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

namespace VendelSDK {

/// Runs an action once requests have stopped for a second: each run() schedules a check a second later, and
/// a check that finds a second gone since the latest run() calls the action. So a burst runs the action once,
/// a second after its last request; two checks that both find the quiet second each run it.
class VENDELSDK_EXPORT DelayedActionController : public QObject
{
    Q_OBJECT

public:
    /// The scheduler's clock.
    using Clock = Scheduler::Clock;
    /// A reading of that clock.
    using TimePoint = Scheduler::TimePoint;

    /// Both the wait and the quiet period that a check demands.
    static constexpr std::chrono::milliseconds delay{1000};

    /// The checks are scheduled with `scheduler`, whose clock run() and the checks read. Without one, the
    /// platform's (Platform::scheduler()) is looked up at each use, so that a test may replace it; a
    /// scheduler given here must outlive the controller.
    DelayedActionController(double interval, std::function<void()> action, Scheduler* scheduler = nullptr);

    /// Seconds; kept for the owner's information only, since the timing is always one second.
    double interval;
    /// Called on the main thread by the check that finds a quiet second; may be empty.
    std::function<void()> action;

    /// The moment of the latest run(); none before the first, never cleared afterwards.
    const std::optional<TimePoint>& lastTime() const { return m_lastTime; }

    /// Requests the action and returns at once; call it on the main thread, which owns the controller.
    void run();

private:
    Scheduler& scheduler() const;
    void check();

    Scheduler* m_scheduler;
    std::optional<TimePoint> m_lastTime;
};

} // namespace VendelSDK
