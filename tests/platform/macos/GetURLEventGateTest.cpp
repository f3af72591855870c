// Tests which get-URL event a launch URL is taken from, and that each event is dispatched once.
#include "GetURLEventGate.h"

#include <QTest>

using namespace VendelSDK;

namespace {

AppleEventFacts getURL(const QString& text, qint32 returnID = 1)
{
    return AppleEventFacts{internetEventClass, getURLEventID, returnID, 0, text};
}

} // namespace

class GetURLEventGateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fourCharacterCodesArePackedAsTheEventManagerDoes()
    {
        QCOMPARE(internetEventClass, quint32(0x4755524C));
        QCOMPARE(fourCharCode("----"), quint32(0x2D2D2D2D));
    }

    void exactTextOfTheEventIsDispatched()
    {
        GetURLEventGate gate;
        QCOMPARE(gate.urlToDispatch(getURL(QStringLiteral("VENDELPLUGIN://Run/X"))),
                 std::optional<QString>(QStringLiteral("VENDELPLUGIN://Run/X")));
    }

    void urlWithoutAnEventBeingHandledIsNoLaunch()
    {
        GetURLEventGate gate;
        QCOMPARE(gate.urlToDispatch(std::nullopt), std::nullopt);
    }

    void otherEventsAreNoLaunch()
    {
        GetURLEventGate gate;
        AppleEventFacts openDocuments = getURL(QStringLiteral("vendelplugin://run/X"));
        openDocuments.eventClass = fourCharCode("aevt");
        openDocuments.eventID = fourCharCode("odoc");
        QCOMPARE(gate.urlToDispatch(openDocuments), std::nullopt);
    }

    void eventWithoutTextIsNoLaunch()
    {
        GetURLEventGate gate;
        AppleEventFacts facts = getURL(QString());
        facts.directObjectText = std::nullopt;
        QCOMPARE(gate.urlToDispatch(facts), std::nullopt);
    }

    void oneEventReachedByTwoPathsIsDispatchedOnce()
    {
        GetURLEventGate gate;
        const auto event = getURL(QStringLiteral("vendelplugin://edit/A"), 7);
        QVERIFY(gate.urlToDispatch(event));
        QCOMPARE(gate.urlToDispatch(event), std::nullopt);
    }

    void laterEventWithTheSameUrlIsDispatchedAgain()
    {
        GetURLEventGate gate;
        QVERIFY(gate.urlToDispatch(getURL(QStringLiteral("vendelplugin://edit/A"), 7)));
        QVERIFY(gate.urlToDispatch(getURL(QStringLiteral("vendelplugin://edit/A"), 8)));
        QVERIFY(gate.urlToDispatch(getURL(QStringLiteral("vendelplugin://edit/B"), 8)));
    }
};

QTEST_GUILESS_MAIN(GetURLEventGateTest)
#include "GetURLEventGateTest.moc"
