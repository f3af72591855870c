// Runs a test's steps at the pace of a quick user, one every 50 ms of virtual time.
#pragma once

#include <VendelSDK/Testing/ManualScheduler.h>

#include <QCoreApplication>
#include <QList>

#include <chrono>
#include <functional>

namespace MusicPlugin::Testing {

// Moves the scheduler on by `gap` before each step, and lets the event loop deliver what the step posted.
// Saves in the same instant each write once (their checks all find a quiet second), so changes that are to
// coalesce into one write must come apart, as a user's do.
inline void runAtUserPace(VendelSDK::Testing::ManualScheduler& scheduler,
                          const QList<std::function<void()>>& steps,
                          std::chrono::milliseconds gap = std::chrono::milliseconds(50))
{
    for (const auto& step : steps) {
        scheduler.advance(gap);
        step();
        QCoreApplication::processEvents();
    }
}

} // namespace MusicPlugin::Testing
