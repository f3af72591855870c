// Runs a test's steps at the pace of a quick user: one every 50 ms, from the event loop.
#pragma once

#include <QEventLoop>
#include <QList>
#include <QTimer>

#include <chrono>
#include <functional>

namespace MusicPlugin::Testing {

// Returns once the last step has run. Saves in the same instant each write once (their checks all find a
// quiet second), so changes that are to coalesce into one write must come apart, as a user's do.
inline void runAtUserPace(const QList<std::function<void()>>& steps,
                          std::chrono::milliseconds gap = std::chrono::milliseconds(50))
{
    QEventLoop loop;
    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    ticker.setInterval(gap);
    qsizetype next = 0;
    QObject::connect(&ticker, &QTimer::timeout, &loop, [&] {
        if (next < steps.size()) {
            steps.at(next++)();
        }
        if (next == steps.size()) {
            loop.quit();
        }
    });
    ticker.start();
    loop.exec();
}

} // namespace MusicPlugin::Testing
