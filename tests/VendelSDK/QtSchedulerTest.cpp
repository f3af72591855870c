// Tests the event loop's scheduler: tasks run from the main thread's loop in due order, never synchronously,
// and die with their context.
#include <VendelSDK/QtScheduler.h>

#include <VendelSDK/Platform.h>

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <memory>

using namespace VendelSDK;
using namespace std::chrono_literals;

class QtSchedulerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tasksRunLaterFromTheMainThreadsEventLoopInDueOrder()
    {
        QtScheduler scheduler;
        QStringList order;
        QThread* ranOn = nullptr;
        scheduler.schedule(30ms, this, [&] { order.append(QStringLiteral("later")); });
        scheduler.schedule(0ms, this, [&] {
            order.append(QStringLiteral("sooner"));
            ranOn = QThread::currentThread();
        });
        QVERIFY(order.isEmpty());
        QTRY_COMPARE(order, (QStringList{QStringLiteral("sooner"), QStringLiteral("later")}));
        QCOMPARE(ranOn, QCoreApplication::instance()->thread());
    }

    void taskWaitsAtLeastItsDelayOnTheSteadyClock()
    {
        QtScheduler scheduler;
        const auto scheduledAt = scheduler.now();
        std::optional<Scheduler::TimePoint> ranAt;
        scheduler.schedule(20ms, this, [&] { ranAt = scheduler.now(); });
        QTRY_VERIFY(ranAt.has_value());
        QVERIFY(*ranAt - scheduledAt >= 20ms);
    }

    void taskOfADestroyedContextNeverRuns()
    {
        QtScheduler scheduler;
        QStringList order;
        auto context = std::make_unique<QObject>();
        scheduler.schedule(0ms, context.get(), [&] { order.append(QStringLiteral("dropped")); });
        scheduler.schedule(10ms, this, [&] { order.append(QStringLiteral("kept")); });
        context.reset();
        QTRY_COMPARE(order, QStringList{QStringLiteral("kept")});
    }

    void nowReadsTheSteadyClock()
    {
        const QtScheduler scheduler;
        const auto before = Scheduler::Clock::now();
        const auto reading = scheduler.now();
        QVERIFY(reading >= before);
        QVERIFY(reading <= Scheduler::Clock::now());
    }

    void platformSchedulesWithItUnlessATestReplacesIt()
    {
        Platform::reset();
        QVERIFY(dynamic_cast<QtScheduler*>(&Platform::scheduler()) != nullptr);
    }
};

QTEST_GUILESS_MAIN(QtSchedulerTest)
#include "QtSchedulerTest.moc"
