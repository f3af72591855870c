// The bus daemon keeps the activation environment; a host started before a change keeps the old one, so
// tests stop it between them.
#include "ActivatedHost.h"

#include "HostProcess.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QFile>
#include <QTest>

#include <csignal>

namespace VendelHost::Testing {

namespace {

constexpr int timeoutMs = 30000;

} // namespace

bool ActivatedHost::setEnvironment(const QHash<QString, QString>& variables)
{
    qDBusRegisterMetaType<QHash<QString, QString>>();
    QDBusMessage update = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("UpdateActivationEnvironment"));
    update.setArguments({QVariant::fromValue(variables)});
    const QDBusMessage reply = QDBusConnection::sessionBus().call(update);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        qWarning("UpdateActivationEnvironment: %s", qPrintable(reply.errorMessage()));
        return false;
    }
    return true;
}

qint64 ActivatedHost::pid()
{
    const auto reply =
        QDBusConnection::sessionBus().interface()->servicePid(QStringLiteral("org.vendel.Host"));
    return reply.isValid() ? qint64(reply.value()) : 0;
}

bool ActivatedHost::stop()
{
    // A client may have asked the bus to start the host a moment ago; that host would come up later with
    // this test's environment and serve the next test. A ping waits for a start under way (or makes one).
    QDBusMessage ping =
        QDBusMessage::createMethodCall(QStringLiteral("org.vendel.Host"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    QDBusConnection::sessionBus().call(ping, QDBus::Block, timeoutMs);
    const qint64 host = pid();
    if (host <= 0) {
        return true;
    }
    ::kill(pid_t(host), SIGTERM);
    QFile stat(QStringLiteral("/proc/%1/stat").arg(host));
    // Gone from the bus, and ended as a process (whether or not reaped yet), so no later test meets it.
    const auto ended = [&] {
        if (!stat.open(QIODevice::ReadOnly)) {
            return true;
        }
        const QByteArray line = stat.readAll();
        stat.close();
        const qsizetype end = line.lastIndexOf(')');
        return end < 0 || line.mid(end + 2, 1) == "Z";
    };
    return QTest::qWaitFor([] { return !HostProcess::isHostOnBus(); }, timeoutMs) &&
           QTest::qWaitFor(ended, timeoutMs);
}

} // namespace VendelHost::Testing
