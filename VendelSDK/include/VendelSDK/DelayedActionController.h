// Coalesces a burst of requests into one run of an action, once requests have stopped for a second.
#pragma once

#include <VendelSDK/Export.h>

#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

namespace VendelSDK {

class VENDELSDK_EXPORT DelayedActionController : public QObject
{
    Q_OBJECT

public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;

    // Both the wait and the quiet period that a check demands.
    static constexpr std::chrono::milliseconds delay{1000};

    // `now` reads the clock that run() and the checks compare; tests may pass a clock of their own.
    DelayedActionController(double interval, std::function<void()> action,
                            std::function<TimePoint()> now = &Clock::now);

    // Seconds; kept for the owner's information only, since the timing is always one second.
    double interval;
    // Called on the main thread by the check that finds a quiet second; may be empty.
    std::function<void()> action;

    // The moment of the latest run(); none before the first, never cleared afterwards.
    const std::optional<TimePoint>& lastTime() const { return m_lastTime; }

    // Requests the action and returns at once; call it on the thread that owns the controller (the main one).
    void run();

private:
    void check();

    std::function<TimePoint()> m_now;
    std::optional<TimePoint> m_lastTime;
};

} // namespace VendelSDK
