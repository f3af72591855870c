// Tests matches on a private bus: the signals a rule selects reach the handler, and its exceptions the
// waiter.
#include "Match.h"

#include "BusPeer.h"
#include "PeerOnPrivateBus.h"
#include "Wait.h"

#include <QTest>

#include <systemd/sd-bus.h>

#include <stdexcept>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono;

namespace {

QString rule(const char* member)
{
    return QStringLiteral("type='signal',interface='%1',member='%2'")
        .arg(QLatin1String(BusPeer::interface), QLatin1String(member));
}

} // namespace

class MatchTest : public QObject
{
    Q_OBJECT

private:
    PeerOnPrivateBus m_private;

private Q_SLOTS:
    void initTestCase()
    {
        const QString failure = m_private.start();
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }

    void aSignalThatTheRuleSelectsReachesTheHandlerWithItsSender()
    {
        QStringList received;
        QString sender;
        const SdBus::Slot match =
            SdBus::addMatch(m_private.bus, rule("Changed"), [&](SdBus::Message& signal) {
                QString text;
                signal.read(text);
                received.append(text);
                sender = QString::fromLatin1(sd_bus_message_get_sender(signal.get()));
            });
        QVERIFY(match);
        m_private.peer->emitChanged(QStringLiteral("one"));
        QCOMPARE(SdBus::waitUntil(
                     m_private.bus, [&] { return !received.isEmpty(); }, steady_clock::now() + seconds(30)),
                 SdBus::WaitEnd::done);
        QCOMPARE(received, QStringList{QStringLiteral("one")});
        QCOMPARE(sender, m_private.peer->uniqueName());
    }

    void aSignalThatTheRuleDoesNotSelectDoesNotReachTheHandler()
    {
        int other = 0;
        bool changed = false;
        const SdBus::Slot otherMatch =
            SdBus::addMatch(m_private.bus, rule("Other"), [&other](SdBus::Message&) { ++other; });
        const SdBus::Slot changedMatch =
            SdBus::addMatch(m_private.bus, rule("Changed"), [&changed](SdBus::Message&) { changed = true; });
        QVERIFY(otherMatch && changedMatch);
        m_private.peer->emitChanged(QStringLiteral("two"));
        QCOMPARE(SdBus::waitUntil(
                     m_private.bus, [&] { return changed; }, steady_clock::now() + seconds(30)),
                 SdBus::WaitEnd::done);
        QCOMPARE(other, 0);
    }

    void aMatchEndsWithItsSlot()
    {
        int count = 0;
        bool laterSeen = false;
        SdBus::Slot first =
            SdBus::addMatch(m_private.bus, rule("Changed"), [&count](SdBus::Message&) { ++count; });
        first.reset();
        const SdBus::Slot later = SdBus::addMatch(m_private.bus, rule("Changed"),
                                                  [&laterSeen](SdBus::Message&) { laterSeen = true; });
        m_private.peer->emitChanged(QStringLiteral("three"));
        QCOMPARE(SdBus::waitUntil(
                     m_private.bus, [&] { return laterSeen; }, steady_clock::now() + seconds(30)),
                 SdBus::WaitEnd::done);
        QCOMPARE(count, 0);
    }

    void aRuleTheDaemonRefusesGivesNoSlotAndKeepsTheConnection()
    {
        QVERIFY(!SdBus::addMatch(m_private.bus, QStringLiteral("type='nonsense'"), [](SdBus::Message&) {}));
        QVERIFY(m_private.bus.isConnected());
    }

    void anExceptionInTheHandlerReachesTheWaitNotSdBus()
    {
        const SdBus::Slot match = SdBus::addMatch(m_private.bus, rule("Changed"), [](SdBus::Message&) {
            throw std::runtime_error("thrown by the handler");
        });
        QVERIFY(match);
        m_private.peer->emitChanged(QStringLiteral("four"));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 SdBus::waitUntil(
                                     m_private.bus, [] { return false; }, steady_clock::now() + seconds(30)));
        // The connection goes on: the next signal is handled as usual.
        bool seen = false;
        const SdBus::Slot calm =
            SdBus::addMatch(m_private.bus, rule("Changed"), [&seen](SdBus::Message&) { seen = true; });
        m_private.peer->emitChanged(QStringLiteral("five"));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 SdBus::waitUntil(
                                     m_private.bus, [&] { return seen; }, steady_clock::now() + seconds(30)));
        QVERIFY(seen);
    }
};

QTEST_GUILESS_MAIN(MatchTest)
#include "MatchTest.moc"
