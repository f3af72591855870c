// Tests the layer's one wait: conditions, deadlines, signals that interrupt it, and the program's
// interruption.
#include "Wait.h"

#include "BusPeer.h"
#include "Match.h"
#include "PeerOnPrivateBus.h"

#include <QTest>

#include <atomic>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono;

namespace {

// A stand-in for the termination signals' pipe: readable once written to, emptied by what it delivers.
int interruptionPipe[2] = {-1, -1};
int delivered = 0;

int interruptionDescriptor()
{
    return interruptionPipe[0];
}

void deliverInterruption()
{
    char byte = 0;
    while (::read(interruptionPipe[0], &byte, 1) == 1) {
        ++delivered;
    }
}

QString changedRule()
{
    return QStringLiteral("type='signal',interface='%1',member='Changed'")
        .arg(QLatin1String(BusPeer::interface));
}

} // namespace

class WaitTest : public QObject
{
    Q_OBJECT

private:
    PeerOnPrivateBus m_private;

private Q_SLOTS:
    void initTestCase()
    {
        SignalBurst::install();
        const QString failure = m_private.start();
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        QCOMPARE(::pipe(interruptionPipe), 0);
        QCOMPARE(::fcntl(interruptionPipe[0], F_SETFL, O_NONBLOCK), 0);
    }

    void cleanupTestCase() { SdBus::setInterruption({}); }

    void aConditionThatHoldsEndsTheWaitAtOnce()
    {
        QCOMPARE(SdBus::waitUntil(
                     m_private.bus, [] { return true; }, steady_clock::now()),
                 SdBus::WaitEnd::done);
    }

    void aDeadlineEndsAWaitForWhatNeverComes()
    {
        QCOMPARE(SdBus::waitUntil(
                     m_private.bus, [] { return false; }, steady_clock::now() + milliseconds(100)),
                 SdBus::WaitEnd::deadline);
    }

    void aBurstOfSignalsWhileWaitingForASignalOfThePeerDoesNotEndTheWait()
    {
        QStringList received;
        const SdBus::Slot match =
            SdBus::addMatch(m_private.bus, changedRule(), [&received](SdBus::Message& signal) {
                QString text;
                signal.read(text);
                received.append(text);
            });
        QVERIFY(match);
        // The peer sends its signal only after a burst of the test's own signal, all handled on this thread
        // while it waits.
        const pthread_t waiting = pthread_self();
        std::atomic<int> handled{0};
        m_private.peer->post([this, waiting, &handled] {
            handled = SignalBurst::send(waiting, 50);
            m_private.peer->emitChanged(QStringLiteral("after the burst"));
        });
        const auto end = SdBus::waitUntil(
            m_private.bus, [&received] { return !received.isEmpty(); }, steady_clock::now() + seconds(30));
        QCOMPARE(end, SdBus::WaitEnd::done);
        QCOMPARE(handled.load(), 50);
        QCOMPARE(received, QStringList{QStringLiteral("after the burst")});
    }

    void theProgramsInterruptionIsDeliveredAndTheWaitGoesOn()
    {
        delivered = 0;
        SdBus::setInterruption({&interruptionDescriptor, &deliverInterruption});
        QCOMPARE(::write(interruptionPipe[1], "x", 1), 1);
        // Waits for the delivery, then for the deadline: a delivery that returns does not end the wait.
        const auto end = SdBus::waitUntil(
            m_private.bus, [] { return false; }, steady_clock::now() + milliseconds(200));
        SdBus::setInterruption({});
        QCOMPARE(delivered, 1);
        QCOMPARE(end, SdBus::WaitEnd::deadline);
    }

    void aDisconnectedBusEndsTheWaitAsClosed()
    {
        QCOMPARE(SdBus::waitUntil(
                     SdBus::Bus(), [] { return false; }, steady_clock::now() + seconds(30)),
                 SdBus::WaitEnd::closed);
    }
};

QTEST_GUILESS_MAIN(WaitTest)
#include "WaitTest.moc"
