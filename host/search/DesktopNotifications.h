// Tells the person at the desktop what went wrong with a launch that no window of ours shows: through the
// desktop's notification service (org.freedesktop.Notifications), or, when none answers, on standard error.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace VendelHost {

class DesktopNotifications : public QObject
{
    Q_OBJECT

public:
    // Where a notification goes when no service takes it: one line for a log.
    using Fallback = std::function<void(const QString& text)>;
    // A service that has not answered by then is taken to be gone.
    static constexpr int timeoutMs = 10000;

    DesktopNotifications(QDBusConnection bus, Fallback fallback, QObject* parent = nullptr);

    // The summary names the action, the body says why; both are plain text, shown as such whether or not
    // the service reads markup. Nothing here waits for the service.
    void notify(const QString& summary, const QString& body);

private:
    void send(const QString& summary, const QString& body, bool markup);

    QDBusConnection m_bus;
    Fallback m_fallback;
};

} // namespace VendelHost
