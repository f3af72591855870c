// Tests how the served host tells the desktop of a failure: a notification with the window's name and icon,
// plain text whether or not the service reads markup, and standard error when no service answers.
#include "DesktopNotifications.h"
#include "RecordingNotifications.h"

#include <QDBusConnection>
#include <QTest>

using namespace VendelHost;
using namespace VendelHost::Testing;

namespace {

constexpr int generousMs = 30000;

} // namespace

class DesktopNotificationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fallbacks.clear(); }

    void theFailureReachesTheNotificationService()
    {
        RecordingNotifications service;
        QVERIFY(service.start());
        notifications().notify(
            QStringLiteral("“Road Trip” did not run."),
            QStringLiteral("It is still running; it can run again when this run has ended."));
        QTRY_COMPARE_WITH_TIMEOUT(service.notifications.size(), 1, generousMs);
        const auto& shown = service.notifications.constFirst();
        QCOMPARE(shown.summary, QStringLiteral("“Road Trip” did not run."));
        QCOMPARE(shown.body,
                 QStringLiteral("It is still running; it can run again when this run has ended."));
        QCOMPARE(shown.appName, QStringLiteral("Vendel Actions"));
        QCOMPARE(shown.appIcon, QStringLiteral("org.vendel.Actions"));
        QCOMPARE(shown.hints.value(QStringLiteral("desktop-entry")).toString(),
                 QStringLiteral("org.vendel.Actions"));
        QCOMPARE(shown.timeout, -1);
        QCOMPARE(m_fallbacks, QStringList());
    }

    void aServiceThatReadsMarkupGetsTheTextEscaped()
    {
        RecordingNotifications service({QStringLiteral("body"), QStringLiteral("body-markup")});
        QVERIFY(service.start());
        notifications().notify(QStringLiteral("“<b>Loud</b>” did not run."),
                               QStringLiteral("Its plugin's executable /tmp/a&b<c> is missing."));
        QTRY_COMPARE_WITH_TIMEOUT(service.notifications.size(), 1, generousMs);
        // The summary is never markup; the body is, for this service.
        QCOMPARE(service.notifications.constFirst().summary, QStringLiteral("“<b>Loud</b>” did not run."));
        QCOMPARE(service.notifications.constFirst().body,
                 QStringLiteral("Its plugin's executable /tmp/a&amp;b&lt;c&gt; is missing."));
    }

    void aServiceWithoutMarkupGetsTheTextAsItIs()
    {
        RecordingNotifications service;
        QVERIFY(service.start());
        notifications().notify(QStringLiteral("“<b>Loud</b>” did not run."), QStringLiteral("a&b<c>"));
        QTRY_COMPARE_WITH_TIMEOUT(service.notifications.size(), 1, generousMs);
        QCOMPARE(service.notifications.constFirst().body, QStringLiteral("a&b<c>"));
    }

    void withoutAServiceTheFailureGoesToTheFallback()
    {
        notifications().notify(QStringLiteral("“Road Trip” did not run."),
                               QStringLiteral("It no longer exists."));
        QTRY_COMPARE_WITH_TIMEOUT(
            m_fallbacks, QStringList{QStringLiteral("“Road Trip” did not run. It no longer exists.")},
            generousMs);
    }

private:
    DesktopNotifications& notifications()
    {
        m_notifications = std::make_unique<DesktopNotifications>(
            QDBusConnection::sessionBus(), [this](const QString& text) { m_fallbacks.append(text); });
        return *m_notifications;
    }

    QStringList m_fallbacks;
    std::unique_ptr<DesktopNotifications> m_notifications;
};

QTEST_GUILESS_MAIN(DesktopNotificationsTest)
#include "DesktopNotificationsTest.moc"
