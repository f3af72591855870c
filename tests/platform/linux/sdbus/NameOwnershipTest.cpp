// Tests name ownership on a private bus: the first connection owns a name, later ones queue for it.
#include "NameOwnership.h"

#include "PrivateBusDaemon.h"

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString name = QStringLiteral("org.vendel.test.Owned");

} // namespace

class NameOwnershipTest : public QObject
{
    Q_OBJECT

private:
    PrivateBusDaemon m_daemon;

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_daemon.start(), qPrintable(m_daemon.errorString())); }

    void aFreeNameIsOwnedByTheFirstToAsk()
    {
        const SdBus::Bus first = SdBus::Bus::open(m_daemon.address());
        QCOMPARE(SdBus::requestName(first, name), SdBus::NameRequest::owner);
        QCOMPARE(SdBus::nameOwner(first, name), first.uniqueName());
        // Asking again changes nothing.
        QCOMPARE(SdBus::requestName(first, name), SdBus::NameRequest::owner);
    }

    void aNameAlreadyTakenQueuesTheLaterConnectionUntilTheOwnerGivesItUp()
    {
        const SdBus::Bus first = SdBus::Bus::open(m_daemon.address());
        const SdBus::Bus second = SdBus::Bus::open(m_daemon.address());
        QCOMPARE(SdBus::requestName(first, name), SdBus::NameRequest::owner);
        QCOMPARE(SdBus::requestName(second, name), SdBus::NameRequest::queued);
        QCOMPARE(SdBus::nameOwner(second, name), first.uniqueName());

        SdBus::releaseName(first, name);
        QCOMPARE(SdBus::nameOwner(first, name), second.uniqueName());
    }

    void theOwnerOfANameNobodyHoldsIsEmpty()
    {
        const SdBus::Bus bus = SdBus::Bus::open(m_daemon.address());
        QCOMPARE(SdBus::nameOwner(bus, QStringLiteral("org.vendel.test.Nobody")), QString());
    }

    void withoutAConnectionNothingIsOwned()
    {
        QCOMPARE(SdBus::requestName(SdBus::Bus(), name), SdBus::NameRequest::failed);
        QCOMPARE(SdBus::nameOwner(SdBus::Bus(), name), QString());
    }
};

QTEST_GUILESS_MAIN(NameOwnershipTest)
#include "NameOwnershipTest.moc"
