// Virtual time for tests: a clock that stands still and a scheduler whose tasks run when the test says.
#pragma once

#include <VendelSDK/Scheduler.h>

#include <QPointer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace VendelSDK::Testing {

/// A scheduler on a clock that moves only when the test moves it.
///
/// Install it with install() (or Platform::setScheduler()) before the code under test schedules anything;
/// from then on every wait of the SDK, the delayed write of the configuration providers included, ends
/// exactly when advance() reaches its due time, and never by itself. Tasks run on the thread that calls
/// advance(), which in a Qt test is the main thread. A task whose context object has been destroyed is
/// dropped without running.
class ManualScheduler final : public Scheduler
{
public:
    /// Starts the clock at an arbitrary fixed reading, with nothing scheduled.
    ManualScheduler();

    /// Makes a scheduler, hands it to Platform::setScheduler() and returns it; it stays owned by the
    /// platform, and is valid until the platform's scheduler is replaced or reset.
    static ManualScheduler& install();

    /// The clock's current reading.
    TimePoint now() const override;
    /// Queues `task` for now() + `delay`; a negative delay counts as none.
    void schedule(std::chrono::milliseconds delay, const QObject* context,
                  std::function<void()> task) override;

    /// Moves the clock on by `step`, running on the way every task that falls due by the end of it: in order
    /// of due time, tasks due at the same moment in the order they were scheduled, each with the clock set to
    /// its due time (or left where it is, if the clock has already passed it). Tasks that those tasks
    /// schedule run too when they fall due within the step. advance(0ms) runs what is due now.
    void advance(std::chrono::milliseconds step);
    /// Moves the clock on by `step` without running anything, as a main thread held up by a long operation
    /// would: the tasks that fall due meanwhile run, late, at the next advance().
    void holdUp(std::chrono::milliseconds step);
    /// Advances to the due time of each pending task in turn until none is left, at most `limit` tasks (so
    /// that work that keeps rescheduling itself cannot hang the test); returns how many ran.
    int runAll(int limit = 10000);

    /// How far the clock has moved since the scheduler was made.
    std::chrono::milliseconds elapsed() const;
    /// Tasks still waiting whose context still exists.
    int pendingTasks() const;
    /// How long until the earliest waiting task is due (zero when it is overdue); none when nothing waits.
    std::optional<std::chrono::milliseconds> nextDue() const;

private:
    struct Task
    {
        TimePoint due;
        std::uint64_t order = 0;
        QPointer<const QObject> context;
        bool hadContext = false;
        std::function<void()> work;
    };

    bool runNextDueBy(TimePoint limit);

    TimePoint m_start;
    TimePoint m_now;
    std::uint64_t m_nextOrder = 0;
    std::vector<Task> m_tasks;
};

} // namespace VendelSDK::Testing
