// Measures an edit launch of the plugin, from process start to its editor window on screen, next to a bare
// widget application showing one window. Run it on an X display (Xvfb) inside dbus-run-session.
#include "MpdTestServer.h"
#include "TestHostProcess.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
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

// Milliseconds from starting the program to its window on screen; the program is ended afterwards.
double timeToWindow(MapWatcher& watcher, const QString& program, const QStringList& arguments,
                    const QByteArray& title)
{
    watcher.drain();
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    QElapsedTimer clock;
    clock.start();
    process.start(program, arguments);
    const bool shown = watcher.waitForWindow(title, 10000);
    const double ms = double(clock.nsecsElapsed()) / 1e6;
    process.terminate();
    require(process.waitForFinished(10000), "a program did not end");
    require(shown, "the window did not show");
    // The next launch must not find this one's single-instance name still on the bus.
    require(QTest::qWaitFor([] { return !pluginIsOnTheBus(); }, 5000), "the plugin's bus name stayed");
    return ms;
}

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
    const QString plugin = QStringLiteral(VENDEL_MUSIC_PLUGIN);
    const QString bare = QStringLiteral(VENDEL_BARE_WIDGET_APPLICATION);
    const QStringList editURL{QStringLiteral("vendelplugin://edit/bench-action")};
    const QByteArray editorTitle("Music Action");
    const QByteArray bareTitle("Bare Window");

    for (int i = 0; i < warmUps; ++i) {
        timeToWindow(watcher, plugin, editURL, editorTitle);
        timeToWindow(watcher, bare, {}, bareTitle);
    }
    // Interleaved, so that neither profits from a quieter moment of the machine.
    std::vector<double> pluginMs;
    std::vector<double> bareMs;
    for (int i = 0; i < rounds; ++i) {
        pluginMs.push_back(timeToWindow(watcher, plugin, editURL, editorTitle));
        bareMs.push_back(timeToWindow(watcher, bare, {}, bareTitle));
    }

    const Figures editor = figuresOf(pluginMs);
    const Figures yardstick = figuresOf(bareMs);
    std::printf("Process start to window shown, %d runs each (interleaved), this machine:\n", rounds);
    std::printf("  %-46s %10s %10s %10s\n", "", "median", "min", "max");
    std::printf("  %-46s %7.1f ms %7.1f ms %7.1f ms\n", "plugin: vendelplugin://edit/<id> to editor",
                editor.median, editor.min, editor.max);
    std::printf("  %-46s %7.1f ms %7.1f ms %7.1f ms\n", "bare QApplication showing one widget",
                yardstick.median, yardstick.min, yardstick.max);
    std::printf("Ratio of medians: %.2f (goal: 1.3 or less)\n", editor.median / yardstick.median);
    return 0;
}
