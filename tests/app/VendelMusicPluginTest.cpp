// Tests the built plugin executable end to end: a stand-in host on a private bus, and a real, private MPD.
#include "MpdTestServer.h"
#include "TestHostProcess.h"
#include "TestMprisPlayerProcess.h"
#include "XDisplay.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFileInfo>
#include <QLocalServer>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/prctl.h>

using namespace VendelSDK::Testing;
using MusicPlugin::Testing::XKeyboard;
using MusicPlugin::Testing::XvfbDisplay;

namespace {

const QString plugin = QStringLiteral(VENDEL_MUSIC_PLUGIN);
const QStringList focusSongs{QStringLiteral("focus/one.wav"), QStringLiteral("focus/two.wav")};
const QStringList eveningSongs{QStringLiteral("evening/dusk.wav")};
const QString playFocus = QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":false}");
const QString pauseFocus = QStringLiteral("{\"action\":1,\"name\":\"Focus\",\"shouldShuffle\":false}");
// Generous: a window shows in well under a second, but the machine may be busy.
constexpr int windowTimeoutMs = 20000;
const QString editorTitle = QStringLiteral("Music Action");

// One launch of the plugin, as the host makes it: the URL as the only argument.
struct Launch
{
    int exitCode = -1;
    QProcess::ExitStatus exitStatus = QProcess::CrashExit;
    QString standardError;
    QString standardOutput;
};

} // namespace

