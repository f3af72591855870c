// Tests `vendel-host window` as people start it, on a private X server with real key presses: the window's
// own program takes the command's place, with its filter and in the desktop's language; without a display it
// says so; closing it lets a run go on. And the command line and the served host never load Qt's window
// libraries.
#include "ActivatedHost.h"
#include "HostProcess.h"
#include "HostStorage.h"
#include "StubLaunches.h"
#include "XDisplay.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

using namespace VendelHost;
using namespace VendelHost::Testing;
using MusicPlugin::Testing::XKeyboard;
using MusicPlugin::Testing::XvfbDisplay;

namespace {

const QString windowProgram = QStringLiteral(VENDEL_HOST_WINDOW);
constexpr int generousMs = 30000;
// How long one press of Enter is given to start a run before it is pressed again: the window may not have
// its first listing yet. The whole wait is bounded by generousMs.
constexpr int pressAgainMs = 250;

QString windowLibrariesIn(const QString& text)
{
    QStringList found;
    for (const char* library : {"libQt6Gui", "libQt6Widgets"}) {
        if (text.contains(QLatin1String(library))) {
            found.append(QLatin1String(library));
        }
    }
    return found.join(u' ');
}

QString contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class WindowCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_display.start(), qPrintable(m_display.errorString())); }

    void init()
    {
        m_stub = std::make_unique<StubLaunches>();
        auto environment = m_stub->environment();
        environment.insert(QStringLiteral("VENDEL_HOST_DATA_DIR"), m_stub->dataDirectory());
        QVERIFY(ActivatedHost::setEnvironment(environment));
        m_stub->installStub();
        HostStorage storage(m_stub->dataDirectory());
        m_ids.clear();
        for (const QString& title :
             {QStringLiteral("Road Trip"), QStringLiteral("Focus Mix"), QStringLiteral("Live -reverse")}) {
            m_ids.insert(title, storage.createAction(QStringLiteral("stub"), title));
        }
    }

    void cleanup()
    {
        if (m_window.state() != QProcess::NotRunning) {
            m_window.kill();
            m_window.waitForFinished();
        }
        QVERIFY(ActivatedHost::stop());
        m_stub.reset();
    }

    void withoutADisplayItSaysSo()
    {
        QProcessEnvironment environment = hostEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(QLatin1String(name));
        }
        QProcess host;
        host.setProcessEnvironment(environment);
        host.start(HostProcess::executable(), {QStringLiteral("window")});
        QVERIFY(host.waitForFinished(generousMs));
        QCOMPARE(host.exitCode(), 1);
        const QString error = QString::fromUtf8(host.readAllStandardError());
        QVERIFY2(error.startsWith(QStringLiteral("vendel-host: The window needs a display")),
                 qPrintable(error));
        QVERIFY(!HostProcess::isHostOnBus());
    }

    void theFilterChoosesWhatEnterRuns_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("runs");
        QTest::newRow("--filter") << QStringList{QStringLiteral("--filter"), QStringLiteral("road")}
                                  << QStringLiteral("Road Trip");
        QTest::newRow("--filter=, with accents and capitals")
            << QStringList{QStringLiteral("--filter=FÓCÜS")} << QStringLiteral("Focus Mix");
        QTest::newRow("words after --")
            << QStringList{QStringLiteral("--"), QStringLiteral("mix"), QStringLiteral("focus")}
            << QStringLiteral("Focus Mix");
        // Taken by the toolkit, it would turn the window's layout around; here it is a word of the filter.
        QTest::newRow("a word that looks like the toolkit's option")
            << QStringList{QStringLiteral("--"), QStringLiteral("-reverse")}
            << QStringLiteral("Live -reverse");
        QTest::newRow("no filter: the first title") << QStringList{} << QStringLiteral("Focus Mix");
    }

    void theFilterChoosesWhatEnterRuns()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, runs);
        QVERIFY(startWindow(arguments));
        QVERIFY(m_stub->held().hold());
        QVERIFY(pressEnterUntilARunStarts());
        QCOMPARE(m_stub->contents(QStringLiteral("record")),
                 QStringLiteral("vendelplugin://run/%1\n").arg(m_ids.value(runs)));
    }

    void aGermanDesktopGetsTheWindowInGerman()
    {
        QProcessEnvironment environment = windowEnvironment();
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES"}) {
            environment.remove(QLatin1String(name));
        }
        environment.insert(QStringLiteral("LANG"), QStringLiteral("de_DE.UTF-8"));
        QVERIFY(startWindow({}, environment, QStringLiteral("Vendel-Aktionen")));
    }

    void closingTheWindowDuringARunLetsTheRunComplete()
    {
        QVERIFY(startWindow({QStringLiteral("--filter"), QStringLiteral("road")}));
        QVERIFY(m_stub->held().hold());
        QVERIFY(pressEnterUntilARunStarts());
        const XKeyboard keyboard(m_display.name());
        QVERIFY(keyboard.press(m_windowId, {QStringLiteral("ctrl+w")}));
        QVERIFY(m_window.waitForFinished(generousMs));
        QCOMPARE(m_window.exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_window.exitCode(), 0);
        // The run is still held, and goes on to its end once let go.
        QCOMPARE(m_stub->contents(QStringLiteral("done")), QString());
        m_stub->held().release();
        QTRY_COMPARE_WITH_TIMEOUT(
            m_stub->contents(QStringLiteral("done")),
            QStringLiteral("vendelplugin://run/%1\n").arg(m_ids.value(QStringLiteral("Road Trip"))),
            generousMs);
        QVERIFY(HostProcess::isHostOnBus());
    }

    // The window's libraries are in the window's program only: the command line and the service stay light.
    void theCommandLineAndTheServiceLoadNoWindowLibraries()
    {
        QCOMPARE(windowLibrariesIn(ldd(HostProcess::executable())), QString());
        QCOMPARE(windowLibrariesIn(ldd(windowProgram)), QStringLiteral("libQt6Gui libQt6Widgets"));

        QVERIFY(startWindow({}));
        QTRY_VERIFY_WITH_TIMEOUT(ActivatedHost::pid() > 0, generousMs);
        const qint64 host = ActivatedHost::pid();
        QCOMPARE(commandLine(host), HostProcess::executable() + QStringLiteral(" serve"));
        QCOMPARE(windowLibrariesIn(contentsOf(QStringLiteral("/proc/%1/maps").arg(host))), QString());
        // The window is the process that `vendel-host window` was, and holds them.
        QCOMPARE(commandLine(m_window.processId()), windowProgram);
        QCOMPARE(windowLibrariesIn(contentsOf(QStringLiteral("/proc/%1/maps").arg(m_window.processId()))),
                 QStringLiteral("libQt6Gui libQt6Widgets"));
    }

