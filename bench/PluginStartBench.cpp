// Measures a headless run of the plugin from start to exit, its peak memory and instructions, next to mpc and
// a bare Qt core application. Run it inside dbus-run-session. VENDEL_BENCH_PEER_PLUGIN=<executable>
// interleaves another build of the plugin (an older one, say) with this one, so that the two are compared in
// one run.
#include "MpdTestServer.h"
#include "TestHostProcess.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

using VendelSDK::Testing::MpdTestServer;
using VendelSDK::Testing::TestHostProcess;

namespace {

// What the launcher reports of one program run.
struct Sample
{
    double milliseconds = 0;
    long peakKilobytes = 0;
    int status = -1;
};

bool writeAll(int fd, const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written = ::write(fd, bytes, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes += written;
        size -= std::size_t(written);
    }
    return true;
}

bool readAll(int fd, void* data, std::size_t size)
{
    auto* bytes = static_cast<char*>(data);
    while (size > 0) {
        const ssize_t got = ::read(fd, bytes, size);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        bytes += got;
        size -= std::size_t(got);
    }
    return true;
}

bool writeStrings(int fd, const std::vector<std::string>& strings)
{
    const auto count = std::uint32_t(strings.size());
    if (!writeAll(fd, &count, sizeof count)) {
        return false;
    }
    for (const std::string& text : strings) {
        const auto size = std::uint32_t(text.size());
        if (!writeAll(fd, &size, sizeof size) || !writeAll(fd, text.data(), size)) {
            return false;
        }
    }
    return true;
}

bool readStrings(int fd, std::vector<std::string>& strings)
{
    std::uint32_t count = 0;
    if (!readAll(fd, &count, sizeof count)) {
        return false;
    }
    strings.assign(count, std::string());
    for (std::string& text : strings) {
        std::uint32_t size = 0;
        if (!readAll(fd, &size, sizeof size)) {
            return false;
        }
        text.resize(size);
        if (size > 0 && !readAll(fd, text.data(), size)) {
            return false;
        }
    }
    return true;
}

double now()
{
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

// A small process, forked before Qt is started, that starts each measured program. A child's peak
// resident size counts what it inherited at fork, so the programs must not be forked from this big one.
class Launcher
{
public:
    bool start()
    {
        int commands[2];
        int results[2];
        if (::pipe(commands) != 0 || ::pipe(results) != 0) {
            return false;
        }
        m_pid = ::fork();
        if (m_pid < 0) {
            return false;
        }
        if (m_pid == 0) {
            ::close(commands[1]);
            ::close(results[0]);
            serve(commands[0], results[1]);
            ::_exit(0);
        }
        ::close(commands[0]);
        ::close(results[1]);
        m_commands = commands[1];
        m_results = results[0];
        return true;
    }

    ~Launcher()
    {
        if (m_pid > 0) {
            ::close(m_commands);
            ::close(m_results);
            ::waitpid(m_pid, nullptr, 0);
        }
    }

    // Runs a program with exactly this environment and waits for it.
    Sample run(const std::vector<std::string>& arguments, const std::vector<std::string>& environment)
    {
        Sample sample;
        if (!writeStrings(m_commands, arguments) || !writeStrings(m_commands, environment) ||
            !readAll(m_results, &sample, sizeof sample)) {
            sample.status = -1;
        }
        return sample;
    }

private:
    static void serve(int commands, int results)
    {
        std::vector<std::string> arguments;
        std::vector<std::string> environment;
        while (readStrings(commands, arguments) && readStrings(commands, environment)) {
            std::vector<char*> argv;
            for (std::string& argument : arguments) {
                argv.push_back(argument.data());
            }
            argv.push_back(nullptr);
            std::vector<char*> envp;
            for (std::string& entry : environment) {
                envp.push_back(entry.data());
            }
            envp.push_back(nullptr);

            Sample sample;
            const double started = now();
            const pid_t child = ::fork();
            if (child == 0) {
                const int devNull = ::open("/dev/null", O_WRONLY);
                ::dup2(devNull, STDOUT_FILENO);
                ::execve(argv[0], argv.data(), envp.data());
                ::_exit(127);
            }
            int status = 0;
            rusage usage{};
            ::wait4(child, &status, 0, &usage);
            sample.milliseconds = now() - started;
            sample.peakKilobytes = usage.ru_maxrss;
            sample.status = status;
            if (!writeAll(results, &sample, sizeof sample)) {
                return;
            }
        }
    }

    pid_t m_pid = -1;
    int m_commands = -1;
    int m_results = -1;
};

struct Series
{
    Series(std::string seriesName, std::vector<std::string> programArguments, bool isPlugin = false)
        : name(std::move(seriesName)), arguments(std::move(programArguments)), plugin(isPlugin)
    {}

    std::string name;
    std::vector<std::string> arguments;
    // A plugin's runs must leave MPD playing; the others are yardsticks.
    bool plugin = false;
    std::vector<double> milliseconds;
    long peakKilobytes = 0;
    int failures = 0;
    bool playing = true;
};

double percentile(std::vector<double> values, double fraction)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[std::size_t(fraction * double(values.size() - 1) + 0.5)];
}

std::vector<std::string> environmentWith(const std::vector<std::string>& additions)
{
    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text(*entry);
        // No display: the run is measured headless.
        if (text.rfind("DISPLAY=", 0) == 0 || text.rfind("WAYLAND_DISPLAY=", 0) == 0 ||
            text.rfind("QT_QPA_PLATFORM=", 0) == 0) {
            continue;
        }
        environment.push_back(text);
    }
    environment.insert(environment.end(), additions.begin(), additions.end());
    return environment;
}

