// Counts, for SIGTERM, SIGINT and SIGHUP, how often a change made in the editor with the keyboard reaches
// the host when the signal follows at once: trials per signal (default 100, or the first argument), each a
// fresh editor on a private X server, changed from play to pause, then signalled within 200 ms of the change.
// Run it inside dbus-run-session, with Xvfb and xdotool installed.
#include "MpdTestServer.h"
#include "TestHostProcess.h"
#include "XDisplay.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <cstdlib>

using MusicPlugin::Testing::XKeyboard;
using MusicPlugin::Testing::XvfbDisplay;
using VendelSDK::Testing::MpdTestServer;
using VendelSDK::Testing::TestHostProcess;

namespace {

const QString playFocus = QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":false}");
const QString pauseFocus = QStringLiteral("{\"action\":1,\"name\":\"Focus\",\"shouldShuffle\":false}");
constexpr int timeoutMs = 20000;
constexpr qint64 signalWithinMs = 200;

void require(bool holds, const QString& what)
{
    if (!holds) {
        std::fprintf(stderr, "EditorSignalBench: %s\n", qPrintable(what));
        std::exit(1);
    }
}

QString lastWrite(const QString& actionID)
{
    QString last;
    for (const QStringList& call : TestHostProcess::calls()) {
        if (call.value(0) == QStringLiteral("SetConfig") && call.value(2) == actionID) {
            last = call.value(1);
        }
    }
    return last;
}

struct Trial
{
    bool reached = false;
    bool endedBySignal = false;
    qint64 changeToSignalMs = 0;
};

Trial trial(const QProcessEnvironment& environment, const QString& display, int signal, int index)
{
    require(TestHostProcess::controlled(QStringLiteral("Reset")), QStringLiteral("the host did not reset"));
    require(
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), playFocus}),
        QStringLiteral("the host did not take its answer"));
    const QString actionID = QStringLiteral("T%1").arg(index);
    QProcess editor;
    editor.setProcessEnvironment(environment);
    editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    editor.start(QStringLiteral(VENDEL_MUSIC_PLUGIN), {QStringLiteral("vendelplugin://edit/") + actionID});
    require(editor.waitForStarted(), QStringLiteral("the plugin did not start"));
    const XKeyboard keyboard(display);
    const QString window =
        keyboard.waitForWindow(editor.processId(), QStringLiteral("Music Action"), timeoutMs);
    require(!window.isEmpty(), keyboard.errorString());
    require(keyboard.choosePauseInEditor(window, editor.processId(), timeoutMs), keyboard.errorString());
    QElapsedTimer sinceChange;
    sinceChange.start();
    ::kill(pid_t(editor.processId()), signal);
    Trial result;
    result.changeToSignalMs = sinceChange.elapsed();
    require(editor.waitForFinished(timeoutMs), QStringLiteral("the plugin did not end"));
    result.endedBySignal = editor.exitStatus() == QProcess::CrashExit && editor.exitCode() == signal;
    result.reached = lastWrite(actionID) == pauseFocus;
    return result;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const int trials = argc > 1 ? std::atoi(argv[1]) : 100;
    require(trials > 0, QStringLiteral("usage: EditorSignalBench [trials per signal]"));
    require(QDBusConnection::sessionBus().isConnected(),
            QStringLiteral("no session bus; run it under dbus-run-session"));

    TestHostProcess host;
    require(host.start(), QStringLiteral("the stand-in host did not start"));
    MpdTestServer mpd;
    mpd.addSong(QStringLiteral("a.wav"), 5);
    mpd.addPlaylist(QStringLiteral("Focus"), {QStringLiteral("a.wav")});
    require(mpd.start(), QStringLiteral("MPD did not start: ") + mpd.errorString());
    XvfbDisplay display;
    require(display.start(), display.errorString());
    QTemporaryDir runtime;
    QFile::setPermissions(runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("DISPLAY"), display.name());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    environment.insert(QStringLiteral("MPD_HOST"), mpd.socketPath());
    environment.insert(QStringLiteral("VENDEL_MUSIC"), QStringLiteral("mpd"));

    std::printf("%-8s %8s %16s %18s %22s\n", "signal", "trials", "change reached", "ended by signal",
                "change to signal, max");
    int index = 0;
    for (const auto& [signal, name] :
         {std::pair{SIGTERM, "SIGTERM"}, std::pair{SIGINT, "SIGINT"}, std::pair{SIGHUP, "SIGHUP"}}) {
        int reached = 0;
        int endedBySignal = 0;
        qint64 slowest = 0;
        for (int i = 0; i < trials; ++i) {
            const Trial result = trial(environment, display.name(), signal, ++index);
            reached += result.reached ? 1 : 0;
            endedBySignal += result.endedBySignal ? 1 : 0;
            slowest = std::max(slowest, result.changeToSignalMs);
        }
        require(slowest < signalWithinMs, QStringLiteral("a signal came later than 200 ms after its change"));
        std::printf("%-8s %8d %16d %18d %19lld ms\n", name, trials, reached, endedBySignal,
                    qlonglong(slowest));
        std::fflush(stdout);
    }
    return 0;
}
