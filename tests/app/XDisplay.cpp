// Xvfb tells the display it chose on a pipe (-displayfd); xdotool sends the key presses.
#include "XDisplay.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QThread>

namespace MusicPlugin::Testing {

namespace {

constexpr int pollMs = 10;

} // namespace

XvfbDisplay::~XvfbDisplay()
{
    if (m_server.state() != QProcess::NotRunning) {
        m_server.terminate();
        if (!m_server.waitForFinished(5000)) {
            m_server.kill();
            m_server.waitForFinished();
        }
    }
}

bool XvfbDisplay::start()
{
    m_server.setProgram(QStringLiteral("Xvfb"));
    m_server.setArguments({QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                           QStringLiteral("0"), QStringLiteral("1024x768x24"), QStringLiteral("-nolisten"),
                           QStringLiteral("tcp"), QStringLiteral("-noreset")});
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start();
    if (!m_server.waitForStarted(10000)) {
        m_error = QStringLiteral("Xvfb did not start: ") + m_server.errorString();
        return false;
    }
    QByteArray number;
    QElapsedTimer clock;
    clock.start();
    while (!number.endsWith('\n') && clock.elapsed() < 20000 && m_server.state() == QProcess::Running) {
        m_server.waitForReadyRead(1000);
        number += m_server.readAllStandardOutput();
    }
    if (!number.endsWith('\n')) {
        m_error = QStringLiteral("Xvfb did not say which display it took");
        return false;
    }
    m_name = QLatin1Char(':') + QString::fromLatin1(number.trimmed());
    return true;
}

QString XKeyboard::waitForWindow(qint64 pid, const QString& title, int timeoutMs) const
{
    QElapsedTimer clock;
    clock.start();
    do {
        const QStringList windows = viewableWindows(pid, title);
        if (windows.size() == 1) {
            return windows.first();
        }
        QThread::msleep(pollMs);
    } while (clock.elapsed() < timeoutMs);
    QStringList shown;
    for (const QString& window : viewableWindows(pid)) {
        QString name;
        xdotool({QStringLiteral("getwindowname"), window}, &name);
        shown.append(u'"' + name.trimmed() + u'"');
    }
    m_error = QStringLiteral("no window \"%1\" of process %2 showed (shown: %3)")
                  .arg(title)
                  .arg(pid)
                  .arg(shown.isEmpty() ? QStringLiteral("none") : shown.join(QStringLiteral(", ")));
    return {};
}

bool XKeyboard::choosePauseInEditor(const QString& window, qint64 pid, int timeoutMs) const
{
    // Without a window manager nobody gives the window the focus; the keys must reach it.
    const auto shown = int(viewableWindows(pid).size());
    if (!xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window}) ||
        !xdotool({QStringLiteral("key"), QStringLiteral("alt+a"), QStringLiteral("alt+Down")})) {
        return false;
    }
    if (!waitForWindowCount(pid, shown + 1, timeoutMs)) {
        m_error = QStringLiteral("the operation list did not open: ") + m_error;
        return false;
    }
    if (!xdotool({QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Return")})) {
        return false;
    }
    if (!waitForWindowCount(pid, shown, timeoutMs)) {
        m_error = QStringLiteral("the operation list did not close: ") + m_error;
        return false;
    }
    return true;
}

QString XKeyboard::findWindow(qint64 pid, const QString& title) const
{
    const QStringList windows = viewableWindows(pid, title);
    return windows.size() == 1 ? windows.first() : QString();
}

bool XKeyboard::press(const QString& window, const QStringList& keys) const
{
    return xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window}) &&
           xdotool(QStringList{QStringLiteral("key")} + keys);
}

bool XKeyboard::type(const QString& window, const QString& text) const
{
    return xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window}) &&
           xdotool({QStringLiteral("type"), QStringLiteral("--"), text});
}

qint64 XKeyboard::processOf(const QString& window) const
{
    QString output;
    return xdotool({QStringLiteral("getwindowpid"), window}, &output) ? output.trimmed().toLongLong() : 0;
}

QStringList XKeyboard::viewableWindows(qint64 pid, const QString& title) const
{
    QStringList arguments{QStringLiteral("search"), QStringLiteral("--onlyvisible")};
    if (pid > 0) {
        arguments += {QStringLiteral("--pid"), QString::number(pid)};
    }
    if (!title.isEmpty()) {
        // Without --all, xdotool lists windows that meet any one of the conditions.
        arguments += {QStringLiteral("--all"), QStringLiteral("--name"),
                      u'^' + QRegularExpression::escape(title) + u'$'};
    }
    QString output;
    // xdotool search fails when it finds nothing; that is an answer too.
    xdotool(arguments, &output);
    return output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool XKeyboard::waitForWindowCount(qint64 pid, int count, int timeoutMs) const
{
    QElapsedTimer clock;
    clock.start();
    qsizetype seen = 0;
    do {
        seen = viewableWindows(pid).size();
        if (seen == count) {
            return true;
        }
        QThread::msleep(pollMs);
    } while (clock.elapsed() < timeoutMs);
    m_error = QStringLiteral("%1 windows viewable, not %2").arg(seen).arg(count);
    return false;
}

bool XKeyboard::xdotool(const QStringList& arguments, QString* output) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("xdotool"), arguments);
    if (!process.waitForFinished(10000)) {
        m_error = QStringLiteral("xdotool %1 did not end").arg(arguments.join(QLatin1Char(' ')));
        process.kill();
        process.waitForFinished();
        return false;
    }
    if (output) {
        *output = QString::fromUtf8(process.readAllStandardOutput());
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        m_error =
            QStringLiteral("xdotool %1 failed: %2")
                .arg(arguments.join(QLatin1Char(' ')), QString::fromUtf8(process.readAllStandardError()));
        return false;
    }
    return true;
}

} // namespace MusicPlugin::Testing
