// The stand-in host's process: started with a death signal, so a crashed test does not leave it behind.
#include "TestHostProcess.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QTest>

#include <csignal>

#include <sys/prctl.h>

namespace VendelSDK::Testing {

namespace {

const QString hostName = QStringLiteral("org.vendel.Host");

} // namespace

bool TestHostProcess::start()
{
    qDBusRegisterMetaType<QList<QStringList>>();
    if (m_process.state() == QProcess::Running && isRunning()) {
        return true;
    }
    m_process.setProgram(QStringLiteral(VENDEL_TEST_HOST_SERVICE));
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start();
    if (!m_process.waitForStarted(10000)) {
        return false;
    }
    return QTest::qWaitFor([this] { return isRunning() || m_process.state() != QProcess::Running; }, 10000) &&
           isRunning();
}

bool TestHostProcess::stop()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(10000)) {
            m_process.kill();
            m_process.waitForFinished(10000);
        }
    }
    return QTest::qWaitFor([] { return !isRunning(); }, 10000);
}

bool TestHostProcess::isRunning()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(hostName).value();
}

QDBusMessage TestHostProcess::control(const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(hostName, QStringLiteral("/org/vendel/Test"),
                                                       QStringLiteral("org.vendel.test.HostControl"), method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call);
}

bool TestHostProcess::controlled(const QString& method, const QVariantList& arguments)
{
    const QDBusMessage reply = control(method, arguments);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        qWarning("Control call %s failed: %s", qPrintable(method), qPrintable(reply.errorMessage()));
        return false;
    }
    return true;
}

QList<QStringList> TestHostProcess::calls()
{
    const QDBusMessage reply = control(QStringLiteral("Calls"));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) {
        return {{QStringLiteral("(the host's call log could not be read)")}};
    }
    return qdbus_cast<QList<QStringList>>(reply.arguments().constFirst());
}

} // namespace VendelSDK::Testing
