// Measures the host's command line from start to exit, `vendel-host actions` on a database of 20 actions,
// next to a bare Qt core application: wall time, peak memory and instructions.
// VENDEL_BENCH_PEER_HOST=<vendel-host> interleaves another build of the host (an older one, say) with this
// one, so that the two are compared in one run.
#include "HostStorage.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>

extern char** environ;

namespace {

struct Series
{
    std::string name;
    std::vector<std::string> arguments;
    std::vector<double> milliseconds = {};
    long peakKilobytes = 0;
    int failures = 0;
    std::optional<long long> instructions = {};
};

double now()
{
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) * 1000.0 + double(time.tv_nsec) / 1e6;
}

// Runs the program with its output thrown away; false when it did not exit with 0.
bool run(const std::vector<std::string>& arguments, double& milliseconds, long& peakKilobytes)
{
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    const double started = now();
    pid_t child = 0;
    const int spawned = ::posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) {
        return false;
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    milliseconds = now() - started;
    peakKilobytes = usage.ru_maxrss;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

double percentile(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[std::size_t(fraction * double(values.size() - 1) + 0.5)];
}

// Callgrind's count of the instructions of one run; nothing when it cannot say.
std::optional<long long> instructionCount(const std::vector<std::string>& arguments)
{
    const QString valgrind = QStandardPaths::findExecutable(QStringLiteral("valgrind"));
    QTemporaryDir folder;
    if (valgrind.isEmpty() || !folder.isValid()) {
        return std::nullopt;
    }
    const QString output = folder.filePath(QStringLiteral("callgrind.out"));
    std::vector<std::string> command{valgrind.toStdString(), "--tool=callgrind", "--quiet",
                                     "--callgrind-out-file=" + output.toStdString()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    double milliseconds = 0;
    long peak = 0;
    QFile profile(output);
    if (!run(command, milliseconds, peak) || !profile.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    while (!profile.atEnd()) {
        const QByteArray line = profile.readLine().trimmed();
        if (line.startsWith("summary:") || line.startsWith("totals:")) {
            return line.mid(line.indexOf(':') + 1).trimmed().split(' ').value(0).toLongLong();
        }
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    constexpr int rounds = 50;
    QTemporaryDir data;
    {
        VendelHost::HostStorage storage(data.path());
        storage.recordPlugin({QStringLiteral("vendel-music-plugin"),
                              QStringLiteral("/usr/bin/vendel-music-plugin"), QStringLiteral("Vendel Music"),
                              QStringLiteral("vendel-music-plugin")});
        for (int index = 0; index < 20; ++index) {
            const QString id = storage.createAction(QStringLiteral("vendel-music-plugin"),
                                                    QStringLiteral("Action %1").arg(index));
            storage.setConfig(id,
                              QStringLiteral("{\"action\":0,\"name\":\"Road Trip\",\"shouldShuffle\":true}"));
        }
    }
    qputenv("VENDEL_HOST_DATA_DIR", QFile::encodeName(data.path()));
    qputenv("LC_ALL", "C.UTF-8");

    std::vector<Series> series{
        {"vendel-host actions (this build)", {VENDEL_HOST_EXECUTABLE, "actions"}},
        {"bare QCoreApplication start and exit", {VENDEL_BARE_CORE_APPLICATION}},
    };
    const std::string peer = qEnvironmentVariable("VENDEL_BENCH_PEER_HOST").toStdString();
    if (!peer.empty()) {
        series.push_back({"vendel-host actions (VENDEL_BENCH_PEER_HOST)", {peer, "actions"}});
    }
    // Rounds interleave the programs, so that a slow moment of the machine hits all of them alike; the
    // first three warm the caches and are not counted.
    for (int round = 0; round < rounds + 3; ++round) {
        for (Series& one : series) {
            double milliseconds = 0;
            long peak = 0;
            if (!run(one.arguments, milliseconds, peak)) {
                ++one.failures;
            } else if (round >= 3) {
                one.milliseconds.push_back(milliseconds);
                one.peakKilobytes = std::max(one.peakKilobytes, peak);
            }
        }
    }
    for (Series& one : series) {
        one.instructions = instructionCount(one.arguments);
    }
    std::printf("%d interleaved runs each, after 3 to warm up\n", rounds);
    std::printf("%-46s %9s %9s %9s %10s %12s\n", "program", "median", "p10", "p90", "peak RSS",
                "instructions");
    for (const Series& one : series) {
        std::printf("%-46s %7.2f ms %6.2f ms %6.2f ms %7.1f MB %10.2f M%s\n", one.name.c_str(),
                    percentile(one.milliseconds, 0.5), percentile(one.milliseconds, 0.1),
                    percentile(one.milliseconds, 0.9), double(one.peakKilobytes) / 1024.0,
                    one.instructions ? double(*one.instructions) / 1e6 : 0.0,
                    one.failures > 0 ? " (failed runs!)" : "");
    }
    if (series.size() > 2) {
        std::printf("this build / peer, medians: %.3f\n",
                    percentile(series[0].milliseconds, 0.5) / percentile(series[2].milliseconds, 0.5));
    }
    const bool failed =
        std::any_of(series.begin(), series.end(), [](const Series& one) { return one.failures > 0; });
    return failed ? 1 : 0;
}