class VendelMusicPluginTest : public QObject
{
    Q_OBJECT

private:
    // The plugin's environment: this test's bus and MPD, and no display unless one is asked for.
    QProcessEnvironment environment(bool withDisplay = false, const QString& mpdHost = QString()) const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        if (withDisplay) {
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
            env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeFolder.path());
        }
        env.insert(QStringLiteral("MPD_HOST"), mpdHost.isEmpty() ? m_mpd.socketPath() : mpdHost);
        env.insert(QStringLiteral("VENDEL_MUSIC"), QStringLiteral("mpd"));
        return env;
    }

    void startPlugin(QProcess& process, const QStringList& arguments, const QProcessEnvironment& env) const
    {
        process.setProgram(plugin);
        process.setArguments(arguments);
        process.setProcessEnvironment(env);
        process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.start();
    }

    Launch launch(const QStringList& arguments, const QProcessEnvironment& env) const
    {
        QProcess process;
        startPlugin(process, arguments, env);
        Launch result;
        if (!process.waitForFinished(30000)) {
            process.kill();
            process.waitForFinished();
            result.standardError = QStringLiteral("(did not end)");
            return result;
        }
        result.exitCode = process.exitCode();
        result.exitStatus = process.exitStatus();
        result.standardError = QString::fromUtf8(process.readAllStandardError());
        result.standardOutput = QString::fromUtf8(process.readAllStandardOutput());
        return result;
    }

    Launch run(const QString& actionID, const QString& record) const
    {
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), record});
        return launch({QStringLiteral("vendelplugin://run/") + actionID}, environment());
    }

    static QStringList methods()
    {
        QStringList names;
        for (const QStringList& call : TestHostProcess::calls()) {
            names.append(call.value(0));
        }
        return names;
    }

    // On the private X server, as on a desktop: real windows that take real key presses.
    QProcessEnvironment xEnvironment() const
    {
        QProcessEnvironment env = environment(true);
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.insert(QStringLiteral("DISPLAY"), m_display.name());
        return env;
    }

    // Opens the editor of `actionID` (stored as "play Focus") on the X server in `editor`, or hands the edit
    // launch to the running `editor` when `handOver` is set, then chooses "Pause" with the keyboard. Empty
    // when the change has been made; otherwise what went wrong.
    QString changeToPauseInEditor(QProcess& editor, const QString& actionID, bool handOver = false,
                                  const std::optional<QProcessEnvironment>& env = std::nullopt) const
    {
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), playFocus});
        const QString url = QStringLiteral("vendelplugin://edit/") + actionID;
        if (handOver) {
            const Launch second = launch({url}, env.value_or(xEnvironment()));
            if (second.exitCode != 0) {
                return QStringLiteral("the edit launch was not handed over: ") + second.standardError;
            }
        } else {
            startPlugin(editor, {url}, env.value_or(xEnvironment()));
            if (!editor.waitForStarted()) {
                return editor.errorString();
            }
        }
        const XKeyboard keyboard(m_display.name());
        const QString window = keyboard.waitForWindow(editor.processId(), editorTitle, windowTimeoutMs);
        if (window.isEmpty() || !keyboard.choosePauseInEditor(window, editor.processId(), windowTimeoutMs)) {
            return keyboard.errorString() + QStringLiteral("; plugin: ") +
                   QString::fromUtf8(editor.readAllStandardError());
        }
        return {};
    }

    // The plugin's environment with the desktop's language settings `locale` ("LANG=de_DE.UTF-8", …), and
    // nothing else that would choose a language.
    QProcessEnvironment localeEnvironment(const QStringList& locale) const
    {
        QProcessEnvironment env = environment();
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
            env.remove(QString::fromLatin1(name));
        }
        for (const QString& setting : locale) {
            env.insert(setting.section(u'=', 0, 0), setting.section(u'=', 1));
        }
        return env;
    }

    // The connections in the plugin's name's queue, its owner first.
    static QStringList queuedOwners()
    {
        const QDBusMessage reply = QDBusConnection::sessionBus().interface()->call(
            QStringLiteral("ListQueuedOwners"), QStringLiteral("org.vendel.MusicPlugin"));
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toStringList()
                                                          : QStringList();
    }

    static QList<QStringList> setConfigCalls()
    {
        QList<QStringList> writes;
        for (const QStringList& call : TestHostProcess::calls()) {
            if (call.value(0) == QStringLiteral("SetConfig")) {
                writes.append(call);
            }
        }
        return writes;
    }

    MpdTestServer m_mpd;
    TestHostProcess m_host;
    XvfbDisplay m_display;
    // A windowed application wants a private runtime folder, as a desktop session gives it.
    QTemporaryDir m_runtimeFolder;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(plugin).isExecutable(), qPrintable(plugin));
        QVERIFY(QFile::setPermissions(m_runtimeFolder.path(),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        for (const QString& song : focusSongs + eveningSongs) {
            m_mpd.addSong(song);
        }
        m_mpd.addPlaylist(QStringLiteral("Focus"), focusSongs);
        m_mpd.addPlaylist(QStringLiteral("Evening"), eveningSongs);
        QVERIFY2(m_mpd.start(), qPrintable(m_mpd.errorString()));
        QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    }

    void init()
    {
        QVERIFY(m_mpd.reset());
        QVERIFY(m_host.start());
        QVERIFY(TestHostProcess::controlled(QStringLiteral("Reset")));
    }

    void runOfAShuffledPlaylistPlaysItWithRandomOnAndExits()
    {
        const QString record = QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":true}");
        const Launch result = run(QStringLiteral("F1"), record);
        QCOMPARE(result.standardError, QString());
        QCOMPARE(result.exitStatus, QProcess::NormalExit);
        QCOMPARE(result.exitCode, 0);
        const auto status = m_mpd.status();
        QVERIFY(status);
        QCOMPARE(status->state, QStringLiteral("play"));
        QVERIFY(status->random);
        QCOMPARE(m_mpd.queue().value_or(QStringList{}), focusSongs);
        // The record is read first and written back, unchanged, when the run ends.
        QCOMPARE(TestHostProcess::calls(),
                 (QList<QStringList>{{QStringLiteral("GetConfig"), QStringLiteral("F1")},
                                     {QStringLiteral("SetConfig"), record, QStringLiteral("F1")}}));
    }

    void runOfAPauseRecordPauses()
    {
        QVERIFY(m_mpd.playStoredPlaylist(QStringLiteral("Evening")));
        const Launch result =
            run(QStringLiteral("P1"), QStringLiteral("{\"action\":1,\"shouldShuffle\":false}"));
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.standardError, QString());
        QCOMPARE(m_mpd.status().value_or(MpdTestServer::Status{}).state, QStringLiteral("pause"));
    }

    void recordWithoutANameSaysSoAndNothingReachesTheMusicPlayer()
    {
        // A listener where the player would be: any connection at all would show here.
        QTemporaryDir folder;
        QLocalServer listener;
        QVERIFY(listener.listen(folder.filePath(QStringLiteral("player"))));
        TestHostProcess::controlled(
            QStringLiteral("AnswerText"),
            {QStringLiteral("GetConfig"), QStringLiteral("{\"action\":0,\"shouldShuffle\":true}")});
        const Launch result =
            launch({QStringLiteral("vendelplugin://run/N1")}, environment(false, listener.fullServerName()));
        QCOMPARE(result.standardError, QStringLiteral("Playlist could not be read\n"));
        QCOMPARE(result.exitCode, 1);
        QVERIFY(!listener.hasPendingConnections());
        QVERIFY(!listener.waitForNewConnection(0));
    }

    void withTheHostDownBothAlertsAppearInOrder()
    {
        QVERIFY(m_host.stop());
        const Launch result = launch({QStringLiteral("vendelplugin://run/H1")}, environment());
        QCOMPARE(result.exitCode, 1);
        const auto providerAlert =
            result.standardError.indexOf(QStringLiteral("Could not read action data in Vendel."));
        const auto runAlert =
            result.standardError.indexOf(QStringLiteral("Could not read action configuration"));
        QVERIFY2(providerAlert == 0, qPrintable(result.standardError));
        QVERIFY2(runAlert > providerAlert, qPrintable(result.standardError));
        QCOMPARE(m_mpd.status().value_or(MpdTestServer::Status{}).state, QStringLiteral("stop"));
    }

    void frozenMpdEndsTheRunWithTimeOutAlertsAndNoOtherPlayerIsAsked()
    {
        // Another player is there, with the same playlist: MPD answering too late must not make it play.
        TestMprisPlayerProcess::Options options;
        options.name = QStringLiteral("standby");
        options.playlists = {QStringLiteral("Focus")};
        TestMprisPlayerProcess standby(options);
        QVERIFY(standby.start());
        QProcessEnvironment env = environment();
        env.remove(QStringLiteral("VENDEL_MUSIC"));
        env.insert(QStringLiteral("MPD_TIMEOUT"), QStringLiteral("1"));
        TestHostProcess::controlled(
            QStringLiteral("AnswerText"),
            {QStringLiteral("GetConfig"),
             QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":true}")});
        QVERIFY(m_mpd.freeze());
        const Launch result = launch({QStringLiteral("vendelplugin://run/T1")}, env);
        QVERIFY(m_mpd.thaw());
        // Both scripts ran, and each says that the player did not answer in time.
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.standardError.count(QStringLiteral("AppleEvent timed out.")), 2 * 2);
        QVERIFY2(!result.standardError.contains(QStringLiteral("isn’t running")),
                 qPrintable(result.standardError));
        QCOMPARE(standby.calls(), QStringList());
        QCOMPARE(m_mpd.status().value_or(MpdTestServer::Status{}).state, QStringLiteral("stop"));
    }

    void runWhileAnEditorIsOpenIsHandledByTheRunningProcessWhichThenEnds()
    {
        TestHostProcess::controlled(
            QStringLiteral("AnswerText"),
            {QStringLiteral("GetConfig"), QStringLiteral("{\"action\":1,\"shouldShuffle\":false}")});
        QProcess editor;
        startPlugin(editor, {QStringLiteral("vendelplugin://edit/E1")}, environment(true));
        QVERIFY(editor.waitForStarted());
        const qint64 editorPid = editor.processId();
        // The editor's process is the running instance once it holds the plugin's name on the bus.
        QTRY_VERIFY_WITH_TIMEOUT(QDBusConnection::sessionBus()
                                         .interface()
                                         ->isServiceRegistered(QStringLiteral("org.vendel.MusicPlugin"))
                                         .value() ||
                                     editor.state() == QProcess::NotRunning,
                                 20000);
        QVERIFY(!editor.waitForFinished(300));

        QVERIFY(m_mpd.playStoredPlaylist(QStringLiteral("Evening")));
        const Launch second = launch({QStringLiteral("vendelplugin://run/R1")}, environment(true));
        QCOMPARE(second.exitCode, 0);
        QCOMPARE(second.standardError, QString());

        QVERIFY(editor.waitForFinished(20000));
        QCOMPARE(editor.exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_mpd.status().value_or(MpdTestServer::Status{}).state, QStringLiteral("pause"));
        // The run was read by the editor's process, not by the second launch.
        QVERIFY(TestHostProcess::calls().contains(
            QStringList{QStringLiteral("GetConfig"), QStringLiteral("R1")}));
        QCOMPARE(TestHostProcess::control(QStringLiteral("LastCallerPid")).arguments().value(0).toLongLong(),
                 editorPid);
    }

    void runCommandUrlStopsTheProcessNamingTheMissingAction()
    {
        const Launch result = launch({QStringLiteral("vendelplugin://runCommand")}, environment());
        QCOMPARE(result.exitStatus, QProcess::CrashExit);
        QVERIFY2(result.standardError.contains(
                     QStringLiteral("Fatal error: Edit Global Configuration action not implemented yet.")),
                 qPrintable(result.standardError));
    }

    void signalRightAfterAChangeInTheEditorWritesTheChangeToTheHost_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << int(SIGTERM);
        QTest::newRow("SIGINT") << int(SIGINT);
        QTest::newRow("SIGHUP") << int(SIGHUP);
    }

    void signalRightAfterAChangeInTheEditorWritesTheChangeToTheHost()
    {
        QFETCH(int, signal);
        QProcess editor;
        const QString failure = changeToPauseInEditor(editor, QStringLiteral("S1"));
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        // At once: well before the one-second delay of the editor's own write.
        QCOMPARE(::kill(pid_t(editor.processId()), signal), 0);
        QVERIFY(editor.waitForFinished(20000));
        QCOMPARE(setConfigCalls().value(setConfigCalls().size() - 1),
                 (QStringList{QStringLiteral("SetConfig"), pauseFocus, QStringLiteral("S1")}));
        // Ended by the signal, as a shell would see it, after the write.
        QCOMPARE(editor.exitStatus(), QProcess::CrashExit);
        QCOMPARE(editor.exitCode(), signal);
    }

    void signalToAnInstanceThatWasHandedAnEditWritesThatEditorsChange()
    {
        // The first launch shows the preferences, so the one editor is the handed-over launch's.
        QProcess running;
        startPlugin(running, {QStringLiteral("vendelplugin://configure")}, xEnvironment());
        QVERIFY(running.waitForStarted());
        QVERIFY2(!XKeyboard(m_display.name())
                      .waitForWindow(running.processId(), QStringLiteral("Preferences"), windowTimeoutMs)
                      .isEmpty(),
                 qPrintable(QString::fromUtf8(running.readAllStandardError())));
        const QString failure = changeToPauseInEditor(running, QStringLiteral("H2"), true);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        QCOMPARE(::kill(pid_t(running.processId()), SIGTERM), 0);
        QVERIFY(running.waitForFinished(20000));
        QCOMPARE(setConfigCalls().value(setConfigCalls().size() - 1),
                 (QStringList{QStringLiteral("SetConfig"), pauseFocus, QStringLiteral("H2")}));
        QCOMPARE(running.exitStatus(), QProcess::CrashExit);
        QCOMPARE(running.exitCode(), int(SIGTERM));
    }

    void secondSignalWhileTheFirstIsCarriedOutEndsThePluginAtOnceAsThatSignal()
    {
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), playFocus});
        QProcess editor;
        startPlugin(editor, {QStringLiteral("vendelplugin://edit/D1")}, xEnvironment());
        QVERIFY(editor.waitForStarted());
        QVERIFY2(!XKeyboard(m_display.name())
                      .waitForWindow(editor.processId(), editorTitle, windowTimeoutMs)
                      .isEmpty(),
                 qPrintable(QString::fromUtf8(editor.readAllStandardError())));
        // A host that never answers a write holds the plugin in it for as long as the bus lets a call wait.
        QVERIFY(TestHostProcess::controlled(QStringLiteral("Freeze"), {QStringLiteral("SetConfig")}));
        QCOMPARE(::kill(pid_t(editor.processId()), SIGTERM), 0);
        QTRY_VERIFY_WITH_TIMEOUT(setConfigCalls().size() > 0, windowTimeoutMs);
        QCOMPARE(::kill(pid_t(editor.processId()), SIGINT), 0);
        // Long enough for the bus to give up on the frozen host, so a lost second signal shows as the first.
        QVERIFY(editor.waitForFinished(60000));
        // Ended by the second signal: the first would have ended it only once the write had given up.
        QCOMPARE(editor.exitStatus(), QProcess::CrashExit);
        QCOMPARE(editor.exitCode(), int(SIGINT));
    }

    void secondLaunchWaitingOnARunningInstanceThatCannotAnswerEndsBySignalWithoutActing_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << int(SIGTERM);
        QTest::newRow("SIGINT") << int(SIGINT);
        QTest::newRow("SIGHUP") << int(SIGHUP);
    }

    void secondLaunchWaitingOnARunningInstanceThatCannotAnswerEndsBySignalWithoutActing()
    {
        QFETCH(int, signal);
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), playFocus});
        QProcess running;
        startPlugin(running, {QStringLiteral("vendelplugin://edit/K1")}, environment(true));
        QVERIFY(running.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(queuedOwners().size() == 1 || running.state() == QProcess::NotRunning,
                                 20000);
        QCOMPARE(queuedOwners().size(), 1);
        // The running instance is stopped: it owns the plugin's name, but answers nothing.
        QCOMPARE(::kill(pid_t(running.processId()), SIGSTOP), 0);
        const auto endRunning = qScopeGuard([&running] {
            ::kill(pid_t(running.processId()), SIGKILL);
            running.waitForFinished();
        });
        QVERIFY(m_mpd.playStoredPlaylist(QStringLiteral("Evening")));
        const auto before = m_mpd.status();
        QVERIFY(before);
        QVERIFY(TestHostProcess::controlled(QStringLiteral("Reset")));
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), playFocus});

        // An hour for the hand-over: only the signal can end this launch's wait within the test.
        QProcessEnvironment env = environment();
        env.insert(QStringLiteral("VENDEL_HANDOVER_TIMEOUT"), QStringLiteral("3600"));
        QProcess second;
        startPlugin(second, {QStringLiteral("vendelplugin://run/K2")}, env);
        QVERIFY(second.waitForStarted());
        // Queued for the name, it handles signals: it installs the handlers before it asks for the name.
        QTRY_VERIFY_WITH_TIMEOUT(queuedOwners().size() == 2 || second.state() == QProcess::NotRunning, 20000);
        QVERIFY2(queuedOwners().size() == 2, qPrintable(QString::fromUtf8(second.readAllStandardError())));
        QCOMPARE(::kill(pid_t(second.processId()), signal), 0);
        const bool ended = second.waitForFinished(30000);
        QVERIFY2(ended, "the signal did not end the waiting launch");
        QCOMPARE(second.exitStatus(), QProcess::CrashExit);
        QCOMPARE(second.exitCode(), signal);
        QCOMPARE(QString::fromUtf8(second.readAllStandardError()), QString());
        // It asked the host for nothing, the record included, and left the player alone.
        QCOMPARE(TestHostProcess::calls(), QList<QStringList>());
        const auto after = m_mpd.status();
        QVERIFY(after);
        QCOMPARE(after->state, before->state);
        QCOMPARE(after->songId, before->songId);
        QCOMPARE(m_mpd.queue().value_or(QStringList{}), eveningSongs);
    }

    void terminationSignalWithAWindowedAlertOpenEndsThePluginAndNothingAfterTheAlertRuns()
    {
        // A player that refuses to shuffle: the run's shuffle script fails with an alert, and its play
        // script would come after the alert.
        TestMprisPlayerProcess::Options options;
        options.name = QStringLiteral("locked");
        options.playlists = {QStringLiteral("Focus")};
        options.locksShuffle = true;
        TestMprisPlayerProcess player(options);
        QVERIFY(player.start());
        QProcessEnvironment env = xEnvironment();
        env.insert(QStringLiteral("VENDEL_MUSIC"), QStringLiteral("mpris"));
        env.insert(QStringLiteral("VENDEL_MUSIC_PLAYER"), QStringLiteral("locked"));

        // An editor with a change that waits for its write, in the process that then runs the action.
        QProcess editor;
        const QString failure = changeToPauseInEditor(editor, QStringLiteral("A1"), false, env);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        const QStringList playerCallsBefore = player.calls();
        const QString runRecord = QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":true}");
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), runRecord});
        const Launch handedOver = launch({QStringLiteral("vendelplugin://run/A2")}, env);
        QCOMPARE(handedOver.exitCode, 0);
        // The alert shows beside the editor.
        const XKeyboard keyboard(m_display.name());
        QVERIFY2(
            keyboard.waitForWindowCount(editor.processId(), 2, windowTimeoutMs),
            qPrintable(keyboard.errorString() + u' ' + QString::fromUtf8(editor.readAllStandardError())));

        QCOMPARE(::kill(pid_t(editor.processId()), SIGTERM), 0);
        QVERIFY(editor.waitForFinished(20000));
        QCOMPARE(editor.exitStatus(), QProcess::CrashExit);
        QCOMPARE(editor.exitCode(), int(SIGTERM));
        // The hooks ran: the editor's change and the run's record reached the host.
        const auto writes = setConfigCalls();
        QVERIFY(writes.contains(QStringList{QStringLiteral("SetConfig"), pauseFocus, QStringLiteral("A1")}));
        QVERIFY(writes.contains(QStringList{QStringLiteral("SetConfig"), runRecord, QStringLiteral("A2")}));
        // The play script, next after the alert, never ran: the player was told nothing more.
        QCOMPARE(player.calls(), playerCallsBefore);
    }

    void runCommandHandedToAnEditorWithAChangeWritesItThenStopsWithTheReport()
    {
        QProcess editor;
        const QString failure = changeToPauseInEditor(editor, QStringLiteral("C1"));
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        const Launch second = launch({QStringLiteral("vendelplugin://runCommand/x")}, xEnvironment());
        QCOMPARE(second.exitCode, 0);
        QVERIFY(editor.waitForFinished(20000));
        QCOMPARE(editor.exitStatus(), QProcess::CrashExit);
        const QString standardError = QString::fromUtf8(editor.readAllStandardError());
        QVERIFY2(standardError.contains(
                     QStringLiteral("Fatal error: Edit Global Configuration action not implemented yet.")),
                 qPrintable(standardError));
        // Written once; an earlier write can only be the editor's own of the record it loaded.
        const QStringList changed{QStringLiteral("SetConfig"), pauseFocus, QStringLiteral("C1")};
        QCOMPARE(setConfigCalls().value(setConfigCalls().size() - 1), changed);
        QCOMPARE(setConfigCalls().count(changed), 1);
    }

    void startedByHandWhileInstalledSaysItMustBeRunByTheHost()
    {
        TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                    {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("true")});
        const Launch result = launch({}, environment());
        QCOMPARE(result.standardError, QStringLiteral("This plugin must be run by Vendel app.\n"));
        QCOMPARE(result.exitCode, 1);
        // The host is asked about the executable's canonical path.
        QCOMPARE(TestHostProcess::calls(), (QList<QStringList>{{QStringLiteral("IsPluginInstalledAtPath"),
                                                                QFileInfo(plugin).canonicalFilePath()}}));
    }

    void startedByHandWhileNotInstalledInstallsItself()
    {
        TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                    {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("false")});
        const Launch result = launch({}, environment());
        QCOMPARE(result.standardError, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(methods(),
                 (QStringList{QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("InstallPlugin")}));
    }

    void startedByAUrlWithoutIdentifierRunsTheStartUpCheck()
    {
        TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                    {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("true")});
        const Launch result = launch({QStringLiteral("vendelplugin://run")}, environment());
        QCOMPARE(result.standardError, QStringLiteral("This plugin must be run by Vendel app.\n"));
        QCOMPARE(methods(), QStringList{QStringLiteral("IsPluginInstalledAtPath")});
    }

    void alertsSpeakTheDesktopsLanguage_data()
    {
        QTest::addColumn<QStringList>("locale");
        QTest::addColumn<QString>("noPlaylist");
        QTest::addColumn<QString>("mustBeRun");
        QTest::addColumn<QString>("installationFailed");
        QTest::addColumn<QString>("hostDown");
        const QString german = QStringLiteral("LANG=de_DE.UTF-8");
        const QString french = QStringLiteral("LANG=fr_FR.UTF-8");
        const QStringList germanTexts{
            QStringLiteral("Die Wiedergabeliste konnte nicht gelesen werden\n"),
            QStringLiteral("Dieses Plugin muss von Vendel gestartet werden.\n"),
            QStringLiteral(
                "Das Plugin kann nicht installiert werden.\nBitte stellen Sie sicher, dass die neueste "
                "Version von Vendel installiert ist. Tritt das Problem erneut auf, öffnen Sie in Vendel "
                "„Einstellungen“ > „Plugins“ und installieren Sie das Plugin dort.\n"),
            QStringLiteral(
                "Die Daten der Aktion konnten nicht aus Vendel gelesen werden.\nDas Skript konnte nicht "
                "ausgeführt werden\nDie Konfiguration der Aktion konnte nicht gelesen werden\n")};
        // French typography keeps guillemets and colons apart from their words with no-break spaces.
        const QStringList frenchTexts{
            QStringLiteral("Impossible de lire la liste de lecture\n"),
            QStringLiteral("Ce plugin doit être lancé par l’application Vendel.\n"),
            QStringLiteral(
                "Impossible d’installer le plugin.\nVérifiez que la dernière version de Vendel est "
                "installée. Si le problème se reproduit, ouvrez «\u00a0Préférences\u00a0» > "
                "«\u00a0Plugins\u00a0» "
                "dans Vendel et installez-y le plugin.\n"),
            QStringLiteral(
                "Impossible de lire les données de l’action dans Vendel.\nImpossible d’exécuter le "
                "script\nImpossible de lire la configuration de l’action\n")};
        // The English keys, exactly.
        const QStringList keys{
            QStringLiteral("Playlist could not be read\n"),
            QStringLiteral("This plugin must be run by Vendel app.\n"),
            QStringLiteral(
                "Plugin cannot be installed.\nPlease make sure you have the latest version of Vendel "
                "installed. If problem occurs again, go to Preferences -> Plugins and install the "
                "plugin there.\n"),
            QStringLiteral(
                "Could not read action data in Vendel.\nCould not run script\nCould not read action "
                "configuration\n")};
        const auto row = [](const char* name, const QStringList& locale, const QStringList& texts) {
            QTest::newRow(name) << locale << texts.at(0) << texts.at(1) << texts.at(2) << texts.at(3);
        };
        row("German", {german}, germanTexts);
        row("French", {french}, frenchTexts);
        row("Austrian German", {QStringLiteral("LANG=de_AT.UTF-8")}, germanTexts);
        row("messages in French on a German desktop", {german, QStringLiteral("LC_MESSAGES=fr_FR.UTF-8")},
            frenchTexts);
        row("French preferred over German", {german, QStringLiteral("LANGUAGE=fr:de")}, frenchTexts);
        row("C", {QStringLiteral("LANG=C")}, keys);
        row("Japanese", {QStringLiteral("LANG=ja_JP.UTF-8")}, keys);
        row("English preferred over German", {german, QStringLiteral("LANGUAGE=en:de")}, keys);
    }

    void alertsSpeakTheDesktopsLanguage()
    {
        QFETCH(QStringList, locale);
        QFETCH(QString, noPlaylist);
        QFETCH(QString, mustBeRun);
        QFETCH(QString, installationFailed);
        QFETCH(QString, hostDown);
        const QProcessEnvironment env = localeEnvironment(locale);

        TestHostProcess::controlled(
            QStringLiteral("AnswerText"),
            {QStringLiteral("GetConfig"), QStringLiteral("{\"action\":0,\"shouldShuffle\":false}")});
        QCOMPARE(launch({QStringLiteral("vendelplugin://run/L1")}, env).standardError, noPlaylist);

        TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                    {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("true")});
        QCOMPARE(launch({}, env).standardError, mustBeRun);

        TestHostProcess::controlled(QStringLiteral("AnswerText"),
                                    {QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("false")});
        TestHostProcess::controlled(QStringLiteral("AnswerError"),
                                    {QStringLiteral("InstallPlugin"),
                                     QStringLiteral("org.vendel.Host1.Error.InstallFailed"),
                                     QStringLiteral("The plugin folder cannot be written.")});
        const Launch installation = launch({}, env);
        QCOMPARE(installation.standardError, installationFailed);
        QCOMPARE(methods(),
                 (QStringList{QStringLiteral("GetConfig"), QStringLiteral("SetConfig"),
                              QStringLiteral("IsPluginInstalledAtPath"),
                              QStringLiteral("IsPluginInstalledAtPath"), QStringLiteral("InstallPlugin")}));

        QVERIFY(m_host.stop());
        const Launch withHostDown = launch({QStringLiteral("vendelplugin://run/L2")}, env);
        QCOMPARE(withHostDown.standardError, hostDown);
        QCOMPARE(withHostDown.exitCode, 1);
    }

    void playersMessagesStandingInForTheSystemsAreTranslated_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("alert");
        QTest::newRow("German") << QStringLiteral("LANG=de_DE.UTF-8")
                                << QStringLiteral(
                                       "Die Wiedergabeliste „Gone“ kann nicht abgerufen werden.\n"
                                       "Music hat einen Fehler erhalten: Die Wiedergabeliste „Gone“ "
                                       "kann nicht abgerufen werden.\n");
        QTest::newRow("French") << QStringLiteral("LANG=fr_FR.UTF-8")
                                << QStringLiteral(
                                       "Impossible d’obtenir la liste de lecture «\u00a0Gone\u00a0».\n"
                                       "Music a rencontré une erreur\u00a0: Impossible d’obtenir la "
                                       "liste de lecture «\u00a0Gone\u00a0».\n");
        QTest::newRow("C") << QStringLiteral("LANG=C")
                           << QStringLiteral("Can’t get playlist \"Gone\".\n"
                                             "Music got an error: Can’t get playlist \"Gone\".\n");
    }

    void playersMessagesStandingInForTheSystemsAreTranslated()
    {
        QFETCH(QString, locale);
        QFETCH(QString, alert);
        TestHostProcess::controlled(
            QStringLiteral("AnswerText"),
            {QStringLiteral("GetConfig"),
             QStringLiteral("{\"action\":0,\"name\":\"Gone\",\"shouldShuffle\":false}")});
        const Launch result = launch({QStringLiteral("vendelplugin://run/G1")}, localeEnvironment({locale}));
        QCOMPARE(result.standardError, alert);
        QCOMPARE(result.exitCode, 1);
    }

    void helpIsPrintedWithoutContactingTheHost()
    {
        const Launch result = launch({QStringLiteral("--help")}, environment(true));
        QCOMPARE(result.exitStatus, QProcess::NormalExit);
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.standardOutput.startsWith(QStringLiteral("Usage: vendel-music-plugin ")));
        QVERIFY(result.standardOutput.contains(QStringLiteral("vendelplugin://run/<id>")));
        QVERIFY(result.standardError.isEmpty());
        QVERIFY(methods().isEmpty());
    }

    void versionIsPrintedWithoutContactingTheHost()
    {
        const Launch result = launch({QStringLiteral("--version")}, environment(true));
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(QRegularExpression(QStringLiteral("^vendel-music-plugin [0-9][^ ]* \\(build [^)]+\\)\n$"))
                     .match(result.standardOutput)
                     .hasMatch(),
                 qPrintable(result.standardOutput));
        QVERIFY(methods().isEmpty());
    }

    void qtOptionsAroundTheLaunchUrlAreLeftToQt()
    {
        const QString record = QStringLiteral("{\"action\":0,\"name\":\"Focus\",\"shouldShuffle\":false}");
        TestHostProcess::controlled(QStringLiteral("AnswerText"), {QStringLiteral("GetConfig"), record});
        const Launch result =
            launch({QStringLiteral("-platform"), QStringLiteral("offscreen"), QStringLiteral("-reverse"),
                    QStringLiteral("vendelplugin://run/Q1"), QStringLiteral("-style=fusion")},
                   environment(true));
        QCOMPARE(result.standardError, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(m_mpd.status().value_or(MpdTestServer::Status{}).state, QStringLiteral("play"));
        QCOMPARE(TestHostProcess::calls().value(0),
                 (QStringList{QStringLiteral("GetConfig"), QStringLiteral("Q1")}));
    }

    void unknownOptionIsAUsageErrorNotAnAlert()
    {
        const Launch result = launch({QStringLiteral("--frobnicate")}, environment(true));
        QCOMPARE(result.exitStatus, QProcess::NormalExit);
        QCOMPARE(result.exitCode, 2);
        QVERIFY(result.standardOutput.isEmpty());
        QVERIFY(result.standardError.startsWith(
            QStringLiteral("vendel-music-plugin: unknown option “--frobnicate”\n")));
        QVERIFY(result.standardError.contains(QStringLiteral("Try 'vendel-music-plugin --help'.")));
        QVERIFY(methods().isEmpty());
    }
};

QTEST_GUILESS_MAIN(VendelMusicPluginTest)
#include "VendelMusicPluginTest.moc"
