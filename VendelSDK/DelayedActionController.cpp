// Each run() arms its own main-thread timer; only the check that finds a quiet second runs the action.
#include <VendelSDK/DelayedActionController.h>

#include <QTimer>

namespace VendelSDK {

DelayedActionController::DelayedActionController(double intervalSeconds, std::function<void()> delayedAction,
                                                 std::function<TimePoint()> now)
    : interval(intervalSeconds), action(std::move(delayedAction)), m_now(std::move(now))
{}

void DelayedActionController::run()
{
    m_lastTime = m_now();
    // A timer on the event loop instead of a sleeping worker: a burst costs no threads, and the controller
    // as context object means a destroyed controller's checks never run.
    QTimer::singleShot(delay, Qt::PreciseTimer, this, &DelayedActionController::check);
}

void DelayedActionController::check()
{
    if (!m_lastTime || m_now() - *m_lastTime < delay) {
        return;
    }
    // A copy, so that the action may replace or clear `action` while it runs.
    const std::function<void()> current = action;
    if (current) {
        current();
    }
}

} // namespace VendelSDK
