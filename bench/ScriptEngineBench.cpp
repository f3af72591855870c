// Measures one tell-engine call to the host and to MPD against a bare D-Bus call and a bare MPD command.
// Run it inside its own session bus: dbus-run-session -- ScriptEngineBench [calls]
#include "MpdMusicPlayer.h"
#include "MpdTestServer.h"
#include "MusicApplication.h"

#include <VendelSDK/ScriptEngine.h>
#include <VendelSDK/VendelAPI.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <mpd/client.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace MusicPlugin;
using namespace VendelSDK;

namespace {

struct Figures
{
    double median = 0;
    double p99 = 0;
};

Figures figuresOf(std::vector<double>& micros)
{
    std::sort(micros.begin(), micros.end());
    return {micros[micros.size() / 2], micros[std::min(micros.size() - 1, micros.size() * 99 / 100)]};
}

// Times each call separately, alternating the two so that neither profits from running second, after a
// warm-up that opens connections and fills caches.
std::pair<Figures, Figures> measure(int calls, const std::function<void()>& engine,
                                    const std::function<void()>& bare)
{
    for (int i = 0; i < 20; ++i) {
        engine();
        bare();
    }
    std::vector<double> engineMicros;
    std::vector<double> bareMicros;
    QElapsedTimer timer;
    for (int i = 0; i < calls; ++i) {
        timer.start();
        engine();
        engineMicros.push_back(double(timer.nsecsElapsed()) / 1000.0);
        timer.start();
        bare();
        bareMicros.push_back(double(timer.nsecsElapsed()) / 1000.0);
    }
    return {figuresOf(engineMicros), figuresOf(bareMicros)};
}

void report(const char* what, Figures engine, Figures bare)
{
    std::printf("%-6s engine  median %8.1f us  p99 %8.1f us\n", what, engine.median, engine.p99);
    std::printf("%-6s bare    median %8.1f us  p99 %8.1f us\n", what, bare.median, bare.p99);
    std::printf("%-6s ratio   median %8.2f     p99 %8.2f     (goal: 1.5 or less)\n", what,
                engine.median / bare.median, engine.p99 / bare.p99);
}

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "ScriptEngineBench: %s\n", what);
        std::exit(1);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const int calls = argc > 1 ? std::max(100, std::atoi(argv[1])) : 2000;
    require(QDBusConnection::sessionBus().isConnected(), "no session bus; run under dbus-run-session");

    QProcess host;
    host.start(QStringLiteral(VENDEL_TEST_HOST_SERVICE), {});
    require(host.waitForStarted(), "the stand-in host did not start");
    const QString hostName = QStringLiteral("org.vendel.Host");
    for (int i = 0;
         i < 500 && !QDBusConnection::sessionBus().interface()->isServiceRegistered(hostName).value(); ++i) {
        QThread::msleep(10);
    }

    Testing::MpdTestServer mpd;
    mpd.addSong(QStringLiteral("a.wav"), 60);
    mpd.addPlaylist(QStringLiteral("Focus"), {QStringLiteral("a.wav")});
    require(mpd.start(), "MPD did not start");
    require(mpd.playStoredPlaylist(QStringLiteral("Focus")), "MPD did not play");

    // The platform's engine knows "Vendel" from the start.
    const std::unique_ptr<ScriptEngine> platformEngine = makePlatformScriptEngine();
    ScriptEngine& engine = *platformEngine;
    engine.registerApplication(QStringLiteral("Music"),
                               std::make_unique<MusicApplication>(std::make_unique<MpdMusicPlayer>(
                                   MpdAddress{mpd.socketPath().toUtf8(), 0})));

    const QString getConfig = *VendelAPI::getConfigCommand(QStringLiteral("bench-action"));
    const auto [engineHost, bareHost] = measure(
        calls,
        [&] {
            require(std::holds_alternative<QString>(engine.execute(getConfig)),
                    "the host did not answer a text");
        },
        [&] {
            const auto message = QDBusMessage::createMethodCall(hostName, QStringLiteral("/org/vendel/Host"),
                                                                QStringLiteral("org.vendel.Host1"),
                                                                QStringLiteral("GetConfig"))
                                 << QStringLiteral("bench-action");
            require(QDBusConnection::sessionBus().call(message).type() == QDBusMessage::ReplyMessage,
                    "the host did not reply");
        });

    const QString pause = QStringLiteral("tell application \"Music\" to pause");
    mpd_connection* connection = mpd_connection_new(mpd.socketPath().toUtf8().constData(), 0, 0);
    require(connection != nullptr && mpd_connection_get_error(connection) == MPD_ERROR_SUCCESS,
            "no MPD connection");
    const auto [engineMpd, bareMpd] = measure(
        calls,
        [&] { require(std::holds_alternative<ScriptNoResult>(engine.execute(pause)), "MPD did not pause"); },
        [&] { require(mpd_run_pause(connection, true), "MPD refused pause"); });
    mpd_connection_free(connection);

    std::printf("%d calls each\n", calls);
    report("host", engineHost, bareHost);
    report("mpd", engineMpd, bareMpd);

    mpd.stop();
    host.kill();
    host.waitForFinished();
    return 0;
}