// Callgrind's count of the instructions of one run, all threads included; nothing when it cannot say.
std::optional<long long> instructionCount(Launcher& launcher, const std::vector<std::string>& arguments,
                                          const std::vector<std::string>& environment, const QString& suffix)
{
    const QString valgrind = QStandardPaths::findExecutable(QStringLiteral("valgrind"));
    QTemporaryDir folder;
    if (valgrind.isEmpty() || !folder.isValid()) {
        return std::nullopt;
    }
    // VENDEL_CALLGRIND_OUT keeps the profile for callgrind_annotate; the peer's gets ".peer" appended.
    const QString kept = qEnvironmentVariable("VENDEL_CALLGRIND_OUT");
    const QString output = kept.isEmpty() ? folder.filePath(QStringLiteral("callgrind.out")) : kept + suffix;
    std::vector<std::string> command{valgrind.toStdString(), "--tool=callgrind", "--quiet",
                                     "--callgrind-out-file=" + output.toStdString()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    QFile profile(output);
    if (launcher.run(command, environment).status != 0 || !profile.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    while (!profile.atEnd()) {
        const QByteArray line = profile.readLine().trimmed();
        if (line.startsWith("summary:") || line.startsWith("totals:")) {
            bool valid = false;
            const long long count =
                line.mid(line.indexOf(':') + 1).trimmed().split(' ').value(0).toLongLong(&valid);
            if (valid) {
                return count;
            }
        }
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char* argv[])
{
    Launcher launcher;
    if (!launcher.start()) {
        std::perror("PluginStartBench: launcher");
        return 1;
    }
    QCoreApplication app(argc, argv);
    const int rounds = 50;

    const QString mpc = QStandardPaths::findExecutable(QStringLiteral("mpc"));
    if (mpc.isEmpty()) {
        std::fputs("PluginStartBench: mpc is not installed (apt-get install mpc)\n", stderr);
        return 1;
    }
    MpdTestServer mpd;
    const QStringList songs{QStringLiteral("focus/one.wav"), QStringLiteral("focus/two.wav")};
    for (const QString& song : songs) {
        mpd.addSong(song);
    }
    mpd.addPlaylist(QStringLiteral("Focus"), songs);
    TestHostProcess host;
    if (!mpd.start() || !host.start()) {
        std::fprintf(stderr, "PluginStartBench: %s\n", qPrintable(mpd.errorString()));
        return 1;
    }
    TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                {QStringLiteral("GetConfig"),
                                 QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":true}")});

    const std::string mpdHost = mpd.socketPath().toStdString();
    const auto environment = environmentWith({"MPD_HOST=" + mpdHost, "VENDEL_MUSIC=mpd", "LC_ALL=C.UTF-8"});
    std::vector<Series> series{
        {"plugin run (host read + write, 5 MPD commands)",
         {VENDEL_MUSIC_PLUGIN, "vendelplugin://run/Bench"},
         true},
        {"mpc random/clear/load/play in sh (4 processes)",
         {"/bin/sh", "-c",
          mpc.toStdString() + " -q random on && " + mpc.toStdString() + " -q clear && " + mpc.toStdString() +
              " -q load Focus && " + mpc.toStdString() + " -q play"}},
        {"bare QCoreApplication start and exit", {VENDEL_BARE_CORE_APPLICATION}},
    };
    const std::string peer = qEnvironmentVariable("VENDEL_BENCH_PEER_PLUGIN").toStdString();
    if (!peer.empty()) {
        series.emplace_back("peer plugin run (VENDEL_BENCH_PEER_PLUGIN)",
                            std::vector<std::string>{peer, "vendelplugin://run/Bench"}, true);
    }

    // Rounds interleave the programs, so that a slow moment of the machine hits all of them alike.
    for (int round = 0; round < rounds + 3; ++round) {
        for (Series& entry : series) {
            mpd.reset();
            const Sample sample = launcher.run(entry.arguments, environment);
            if (round < 3) {
                continue; // warm-up: page cache and the bus's first activations
            }
            if (sample.status != 0) {
                ++entry.failures;
            }
            if (entry.plugin) {
                const auto status = mpd.status();
                entry.playing =
                    entry.playing && status && status->state == QStringLiteral("play") && status->random;
            }
            entry.milliseconds.push_back(sample.milliseconds);
            entry.peakKilobytes = std::max(entry.peakKilobytes, sample.peakKilobytes);
        }
    }

    std::printf("Headless start to exit, %d runs each (interleaved), this machine:\n", rounds);
    std::printf("  %-50s %9s %9s %9s %12s %8s\n", "", "median", "p90", "min", "peak RSS", "failed");
    for (const Series& entry : series) {
        std::printf("  %-50s %6.2f ms %6.2f ms %6.2f ms %9.1f MB %8d\n", entry.name.c_str(),
                    percentile(entry.milliseconds, 0.5), percentile(entry.milliseconds, 0.9),
                    percentile(entry.milliseconds, 0.0), double(entry.peakKilobytes) / 1024.0,
                    entry.failures);
    }
    bool allPlayed = true;
    for (const Series& entry : series) {
        if (!entry.plugin) {
            continue;
        }
        const double plugin = percentile(entry.milliseconds, 0.5);
        std::printf("%s:\n  ratios of medians: / mpc sequence = %.2f, / bare QCoreApplication = %.2f\n",
                    entry.name.c_str(), plugin / percentile(series[1].milliseconds, 0.5),
                    plugin / percentile(series[2].milliseconds, 0.5));
        mpd.reset();
        const auto instructions =
            instructionCount(launcher, entry.arguments, environment,
                             &entry == &series.front() ? QString() : QStringLiteral(".peer"));
        if (instructions) {
            std::printf("  instructions of one run (callgrind, all threads): %.2f M\n",
                        double(*instructions) / 1e6);
        } else {
            std::printf("  instructions of one run: not measured (valgrind is missing or the run failed)\n");
        }
        std::printf("  MPD after each run: %s\n",
                    entry.playing ? "playing Focus with random on" : "NOT as expected");
        allPlayed = allPlayed && entry.failures == 0 && entry.playing;
    }
    if (series.size() > 3) {
        std::printf("This plugin / peer plugin, medians: %.3f\n",
                    percentile(series[0].milliseconds, 0.5) / percentile(series[3].milliseconds, 0.5));
    }
    return allPlayed ? 0 : 1;
}
