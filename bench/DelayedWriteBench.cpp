// Measures how long after the last save() the coalesced write reaches the host, and the threads a burst
// costs.
#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/Platform.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace VendelSDK;

namespace {

constexpr int burstCount = 100;
constexpr int savesPerBurst = 10;
constexpr int saveSpacingMs = 50;
// Bursts start this far apart, so that about thirty are under way at once and the run stays short.
constexpr int burstStaggerMs = 40;

QElapsedTimer benchClock;

struct Counter
{
    qint64 value = 0;

    QJsonObject toJson() const { return {{QStringLiteral("value"), value}}; }
    static std::optional<Counter> fromJson(const QJsonObject& object)
    {
        if (!object.value(QStringLiteral("value")).isDouble()) {
            return std::nullopt;
        }
        return Counter{object.value(QStringLiteral("value")).toInteger()};
    }
};

// A host that answers at once, so that only the coalescing itself is measured.
class InstantHost final : public ScriptEngine
{
public:
    ScriptOutcome execute(const QString& source) override
    {
        static const QRegularExpression setConfig(QStringLiteral("set config \".*\" action \"([^\"]*)\"$"));
        const QRegularExpressionMatch match = setConfig.match(source);
        if (match.hasMatch()) {
            writesNs[match.captured(1)].push_back(benchClock.nsecsElapsed());
            return ScriptNoResult{};
        }
        return QString();
    }

    QHash<QString, std::vector<qint64>> writesNs;
};

int threadCount()
{
    // Files under /proc report no size, so they are read whole rather than tested for their end.
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return -1;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("Threads:")) {
            return line.mid(8).trimmed().toInt();
        }
    }
    return -1;
}

double milliseconds(qint64 ns)
{
    return double(ns) / 1e6;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    auto hostOwner = std::make_unique<InstantHost>();
    InstantHost& host = *hostOwner;
    Platform::setScriptEngine(std::move(hostOwner));
    benchClock.start();

    // Part 1: overlapping bursts, each on its own provider.
    std::vector<std::shared_ptr<LocalConfigProvider<Counter>>> providers;
    std::vector<qint64> lastSaveNs(burstCount, -1);
    std::vector<std::unique_ptr<QTimer>> tickers;
    for (int burst = 0; burst < burstCount; ++burst) {
        auto provider =
            LocalConfigProvider<Counter>::create(QStringLiteral("bench-%1").arg(burst), Counter{});
        if (!provider) {
            return 1;
        }
        providers.push_back(provider);
        auto ticker = std::make_unique<QTimer>();
        ticker->setTimerType(Qt::PreciseTimer);
        ticker->setInterval(saveSpacingMs);
        QTimer* const tickerPointer = ticker.get();
        QObject::connect(tickerPointer, &QTimer::timeout, [provider, tickerPointer, burst, &lastSaveNs] {
            provider->config.value += 1;
            provider->save();
            lastSaveNs[std::size_t(burst)] = benchClock.nsecsElapsed();
            if (provider->config.value == savesPerBurst) {
                tickerPointer->stop();
            }
        });
        QTimer::singleShot(burst * burstStaggerMs, tickerPointer,
                           [tickerPointer] { tickerPointer->start(); });
        tickers.push_back(std::move(ticker));
    }

    // Part 2, after the bursts: one provider, 100 saves in a row, threads sampled while its checks are
    // pending.
    int threadsBefore = -1;
    int threadsDuring = -1;
    int threadsAfter = -1;
    std::shared_ptr<LocalConfigProvider<Counter>> single;
    const int part2StartMs = burstCount * burstStaggerMs + savesPerBurst * saveSpacingMs + 1500;
    QTimer::singleShot(part2StartMs, &app, [&] {
        threadsBefore = threadCount();
        single = LocalConfigProvider<Counter>::create(QStringLiteral("bench-threads"), Counter{});
        for (int save = 0; save < 100; ++save) {
            single->config.value = save;
            single->save();
        }
        threadsDuring = threadCount();
        QTimer::singleShot(500, &app, [&] { threadsDuring = std::max(threadsDuring, threadCount()); });
        QTimer::singleShot(1500, &app, [&] {
            threadsAfter = threadCount();
            Platform::applicationServices().terminate();
        });
    });
    QTimer::singleShot(part2StartMs + 10000, &app, [] { QCoreApplication::exit(2); });
    // The termination writes are not part of the measurement; they are counted apart below.
    const int code = QCoreApplication::exec();
    if (code != 0) {
        std::fprintf(stderr, "the benchmark did not finish\n");
        return code;
    }

    std::vector<double> delays;
    int burstsWithOneDelayedWrite = 0;
    for (int burst = 0; burst < burstCount; ++burst) {
        const auto& writes = host.writesNs.value(QStringLiteral("bench-%1").arg(burst));
        // The last write of each provider is the one made at termination.
        const std::size_t delayed = writes.empty() ? 0 : writes.size() - 1;
        if (delayed == 1) {
            ++burstsWithOneDelayedWrite;
        }
        if (delayed >= 1) {
            delays.push_back(milliseconds(writes.front() - lastSaveNs[std::size_t(burst)]));
        }
    }
    std::sort(delays.begin(), delays.end());
    const auto& singleWrites = host.writesNs.value(QStringLiteral("bench-threads"));

    std::printf("Delayed write: %d overlapping bursts of %d saves, %d ms apart, one provider each\n",
                burstCount, savesPerBurst, saveSpacingMs);
    std::printf("  bursts with exactly one delayed write: %d of %d\n", burstsWithOneDelayedWrite, burstCount);
    if (!delays.empty()) {
        const std::size_t middle = delays.size() / 2;
        const double median =
            delays.size() % 2 == 1 ? delays[middle] : (delays[middle - 1] + delays[middle]) / 2;
        std::printf("  last save() to write: median %.2f ms, max %.2f ms, min %.2f ms\n", median,
                    delays.back(), delays.front());
    }
    std::printf("Threads during a burst of 100 saves: before %d, during %d, after %d\n", threadsBefore,
                threadsDuring, threadsAfter);
    std::printf("  writes from that burst before termination: %zu\n",
                singleWrites.empty() ? std::size_t(0) : singleWrites.size() - 1);
    return 0;
}
