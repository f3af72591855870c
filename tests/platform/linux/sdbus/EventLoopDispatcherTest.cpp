// Tests serving methods from the Qt event loop: calls are answered, and handlers that misbehave stop nothing.
#include "EventLoopDispatcher.h"

#include "BusPeer.h"
#include "PrivateBusDaemon.h"
#include "ServedMethod.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <systemd/sd-bus.h>

#include <poll.h>

#include <stdexcept>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

constexpr auto interface = "org.vendel.Served1";

// Every method is served on a path of its own.
QByteArray pathOf(const char* member)
{
    return QByteArray("/org/vendel/Served/") + member;
}

bool readable(int fd)
{
    pollfd watched{fd, POLLIN, 0};
    return ::poll(&watched, 1, 0) > 0;
}

} // namespace

class EventLoopDispatcherTest : public QObject
{
    Q_OBJECT

private:
    // Serves `member`(s) → s with `handler`, which receives the argument and gives the answer.
    SdBus::Slot serve(const char* member, std::function<QString(const QString&)> handler)
    {
        const QByteArray path = pathOf(member);
        return SdBus::serveMethod(m_bus, path.constData(), interface, member, "s", "s",
                                  [handler](SdBus::Message& call, SdBus::Message& reply) {
                                      QString text;
                                      if (!call.read(text)) {
                                          return false;
                                      }
                                      reply.append(handler(text));
                                      return true;
                                  });
    }

    void callLater(BusPeer& caller, const char* member, const QString& argument)
    {
        caller.callLater(m_bus.uniqueName(), pathOf(member).constData(), interface, member, argument);
    }

    PrivateBusDaemon m_daemon;
    SdBus::Bus m_bus;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_daemon.start(), qPrintable(m_daemon.errorString()));
        m_bus = SdBus::Bus::open(m_daemon.address());
        QVERIFY(m_bus.isConnected());
    }

    void callsAreAnsweredFromTheEventLoop()
    {
        const SdBus::Slot echo = serve("Echo", [](const QString& text) { return text; });
        QVERIFY(echo);
        const SdBus::EventLoopDispatcher dispatcher(m_bus);
        BusPeer caller(m_daemon.address());
        callLater(caller, "Echo", QStringLiteral("hello"));
        QTRY_COMPARE(caller.answers().size(), size_t(1));
        QCOMPARE(caller.answers().front().text, QStringLiteral("hello"));
    }

    void aHandlerThatRunsANestedEventLoopDoesNotStopTheDispatcher()
    {
        BusPeer first(m_daemon.address());
        BusPeer second(m_daemon.address());
        QVERIFY(first.isReady() && second.isReady());
        const SdBus::Slot echo = serve("Echo", [](const QString& text) { return text; });
        // While its call is handled, another call arrives and the handler runs an event loop of its own, as
        // a modal dialog would: the dispatcher's socket is readable in that loop, inside sd_bus_process.
        const SdBus::Slot nested = serve("Nested", [&](const QString& text) {
            callLater(second, "Echo", QStringLiteral("during"));
            QEventLoop loop;
            int readableTicks = 0;
            QTimer tick;
            QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
                if (readable(sd_bus_get_fd(m_bus.get())) && ++readableTicks == 3) {
                    loop.quit();
                }
            });
            tick.start(1);
            QTimer::singleShot(20000, &loop, &QEventLoop::quit);
            loop.exec();
            return text;
        });
        QVERIFY(echo && nested);
        const SdBus::EventLoopDispatcher dispatcher(m_bus);

        callLater(first, "Nested", QStringLiteral("outer"));
        QTRY_COMPARE(first.answers().size(), size_t(1));
        QTRY_COMPARE(second.answers().size(), size_t(1));
        // Still serving afterwards.
        callLater(first, "Echo", QStringLiteral("after"));
        QTRY_COMPARE_WITH_TIMEOUT(first.answers().size(), size_t(2), 20000);
        QCOMPARE(first.answers().at(0).text, QStringLiteral("outer"));
        QCOMPARE(second.answers().at(0).text, QStringLiteral("during"));
        QVERIFY(!first.answers().at(1).isError);
        QCOMPARE(first.answers().at(1).text, QStringLiteral("after"));
    }

    void aHandlerThatThrowsAnswersFailedAndTheDispatcherGoesOn()
    {
        const SdBus::Slot echo = serve("Echo", [](const QString& text) { return text; });
        const SdBus::Slot throwing = serve(
            "Throw", [](const QString&) -> QString { throw std::runtime_error("thrown by the handler"); });
        QVERIFY(echo && throwing);
        const SdBus::EventLoopDispatcher dispatcher(m_bus);
        BusPeer caller(m_daemon.address());
        callLater(caller, "Throw", QStringLiteral("x"));
        QTRY_COMPARE(caller.answers().size(), size_t(1));
        QVERIFY(caller.answers().front().isError);
        QCOMPARE(caller.answers().front().text, QString::fromLatin1(SdBus::failedError));
        callLater(caller, "Echo", QStringLiteral("still here"));
        QTRY_COMPARE(caller.answers().size(), size_t(2));
        QCOMPARE(caller.answers().back().text, QStringLiteral("still here"));
    }

    void aHandlerRefusingItsArgumentsAnswersInvalidArgs()
    {
        const SdBus::Slot picky =
            SdBus::serveMethod(m_bus, pathOf("Picky").constData(), interface, "Picky", "s", "s",
                               [](SdBus::Message&, SdBus::Message&) { return false; });
        const SdBus::EventLoopDispatcher dispatcher(m_bus);
        BusPeer caller(m_daemon.address());
        callLater(caller, "Picky", QStringLiteral("x"));
        QTRY_COMPARE(caller.answers().size(), size_t(1));
        QCOMPARE(caller.answers().front().text, QString::fromLatin1(SdBus::invalidArgsError));
    }
};

QTEST_GUILESS_MAIN(EventLoopDispatcherTest)
#include "EventLoopDispatcherTest.moc"
