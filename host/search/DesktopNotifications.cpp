// The service's capabilities are asked for first: one that reads markup in the body gets the text escaped, so
// that a title such as "<b>Loud</b>" shows as typed.
#include "DesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace VendelHost {

namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";
// The window's entry: the desktop shows its name and icon with the notification.
constexpr auto desktopEntry = "org.vendel.Actions";

QDBusMessage call(const char* method)
{
    return QDBusMessage::createMethodCall(QLatin1String(service), QLatin1String(path), QLatin1String(service),
                                          QLatin1String(method));
}

} // namespace

DesktopNotifications::DesktopNotifications(QDBusConnection bus, Fallback fallback, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_fallback(std::move(fallback))
{}

void DesktopNotifications::notify(const QString& summary, const QString& body)
{
    auto* asked = new QDBusPendingCallWatcher(m_bus.asyncCall(call("GetCapabilities"), timeoutMs), this);
    connect(asked, &QDBusPendingCallWatcher::finished, this,
            [this, summary, body](QDBusPendingCallWatcher* answer) {
                answer->deleteLater();
                if (answer->isError()) {
                    m_fallback(summary + u' ' + body);
                    return;
                }
                send(summary, body,
                     QDBusPendingReply<QStringList>(*answer).value().contains(QStringLiteral("body-markup")));
            });
}

void DesktopNotifications::send(const QString& summary, const QString& body, bool markup)
{
    QDBusMessage notification = call("Notify");
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QLatin1String(desktopEntry)},
                            // Normal urgency: a failure to know about, not an emergency.
                            {QStringLiteral("urgency"), QVariant::fromValue(uchar(1))}};
    //: The application's name that the desktop shows with a notification of a failed launch
    notification.setArguments({tr("Vendel Actions"), uint(0), QLatin1String(desktopEntry), summary,
                               markup ? body.toHtmlEscaped() : body, QStringList(), hints, -1});
    auto* sent = new QDBusPendingCallWatcher(m_bus.asyncCall(notification, timeoutMs), this);
    connect(sent, &QDBusPendingCallWatcher::finished, this,
            [this, summary, body](QDBusPendingCallWatcher* answer) {
                answer->deleteLater();
                if (answer->isError()) {
                    m_fallback(summary + u' ' + body);
                }
            });
}

} // namespace VendelHost
