// Measures an edit launch, from process start to the editor on screen, next to a bare widget application. Run
// it on an X display (Xvfb) inside dbus-run-session; VENDEL_BENCH_PEER_PLUGIN=<executable> interleaves
// another build.
#include "MpdTestServer.h"
#include "TestHostProcess.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include <poll.h>

using VendelSDK::Testing::MpdTestServer;
using VendelSDK::Testing::TestHostProcess;

namespace {

constexpr int rounds = 20;
constexpr int warmUps = 2;

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "EditWindowBench: %s\n", what);
        std::exit(1);
    }
}

// Watches the display for top-level windows being mapped, which is when a window shows.
class MapWatcher
{
public:
    MapWatcher() : m_connection(xcb_connect(nullptr, nullptr))
    {
        require(xcb_connection_has_error(m_connection) == 0, "no X display; run it under Xvfb");
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(m_connection);
    }

    ~MapWatcher() { xcb_disconnect(m_connection); }
    MapWatcher(const MapWatcher&) = delete;
    MapWatcher& operator=(const MapWatcher&) = delete;

    // Drops what earlier runs left.
    void drain()
    {
        while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection)) {
            std::free(event);
        }
    }

    // Waits until a window with this title is mapped; false after the time-out.
    bool waitForWindow(const QByteArray& title, int timeoutMs)
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < timeoutMs) {
            std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(xcb_poll_for_event(m_connection),
                                                                             &std::free);
            if (!event) {
                pollfd descriptor{xcb_get_file_descriptor(m_connection), POLLIN, 0};
                ::poll(&descriptor, 1, 10);
                continue;
            }
            if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY &&
                titleOf(reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window) == title) {
                return true;
            }
        }
        return false;
    }

private:
    QByteArray titleOf(xcb_window_t window)
    {
        const auto cookie =
            xcb_get_property(m_connection, 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 256);
        std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
            xcb_get_property_reply(m_connection, cookie, nullptr), &std::free);
        if (!reply) {
            return {};
        }
        return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          xcb_get_property_value_length(reply.get()));
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root = 0;
};

bool pluginIsOnTheBus()
{
    const QStringList names = QDBusConnection::sessionBus().interface()->registeredServiceNames().value();
    return std::any_of(names.begin(), names.end(), [](const QString& name) {
        return name.startsWith(QStringLiteral("org.vendel.plugin"));
    });
}

// The process's peak resident size so far, in kilobytes; 0 when the system cannot say.
long peakKilobytes(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).trimmed().split(' ').value(0).toLong();
        }
    }
    return 0;
}

struct Launch
{
    double ms = 0;
    long peakKilobytes = 0;
};

// From starting the program to its window on screen, and its peak memory by then; it is ended afterwards.
Launch timeToWindow(MapWatcher& watcher, const QString& program, const QStringList& arguments,
                    const QByteArray& title)
{
    watcher.drain();
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    QElapsedTimer clock;
    clock.start();
    process.start(program, arguments);
    const bool shown = watcher.waitForWindow(title, 10000);
    const Launch launch{double(clock.nsecsElapsed()) / 1e6, peakKilobytes(process.processId())};
    process.terminate();
    require(process.waitForFinished(10000), "a program did not end");
    require(shown, "the window did not show");
    // The next launch must not find this one's single-instance name still on the bus.
    require(QTest::qWaitFor([] { return !pluginIsOnTheBus(); }, 5000), "the plugin's bus name stayed");
    return launch;
}

struct Series
{
    Series(const char* seriesName, QString path, QStringList programArguments, QByteArray windowTitle)
        : name(seriesName), program(std::move(path)), arguments(std::move(programArguments)),
          title(std::move(windowTitle))
    {}

    const char* name;
    QString program;
    QStringList arguments;
    QByteArray title;
    std::vector<double> ms;
    long peakKilobytes = 0;

    void add(const Launch& launch)
    {
        ms.push_back(launch.ms);
        peakKilobytes = std::max(peakKilobytes, launch.peakKilobytes);
    }
};

struct Figures
{
    double median;
    double min;
    double max;
};

Figures figuresOf(std::vector<double> ms)
{
    std::sort(ms.begin(), ms.end());
    return {(ms[ms.size() / 2 - 1] + ms[ms.size() / 2]) / 2, ms.front(), ms.back()};
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    require(QDBusConnection::sessionBus().isConnected(), "no session bus; run it under dbus-run-session");

    TestHostProcess host;
    require(host.start(), "the stand-in host did not start");
    require(TestHostProcess::controlled(
                QStringLiteral("AnswerText"),
                {QStringLiteral("GetConfig"),
                 QStringLiteral("{\"action\":0,\"name\":\"Evening\",\"shouldShuffle\":true}")}),
            "the stand-in host did not take its answer");

    MpdTestServer mpd;
    mpd.addSong(QStringLiteral("a.wav"), 5);
    for (const char* name : {"Evening", "Focus", "Morning Run", "Road Trip"}) {
        mpd.addPlaylist(QString::fromUtf8(name), {QStringLiteral("a.wav")});
    }
    require(mpd.start(), "MPD did not start");
    qputenv("MPD_HOST", mpd.socketPath().toUtf8());
    qputenv("VENDEL_MUSIC", "mpd");
    qunsetenv("QT_QPA_PLATFORM");

    MapWatcher watcher;
    const QStringList editURL{QStringLiteral("vendelplugin://edit/bench-action")};
    const QByteArray editorTitle("Music Action");
    std::vector<Series> series{
        {"plugin: vendelplugin://edit/<id> to editor", QStringLiteral(VENDEL_MUSIC_PLUGIN), editURL,
         editorTitle},
        {"bare QApplication showing one widget",
         QStringLiteral(VENDEL_BARE_WIDGET_APPLICATION),
         {},
         QByteArray("Bare Window")},
    };
    const QString peer = qEnvironmentVariable("VENDEL_BENCH_PEER_PLUGIN");
    if (!peer.isEmpty()) {
        series.push_back({"peer plugin (VENDEL_BENCH_PEER_PLUGIN) to editor", peer, editURL, editorTitle});
    }

    for (int i = 0; i < warmUps; ++i) {
        for (const Series& entry : series) {
            timeToWindow(watcher, entry.program, entry.arguments, entry.title);
        }
    }
    // Interleaved, so that none profits from a quieter moment of the machine.
    for (int i = 0; i < rounds; ++i) {
        for (Series& entry : series) {
            entry.add(timeToWindow(watcher, entry.program, entry.arguments, entry.title));
        }
    }

    std::printf("Process start to window shown, %d runs each (interleaved), this machine:\n", rounds);
    std::printf("  %-50s %10s %10s %10s %14s\n", "", "median", "min", "max", "peak RSS then");
    for (const Series& entry : series) {
        const Figures figures = figuresOf(entry.ms);
        std::printf("  %-50s %7.1f ms %7.1f ms %7.1f ms %11.1f MB\n", entry.name, figures.median, figures.min,
                    figures.max, double(entry.peakKilobytes) / 1024.0);
    }
    const double bare = figuresOf(series[1].ms).median;
    std::printf("Ratio of medians, plugin / bare: %.2f (goal: 1.3 or less)\n",
                figuresOf(series[0].ms).median / bare);
    if (series.size() > 2) {
        std::printf("Ratio of medians, peer plugin / bare: %.2f; this plugin / peer plugin: %.3f\n",
                    figuresOf(series[2].ms).median / bare,
                    figuresOf(series[0].ms).median / figuresOf(series[2].ms).median);
    }
    return 0;
}
