// A private X server (Xvfb) for tests and benchmarks, and real key presses into a plugin's windows on it.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace MusicPlugin::Testing {

// Starts Xvfb on a display number it picks itself, so that tests running at once never collide.
class XvfbDisplay
{
public:
    XvfbDisplay() = default;
    ~XvfbDisplay();
    XvfbDisplay(const XvfbDisplay&) = delete;
    XvfbDisplay& operator=(const XvfbDisplay&) = delete;

    // False, with the reason in errorString(), when the server could not be started.
    bool start();
    // ":<number>", for DISPLAY.
    const QString& name() const { return m_name; }
    const QString& errorString() const { return m_error; }

private:
    QProcess m_server;
    QString m_name;
    QString m_error;
};

// Types into the windows of one process on a display with xdotool, whose input goes through the X
// server's test extension: the application receives the same events as from a keyboard.
class XKeyboard
{
public:
    explicit XKeyboard(QString display) : m_display(std::move(display)) {}

    // The process's viewable window of that title (the whole title) once there is one; empty after
    // `timeoutMs` without. A pid of 0 stands for any process.
    QString waitForWindow(qint64 pid, const QString& title, int timeoutMs) const;
    // The process's one viewable window of that title now, or empty; for callers that wait in their own
    // event loop (a window of the caller's own process shows only while its loop runs).
    QString findWindow(qint64 pid, const QString& title) const;
    // Gives the window the keyboard, then presses each key (xdotool's names: "ctrl+n", "Return", "F2").
    bool press(const QString& window, const QStringList& keys) const;
    // Gives the window the keyboard, then types the text as key presses.
    bool type(const QString& window, const QString& text) const;
    // The process that owns the window, or 0.
    qint64 processOf(const QString& window) const;
    // Chooses the editor's second operation, "Pause", in its operation list: Alt+A (the list's mnemonic),
    // Alt+Down to open it, Down, Return. True once the list's popup has closed again: the choice is made
    // in the same event that closes it, so the editor has taken the change by then.
    bool choosePauseInEditor(const QString& window, qint64 pid, int timeoutMs) const;
    // True once the process shows exactly `count` viewable windows, whatever their titles (an alert has
    // none of its own); false after `timeoutMs` without.
    bool waitForWindowCount(qint64 pid, int count, int timeoutMs) const;
    // What went wrong last.
    const QString& errorString() const { return m_error; }

private:
    QStringList viewableWindows(qint64 pid, const QString& title = QString()) const;
    bool xdotool(const QStringList& arguments, QString* output = nullptr) const;

    QString m_display;
    mutable QString m_error;
};

} // namespace MusicPlugin::Testing