private:
    static QProcessEnvironment hostEnvironment() { return QProcessEnvironment::systemEnvironment(); }

    QProcessEnvironment windowEnvironment() const
    {
        QProcessEnvironment environment = hostEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        environment.insert(QStringLiteral("DISPLAY"), m_display.name());
        return environment;
    }

    bool startWindow(const QStringList& arguments, const QProcessEnvironment& environment = {},
                     const QString& title = QStringLiteral("Vendel Actions"))
    {
        m_window.setProcessEnvironment(environment.isEmpty() ? windowEnvironment() : environment);
        m_window.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_window.start(HostProcess::executable(), QStringList{QStringLiteral("window")} + arguments);
        if (!m_window.waitForStarted(generousMs)) {
            qWarning("%s", qPrintable(m_window.errorString()));
            return false;
        }
        const XKeyboard keyboard(m_display.name());
        m_windowId = keyboard.waitForWindow(m_window.processId(), title, generousMs);
        if (m_windowId.isEmpty()) {
            qWarning("%s; %s", qPrintable(keyboard.errorString()),
                     m_window.readAllStandardError().constData());
        }
        return !m_windowId.isEmpty();
    }

    // Enter runs the selected action once the window has its first listing; until then it does nothing,
    // so it is pressed again until a run starts. The held stub refuses any second run, so one run at most
    // is recorded.
    bool pressEnterUntilARunStarts()
    {
        const XKeyboard keyboard(m_display.name());
        const QString record = m_stub->path(QStringLiteral("record"));
        QString problem;
        const bool started = QTest::qWaitFor(
            [&] {
                if (!keyboard.press(m_windowId, {QStringLiteral("Return")})) {
                    problem = keyboard.errorString();
                }
                return QTest::qWaitFor([&] { return !contentsOf(record).isEmpty(); }, pressAgainMs);
            },
            generousMs);
        if (!started) {
            qWarning("no run started: %s; %s", qPrintable(problem),
                     m_window.readAllStandardError().constData());
        }
        return started;
    }

    static QString ldd(const QString& program)
    {
        QProcess ldd;
        ldd.start(QStringLiteral("ldd"), {program});
        ldd.waitForFinished(generousMs);
        return QString::fromUtf8(ldd.readAllStandardOutput());
    }

    static QString commandLine(qint64 pid)
    {
        return contentsOf(QStringLiteral("/proc/%1/cmdline").arg(pid)).replace(u'\0', u' ').trimmed();
    }

    XvfbDisplay m_display;
    std::unique_ptr<StubLaunches> m_stub;
    QProcess m_window;
    QString m_windowId;
    // The actions by title.
    QHash<QString, QString> m_ids;
};

QTEST_GUILESS_MAIN(WindowCommandTest)
#include "WindowCommandTest.moc"
