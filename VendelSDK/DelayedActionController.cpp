// Each run() schedules its own main-thread check; only a check that finds a quiet second runs the action.
#include <VendelSDK/DelayedActionController.h>

#include <VendelSDK/Platform.h>

namespace VendelSDK {

DelayedActionController::DelayedActionController(double intervalSeconds, std::function<void()> delayedAction,
                                                 Scheduler* scheduler)
    : interval(intervalSeconds), action(std::move(delayedAction)), m_scheduler(scheduler)
{}

Scheduler& DelayedActionController::scheduler() const
{
    return m_scheduler != nullptr ? *m_scheduler : Platform::scheduler();
}

void DelayedActionController::run()
{
    m_lastTime = scheduler().now();
    // A task per call rather than one restartable timer: every call's check runs, so two calls in the
    // same instant both find their quiet second. A check on the event loop instead of a sleeping worker
    // costs no threads, and the controller as context means a destroyed controller's checks never run.
    scheduler().schedule(delay, this, [this] { check(); });
}

void DelayedActionController::check()
{
    if (!m_lastTime || scheduler().now() - *m_lastTime < delay) {
        return;
    }
    // A copy, so that the action may replace or clear `action` while it runs.
    const std::function<void()> current = action;
    if (current) {
        current();
    }
}

} // namespace VendelSDK
