// Tests the virtual clock and scheduler: due order, same-instant order, late tasks, dropped contexts.
#include <VendelSDK/Testing/ManualScheduler.h>

#include <VendelSDK/Platform.h>

#include <QTest>

#include <memory>

using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

namespace {

// What ran, and when by the scheduler's clock, in milliseconds since it was made.
struct Trace
{
    explicit Trace(ManualScheduler& scheduler) : m_scheduler(scheduler) {}

    std::function<void()> step(const QString& name)
    {
        return [this, name] {
            ran.append(QStringLiteral("%1@%2").arg(name).arg(m_scheduler.elapsed().count()));
        };
    }

    QStringList ran;

private:
    ManualScheduler& m_scheduler;
};

} // namespace

class ManualSchedulerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clockStandsStillUntilTheTestMovesIt()
    {
        ManualScheduler scheduler;
        const auto start = scheduler.now();
        QCOMPARE(scheduler.now(), start);
        QCOMPARE(scheduler.elapsed(), 0ms);
        scheduler.advance(250ms);
        QCOMPARE(scheduler.now() - start, 250ms);
        QCOMPARE(scheduler.elapsed(), 250ms);
    }

    void advanceRunsDueTasksInOrderOfDueTimeEachAtItsDueTime()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        scheduler.schedule(300ms, this, trace.step(QStringLiteral("c")));
        scheduler.schedule(100ms, this, trace.step(QStringLiteral("a")));
        scheduler.schedule(200ms, this, trace.step(QStringLiteral("b")));
        scheduler.advance(1000ms);
        QCOMPARE(trace.ran,
                 (QStringList{QStringLiteral("a@100"), QStringLiteral("b@200"), QStringLiteral("c@300")}));
        QCOMPARE(scheduler.elapsed(), 1000ms);
    }

    void tasksDueAtTheSameInstantRunInTheOrderTheyWereScheduled()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        scheduler.schedule(500ms, this, trace.step(QStringLiteral("first")));
        scheduler.advance(200ms);
        scheduler.schedule(300ms, this, trace.step(QStringLiteral("second")));
        scheduler.schedule(300ms, this, trace.step(QStringLiteral("third")));
        scheduler.advance(300ms);
        QCOMPARE(trace.ran, (QStringList{QStringLiteral("first@500"), QStringLiteral("second@500"),
                                         QStringLiteral("third@500")}));
    }

    void taskIsNotRunBeforeItsDueTime()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        scheduler.schedule(1000ms, this, trace.step(QStringLiteral("a")));
        scheduler.advance(999ms);
        QVERIFY(trace.ran.isEmpty());
        QCOMPARE(scheduler.pendingTasks(), 1);
        QCOMPARE(scheduler.nextDue(), std::optional(1ms));
        scheduler.advance(1ms);
        QCOMPARE(trace.ran, QStringList{QStringLiteral("a@1000")});
        QCOMPARE(scheduler.pendingTasks(), 0);
        QCOMPARE(scheduler.nextDue(), std::nullopt);
    }

    void taskScheduledByATaskRunsInTheSameAdvanceWhenItFallsDueThere()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        scheduler.schedule(100ms, this, [&] {
            trace.step(QStringLiteral("outer"))();
            scheduler.schedule(100ms, this, trace.step(QStringLiteral("inner")));
            scheduler.schedule(900ms, this, trace.step(QStringLiteral("later")));
        });
        scheduler.advance(500ms);
        QCOMPARE(trace.ran, (QStringList{QStringLiteral("outer@100"), QStringLiteral("inner@200")}));
        scheduler.advance(500ms);
        QCOMPARE(trace.ran.last(), QStringLiteral("later@1000"));
    }

    void taskWhoseContextIsDestroyedIsDroppedWithoutRunning()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        auto context = std::make_unique<QObject>();
        scheduler.schedule(100ms, context.get(), trace.step(QStringLiteral("dropped")));
        scheduler.schedule(100ms, nullptr, trace.step(QStringLiteral("free")));
        QCOMPARE(scheduler.pendingTasks(), 2);
        context.reset();
        QCOMPARE(scheduler.pendingTasks(), 1);
        scheduler.advance(1000ms);
        QCOMPARE(trace.ran, QStringList{QStringLiteral("free@100")});
    }

    void heldUpMainThreadRunsOverdueTasksLateAtTheNextAdvance()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        scheduler.schedule(100ms, this, trace.step(QStringLiteral("a")));
        scheduler.schedule(300ms, this, trace.step(QStringLiteral("b")));
        scheduler.holdUp(500ms);
        QVERIFY(trace.ran.isEmpty());
        QCOMPARE(scheduler.nextDue(), std::optional(0ms));
        scheduler.advance(0ms);
        // The clock never goes back: both see the moment the main thread was free again.
        QCOMPARE(trace.ran, (QStringList{QStringLiteral("a@500"), QStringLiteral("b@500")}));
    }

    void runAllRunsEveryPendingTaskAndStopsAtTheLimit()
    {
        ManualScheduler scheduler;
        Trace trace(scheduler);
        scheduler.schedule(700ms, this, trace.step(QStringLiteral("a")));
        scheduler.schedule(2000ms, this, trace.step(QStringLiteral("b")));
        QCOMPARE(scheduler.runAll(), 2);
        QCOMPARE(trace.ran, (QStringList{QStringLiteral("a@700"), QStringLiteral("b@2000")}));

        // Work that keeps rescheduling itself stops at the limit instead of hanging the test.
        std::function<void()> forever = [&] { scheduler.schedule(1ms, this, forever); };
        scheduler.schedule(1ms, this, forever);
        QCOMPARE(scheduler.runAll(5), 5);
        QCOMPARE(scheduler.pendingTasks(), 1);
    }

    void installMakesItThePlatformsScheduler()
    {
        ManualScheduler& installed = ManualScheduler::install();
        QCOMPARE(&Platform::scheduler(), static_cast<Scheduler*>(&installed));
        Platform::reset();
        QVERIFY(dynamic_cast<ManualScheduler*>(&Platform::scheduler()) == nullptr);
    }
};

QTEST_GUILESS_MAIN(ManualSchedulerTest)
#include "ManualSchedulerTest.moc"
