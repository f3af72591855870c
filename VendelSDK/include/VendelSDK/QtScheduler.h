// The scheduler of a running application: the real clock, and timers of the main thread's event loop.
#pragma once

#include <VendelSDK/Export.h>
#include <VendelSDK/Scheduler.h>

namespace VendelSDK {

/// The default scheduler: one precise single-shot timer of the event loop per task, on the steady clock.
/// Its tasks run only while the main thread's event loop runs, and a task whose context is destroyed is
/// dropped with it.
class VENDELSDK_EXPORT QtScheduler final : public Scheduler
{
public:
    /// Reads the steady clock.
    TimePoint now() const override;
    /// Arms a precise single-shot timer with `context` as its context object.
    void schedule(std::chrono::milliseconds delay, const QObject* context,
                  std::function<void()> task) override;
};

} // namespace VendelSDK
