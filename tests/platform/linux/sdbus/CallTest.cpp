// Tests calls on a private bus: the reply, the peer's error, the time-out, and signals while a call waits.
#include "Call.h"

#include "BusPeer.h"
#include "PeerOnPrivateBus.h"

#include <QTest>

#include <atomic>
#include <cstdint>

#include <systemd/sd-bus.h>

#include <pthread.h>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

class CallTest : public QObject
{
    Q_OBJECT

private:
    SdBus::Message peerCall(const SdBus::Bus& bus, const char* member) const
    {
        return bus.methodCall(QString::fromLatin1(BusPeer::name), BusPeer::path, BusPeer::interface, member);
    }

    PeerOnPrivateBus m_private;

private Q_SLOTS:
    void initTestCase()
    {
        SignalBurst::install();
        const QString failure = m_private.start();
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }

    void init() { m_private.peer->onCall = nullptr; }

    void aReplyCarriesThePeersAnswer()
    {
        SdBus::Message message = peerCall(m_private.bus, "Echo");
        message.append(QStringLiteral("hello ☕"));
        SdBus::Reply reply = SdBus::call(m_private.bus, message);
        QVERIFY(!reply.error);
        QCOMPARE(reply.message.signature(), QStringLiteral("s"));
        QString text;
        QVERIFY(reply.message.read(text));
        QCOMPARE(text, QStringLiteral("hello ☕"));
    }

    void anErrorReplyCarriesItsNameAndMessage()
    {
        SdBus::Message message = peerCall(m_private.bus, "Refuse");
        const SdBus::Reply reply = SdBus::call(m_private.bus, message);
        QVERIFY(reply.error);
        QCOMPARE(reply.error->name, QStringLiteral("org.vendel.Test1.Error.Refused"));
        QCOMPARE(reply.error->message, QStringLiteral("Refused on purpose"));
    }

    void aPeerThatDoesNotAnswerInTimeReadsAsNoReply()
    {
        // With the connection's default made an hour, only the call's own time-out can end this wait.
        QCOMPARE(sd_bus_set_method_call_timeout(m_private.bus.get(), std::uint64_t(3600) * 1000 * 1000), 0);
        const int before = m_private.peer->calls(QStringLiteral("Silent"));
        SdBus::Message message = peerCall(m_private.bus, "Silent");
        const SdBus::Reply reply = SdBus::call(m_private.bus, message, 200ms);
        QVERIFY(reply.error);
        QCOMPARE(reply.error->name, QString::fromLatin1(SdBus::noReplyError));
        // The call did reach the peer: it was the answer that did not come.
        QTRY_COMPARE(m_private.peer->calls(QStringLiteral("Silent")), before + 1);
    }

    void aCallOnANameWithoutOwnerIsTheDaemonsError()
    {
        SdBus::Message message = m_private.bus.methodCall(QStringLiteral("org.vendel.Nobody"), BusPeer::path,
                                                          BusPeer::interface, "Echo");
        message.append(QStringLiteral("x"));
        const SdBus::Reply reply = SdBus::call(m_private.bus, message);
        QVERIFY(reply.error);
        QCOMPARE(reply.error->name, QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"));
    }

    void aValueTheBusCannotCarryIsRefusedBeforeSending()
    {
        SdBus::Message message = peerCall(m_private.bus, "Echo");
        message.append(QStringLiteral("cut") + QChar(0) + QStringLiteral("off"));
        const SdBus::Reply reply = SdBus::call(m_private.bus, message);
        QVERIFY(reply.error);
        QCOMPARE(reply.error->name, QString::fromLatin1(SdBus::invalidArgsError));
    }

    void aBurstOfSignalsWhileTheCallWaitsNeitherEndsItNorSendsItTwice()
    {
        // The peer holds its answer back until a burst of the test's own signal has been handled on this
        // thread, which waits for the answer meanwhile; every one of them interrupts that wait.
        const pthread_t waiting = pthread_self();
        std::atomic<int> handled{0};
        m_private.peer->onCall = [waiting, &handled](const QString&) {
            handled = SignalBurst::send(waiting, 50);
        };
        const int before = m_private.peer->calls(QStringLiteral("Echo"));
        SdBus::Message message = peerCall(m_private.bus, "Echo");
        message.append(QStringLiteral("after the burst"));
        SdBus::Reply reply = SdBus::call(m_private.bus, message);
        m_private.peer->onCall = nullptr;
        QVERIFY2(!reply.error,
                 qPrintable(reply.error ? reply.error->name + u' ' + reply.error->message : QString()));
        QCOMPARE(handled.load(), 50);
        QString text;
        QVERIFY(reply.message.read(text));
        QCOMPARE(text, QStringLiteral("after the burst"));
        QCOMPARE(m_private.peer->calls(QStringLiteral("Echo")), before + 1);
    }
};

QTEST_GUILESS_MAIN(CallTest)
#include "CallTest.moc"
