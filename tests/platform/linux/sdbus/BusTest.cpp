// Tests the connection: its unique name, and what calls and waits do when the bus daemon goes away.
#include "Bus.h"

#include "BusPeer.h"
#include "Call.h"
#include "PrivateBusDaemon.h"
#include "Wait.h"

#include <QTest>

#include <csignal>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono;

class BusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aConnectionHasTheUniqueNameTheDaemonGaveIt()
    {
        PrivateBusDaemon daemon;
        QVERIFY2(daemon.start(), qPrintable(daemon.errorString()));
        const SdBus::Bus bus = SdBus::Bus::open(daemon.address());
        QVERIFY(bus.isConnected());
        QVERIFY2(bus.uniqueName().startsWith(u':'), qPrintable(bus.uniqueName()));
    }

    void aBusThatCannotBeReachedIsNotConnectedAndItsCallsSaySo()
    {
        PrivateBusDaemon daemon;
        QVERIFY2(daemon.start(), qPrintable(daemon.errorString()));
        const QString address = daemon.address();
        daemon.kill();
        const SdBus::Bus bus = SdBus::Bus::open(address);
        QVERIFY(!bus.isConnected());
        QCOMPARE(bus.uniqueName(), QString());
        SdBus::Message message =
            bus.methodCall(QString::fromLatin1(BusPeer::name), BusPeer::path, BusPeer::interface, "Echo");
        QCOMPARE(SdBus::call(bus, message).error->name, QString::fromLatin1(SdBus::disconnectedError));
    }

    void theDaemonGoingAwayWhileACallWaitsEndsItAsDisconnected()
    {
        PrivateBusDaemon daemon;
        QVERIFY2(daemon.start(), qPrintable(daemon.errorString()));
        BusPeer peer(daemon.address());
        QVERIFY(peer.isReady());
        const SdBus::Bus bus = SdBus::Bus::open(daemon.address());
        // The daemon goes once the call has reached the peer, which never answers it.
        const auto daemonProcess = pid_t(daemon.processId());
        peer.onCall = [daemonProcess](const QString&) { ::kill(daemonProcess, SIGKILL); };
        SdBus::Message message =
            bus.methodCall(QString::fromLatin1(BusPeer::name), BusPeer::path, BusPeer::interface, "Silent");
        const SdBus::Reply reply = SdBus::call(bus, message);
        peer.onCall = nullptr;
        QVERIFY(reply.error);
        QCOMPARE(reply.error->name, QString::fromLatin1(SdBus::disconnectedError));
        QCOMPARE(reply.error->message, QStringLiteral("Not connected to D-Bus server"));
        QVERIFY(!bus.isConnected());
        // Later waits end at once.
        QCOMPARE(SdBus::waitUntil(
                     bus, [] { return false; }, steady_clock::now() + seconds(30)),
                 SdBus::WaitEnd::closed);
        SdBus::Message later =
            bus.methodCall(QString::fromLatin1(BusPeer::name), BusPeer::path, BusPeer::interface, "Echo");
        QCOMPARE(SdBus::call(bus, later).error->name, QString::fromLatin1(SdBus::disconnectedError));
    }
};

QTEST_GUILESS_MAIN(BusTest)
#include "BusTest.moc"
