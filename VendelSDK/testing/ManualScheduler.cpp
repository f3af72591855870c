// Runs tasks strictly in due order; the clock never goes back, so a task made late by holdUp() sees the
// delay.
#include <VendelSDK/Testing/ManualScheduler.h>

#include <VendelSDK/Platform.h>

#include <algorithm>

namespace VendelSDK::Testing {

namespace {

// Far from the epoch, so that a reading minus a second or two is still a valid time.
constexpr std::chrono::hours startReading{24};

} // namespace

ManualScheduler::ManualScheduler() : m_start(startReading), m_now(m_start) {}

ManualScheduler& ManualScheduler::install()
{
    auto scheduler = std::make_unique<ManualScheduler>();
    ManualScheduler& installed = *scheduler;
    Platform::setScheduler(std::move(scheduler));
    return installed;
}

Scheduler::TimePoint ManualScheduler::now() const
{
    return m_now;
}

void ManualScheduler::schedule(std::chrono::milliseconds delay, const QObject* context,
                               std::function<void()> task)
{
    const auto wait = std::max(delay, std::chrono::milliseconds::zero());
    m_tasks.push_back(Task{m_now + wait, m_nextOrder++, context, context != nullptr, std::move(task)});
}

void ManualScheduler::advance(std::chrono::milliseconds step)
{
    const TimePoint end = m_now + std::max(step, std::chrono::milliseconds::zero());
    while (runNextDueBy(end)) {
    }
    m_now = std::max(m_now, end);
}

void ManualScheduler::holdUp(std::chrono::milliseconds step)
{
    m_now += std::max(step, std::chrono::milliseconds::zero());
}

int ManualScheduler::runAll(int limit)
{
    int ran = 0;
    while (ran < limit) {
        const auto due = nextDue();
        if (!due) {
            break;
        }
        const TimePoint at = m_now + *due;
        if (!runNextDueBy(at)) {
            break;
        }
        ++ran;
    }
    return ran;
}

bool ManualScheduler::runNextDueBy(TimePoint limit)
{
    // Tasks whose context is gone are dropped, as a timer dies with its context object.
    std::erase_if(m_tasks, [](const Task& task) { return task.hadContext && task.context.isNull(); });
    const auto next = std::ranges::min_element(m_tasks, [](const Task& a, const Task& b) {
        return a.due != b.due ? a.due < b.due : a.order < b.order;
    });
    if (next == m_tasks.end() || next->due > limit) {
        return false;
    }
    // Taken out before it runs: the task may schedule more, which may move the vector's storage.
    const std::function<void()> work = std::move(next->work);
    m_now = std::max(m_now, next->due);
    m_tasks.erase(next);
    if (work) {
        work();
    }
    return true;
}

std::chrono::milliseconds ManualScheduler::elapsed() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(m_now - m_start);
}

int ManualScheduler::pendingTasks() const
{
    return int(std::ranges::count_if(
        m_tasks, [](const Task& task) { return !task.hadContext || !task.context.isNull(); }));
}

std::optional<std::chrono::milliseconds> ManualScheduler::nextDue() const
{
    std::optional<TimePoint> earliest;
    for (const Task& task : m_tasks) {
        if (task.hadContext && task.context.isNull()) {
            continue;
        }
        if (!earliest || task.due < *earliest) {
            earliest = task.due;
        }
    }
    if (!earliest) {
        return std::nullopt;
    }
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::max(*earliest, m_now) - m_now);
}

} // namespace VendelSDK::Testing
