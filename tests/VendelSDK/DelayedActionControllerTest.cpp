// Tests the one-second trailing-edge coalescing of requests in virtual time, where every count is exact.
#include <VendelSDK/DelayedActionController.h>

#include <VendelSDK/Platform.h>
#include <VendelSDK/Testing/ManualScheduler.h>

#include <QTest>

#include <chrono>
#include <memory>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

namespace {

// A controller on virtual time, and when its action ran, in milliseconds since the scheduler was made.
struct Timed
{
    explicit Timed(double interval = 1.0)
        : controller(
              interval, [this] { ranAt.append(scheduler.elapsed()); }, &scheduler)
    {}

    ManualScheduler scheduler;
    QList<std::chrono::milliseconds> ranAt;
    DelayedActionController controller;
};

} // namespace

class DelayedActionControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneCallRunsTheActionOnceAtOneSecond()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        scheduler.advance(999ms);
        QVERIFY(ranAt.isEmpty());
        scheduler.advance(1ms);
        QCOMPARE(ranAt, QList{1000ms});
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1000ms});
    }

    void callsAt0And300And600MsRunTheActionOnceAt1600Ms()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        // The checks at 1.0 s and 1.3 s find less than a second since the last call.
        scheduler.advance(999ms);
        QVERIFY(ranAt.isEmpty());
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1600ms});
    }

    void twoCallsAtTheSameInstantBothFindASecondElapsedAndRunTheActionTwice()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        controller.run();
        scheduler.advance(60s);
        QCOMPARE(ranAt, (QList{1000ms, 1000ms}));
    }

    void mainThreadHeldUpOverASecondLetsAnEarlierCheckRunTheActionToo()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        // Busy from 0.4 s to 1.8 s: the checks due at 1.0 s and 1.3 s both run late, at 1.8 s, when the
        // last call is a full second old.
        scheduler.advance(100ms);
        scheduler.holdUp(1400ms);
        QVERIFY(ranAt.isEmpty());
        scheduler.advance(60s);
        QCOMPARE(ranAt, (QList{1800ms, 1800ms}));
    }

    void mainThreadHeldUpLessThanASecondAfterTheLastCallStillRunsTheActionOnce()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        // Free again at 1.2 s: the first check finds the last call 0.9 s old; the second runs on time.
        scheduler.holdUp(900ms);
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1300ms});
    }

    void controllerReleasedBeforeItsCheckNeverRunsItsAction()
    {
        ManualScheduler scheduler;
        int runs = 0;
        auto controller = std::make_unique<DelayedActionController>(
            1.0, [&runs] { ++runs; }, &scheduler);
        controller->run();
        scheduler.advance(500ms);
        controller.reset();
        scheduler.advance(60s);
        QCOMPARE(runs, 0);
        QCOMPARE(scheduler.pendingTasks(), 0);
    }

    void checkFindingExactlyOneSecondSinceTheLastCallRunsTheAction()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        scheduler.advance(1000ms);
        QCOMPARE(ranAt, QList{1000ms});
    }

    void eachCallSchedulesACheckOfItsOwn()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        for (int call = 0; call < 5; ++call) {
            controller.run();
            scheduler.advance(100ms);
        }
        QCOMPARE(scheduler.pendingTasks(), 5);
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1400ms});
    }

    void intervalIsKeptButTheWaitIsAlwaysOneSecond_data()
    {
        QTest::addColumn<double>("interval");
        QTest::newRow("shorter") << 0.1;
        QTest::newRow("longer") << 4.0;
    }

    void intervalIsKeptButTheWaitIsAlwaysOneSecond()
    {
        QFETCH(double, interval);
        Timed timed(interval);
        auto& [scheduler, ranAt, controller] = timed;
        controller.run();
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1000ms});
        QCOMPARE(controller.interval, interval);
    }

    void lastTimeIsSetByEveryCallAndNeverCleared()
    {
        Timed timed;
        auto& [scheduler, ranAt, controller] = timed;
        QVERIFY(!controller.lastTime());
        const auto first = scheduler.now();
        controller.run();
        QCOMPARE(controller.lastTime(), std::optional(first));
        scheduler.advance(250ms);
        const auto second = scheduler.now();
        controller.run();
        QCOMPARE(controller.lastTime(), std::optional(second));
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1250ms});
        QCOMPARE(controller.lastTime(), std::optional(second));
    }

    void actionMayReplaceItselfWhileItRuns()
    {
        ManualScheduler scheduler;
        auto counter = std::make_shared<int>(0);
        DelayedActionController controller(1.0, nullptr, &scheduler);
        controller.action = [&controller, counter] {
            controller.action = nullptr;
            // The captured state must still be there after the slot was cleared.
            ++*counter;
        };
        controller.run();
        controller.run();
        scheduler.advance(60s);
        QCOMPARE(*counter, 1);
        QCOMPARE(counter.use_count(), 1);
    }

    void withoutASchedulerOfItsOwnTheControllerUsesThePlatformsScheduler()
    {
        ManualScheduler& scheduler = ManualScheduler::install();
        QList<std::chrono::milliseconds> ranAt;
        DelayedActionController controller(1.0, [&] { ranAt.append(scheduler.elapsed()); });
        controller.run();
        QCOMPARE(scheduler.pendingTasks(), 1);
        scheduler.advance(60s);
        QCOMPARE(ranAt, QList{1000ms});
        Platform::reset();
    }
};

QTEST_GUILESS_MAIN(DelayedActionControllerTest)
#include "DelayedActionControllerTest.moc"
