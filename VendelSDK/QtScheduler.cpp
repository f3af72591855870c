// A timer per task rather than one shared timer: each task keeps its own due time, as the callers expect.
#include <VendelSDK/QtScheduler.h>

#include <QTimer>

namespace VendelSDK {

Scheduler::TimePoint QtScheduler::now() const
{
    return Clock::now();
}

void QtScheduler::schedule(std::chrono::milliseconds delay, const QObject* context,
                           std::function<void()> task)
{
    // A precise timer: a coarse one may fire up to 5 % early, and the callers measure the delay again.
    QTimer::singleShot(delay, Qt::PreciseTimer, context, std::move(task));
}

} // namespace VendelSDK
