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

// When the action ran, in milliseconds of virtual time.
struct Runs
{
    explicit Runs(const ManualScheduler& scheduler) : m_scheduler(scheduler) {}

    std::function<void()> action()
    {
        return [this] { at.append(m_scheduler.elapsed()); };
    }

    QList<std::chrono::milliseconds> at;

private:
    const ManualScheduler& m_scheduler;
};

} // namespace

class DelayedActionControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneCallRunsTheActionOnceAtOneSecond()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        controller.run();
        scheduler.advance(999ms);
        QVERIFY(runs.at.isEmpty());
        scheduler.advance(1ms);
        QCOMPARE(runs.at, QList{1000ms});
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1000ms});
    }

    void callsAt0And300And600MsRunTheActionOnceAt1600Ms()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        // The checks at 1.0 s and 1.3 s find less than a second since the last call.
        scheduler.advance(999ms);
        QVERIFY(runs.at.isEmpty());
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1600ms});
    }

    void twoCallsAtTheSameInstantBothFindASecondElapsedAndRunTheActionTwice()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        controller.run();
        controller.run();
        scheduler.advance(60s);
        QCOMPARE(runs.at, (QList{1000ms, 1000ms}));
    }

    void mainThreadHeldUpOverASecondLetsAnEarlierCheckRunTheActionToo()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        // Busy from 0.4 s to 1.8 s: the checks due at 1.0 s and 1.3 s both run late, at 1.8 s, when the
        // last call is a full second old.
        scheduler.advance(100ms);
        scheduler.holdUp(1400ms);
        QVERIFY(runs.at.isEmpty());
        scheduler.advance(60s);
        QCOMPARE(runs.at, (QList{1800ms, 1800ms}));
    }

    void mainThreadHeldUpLessThanASecondAfterTheLastCallStillRunsTheActionOnce()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        controller.run();
        scheduler.advance(300ms);
        controller.run();
        // Free again at 1.2 s: the first check finds the last call 0.9 s old; the second runs on time.
        scheduler.holdUp(900ms);
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1300ms});
    }

    void controllerReleasedBeforeItsCheckNeverRunsItsAction()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        auto controller = std::make_unique<DelayedActionController>(1.0, runs.action(), &scheduler);
        controller->run();
        scheduler.advance(500ms);
        controller.reset();
        scheduler.advance(60s);
        QVERIFY(runs.at.isEmpty());
        QCOMPARE(scheduler.pendingTasks(), 0);
    }

    void checkFindingExactlyOneSecondSinceTheLastCallRunsTheAction()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        controller.run();
        scheduler.advance(1000ms);
        QCOMPARE(runs.at, QList{1000ms});
    }

    void eachCallSchedulesACheckOfItsOwn()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        for (int call = 0; call < 5; ++call) {
            controller.run();
            scheduler.advance(100ms);
        }
        QCOMPARE(scheduler.pendingTasks(), 5);
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1400ms});
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
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(interval, runs.action(), &scheduler);
        controller.run();
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1000ms});
        QCOMPARE(controller.interval, interval);
    }

    void lastTimeIsSetByEveryCallAndNeverCleared()
    {
        ManualScheduler scheduler;
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action(), &scheduler);
        QVERIFY(!controller.lastTime());
        const auto first = scheduler.now();
        controller.run();
        QCOMPARE(controller.lastTime(), std::optional(first));
        scheduler.advance(250ms);
        const auto second = scheduler.now();
        controller.run();
        QCOMPARE(controller.lastTime(), std::optional(second));
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1250ms});
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
        Runs runs(scheduler);
        DelayedActionController controller(1.0, runs.action());
        controller.run();
        QCOMPARE(scheduler.pendingTasks(), 1);
        scheduler.advance(60s);
        QCOMPARE(runs.at, QList{1000ms});
        Platform::reset();
    }
};

QTEST_GUILESS_MAIN(DelayedActionControllerTest)
#include "DelayedActionControllerTest.moc"
