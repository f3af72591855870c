// Tests the one-second trailing-edge coalescing of requests, on the main thread, with real and fake clocks.
#include <VendelSDK/DelayedActionController.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <memory>

using namespace VendelSDK;
using namespace std::chrono_literals;

namespace {

// Emits each time the action runs, so that the tests can wait on a signal.
class ActionProbe : public QObject
{
    Q_OBJECT

public:
    explicit ActionProbe(const QElapsedTimer& clock) : m_clock(clock) {}

    std::function<void()> action()
    {
        return [this] {
            ranAtMs.append(m_clock.elapsed());
            ranOn = QThread::currentThread();
            Q_EMIT ran();
        };
    }

    QList<qint64> ranAtMs;
    QThread* ranOn = nullptr;

Q_SIGNALS:
    void ran();

private:
    const QElapsedTimer& m_clock;
};

// A clock that stands still until the test moves it.
struct ManualClock
{
    DelayedActionController::TimePoint now = DelayedActionController::Clock::now();

    std::function<DelayedActionController::TimePoint()> reader()
    {
        return [this] { return now; };
    }
};

} // namespace

class DelayedActionControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneCallRunsTheActionOnceAboutASecondLaterOnTheMainThread()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        DelayedActionController controller(1.0, probe.action());
        clock.start();
        controller.run();
        QCOMPARE(ran.count(), 0);
        QVERIFY(ran.wait(5000));
        QVERIFY2(probe.ranAtMs.first() >= 900 && probe.ranAtMs.first() <= 3000,
                 qPrintable(QString::number(probe.ranAtMs.first())));
        QCOMPARE(probe.ranOn, QCoreApplication::instance()->thread());
        QVERIFY(!ran.wait(1200));
        QCOMPARE(ran.count(), 1);
    }

    void callsAt0And300And600MsRunTheActionOnceAtAbout1600Ms()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        DelayedActionController controller(1.0, probe.action());
        qint64 lastCallMs = -1;
        clock.start();
        controller.run();
        QTimer::singleShot(300, Qt::PreciseTimer, this, [&] { controller.run(); });
        QTimer::singleShot(600, Qt::PreciseTimer, this, [&] {
            lastCallMs = clock.elapsed();
            controller.run();
        });
        QVERIFY(ran.wait(5000));
        // The checks of the first two calls came first and found a newer call.
        QVERIFY2(probe.ranAtMs.first() >= 1500 && probe.ranAtMs.first() <= 3500,
                 qPrintable(QString::number(probe.ranAtMs.first())));
        QVERIFY(probe.ranAtMs.first() - lastCallMs >= 1000);
        QVERIFY(!ran.wait(1200));
        QCOMPARE(ran.count(), 1);
    }

    void twoCallsInImmediateSuccessionCanBothFindASecondElapsedAndRunTheActionTwice()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        ManualClock manual;
        DelayedActionController controller(1.0, probe.action(), manual.reader());
        clock.start();
        controller.run();
        controller.run();
        // By the time the checks run, both calls are a full second old: nothing de-duplicates them.
        manual.now += 1s;
        QTRY_COMPARE_WITH_TIMEOUT(ran.count(), 2, 5000);
    }

    void mainThreadHeldUpOverASecondLetsAnEarlierCheckRunTheActionToo()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        DelayedActionController controller(1.0, probe.action());
        clock.start();
        controller.run();
        QTimer::singleShot(300, Qt::PreciseTimer, this, [&] { controller.run(); });
        // Holds the main thread past both checks' due times (1.0 s and 1.3 s).
        QTimer::singleShot(400, Qt::PreciseTimer, this, [&] {
            while (clock.elapsed() < 1800) {
            }
        });
        QTRY_COMPARE_WITH_TIMEOUT(ran.count(), 2, 5000);
        QVERIFY(probe.ranAtMs.first() >= 1800);
    }

    void checkFindingLessThanASecondSinceTheLastCallDoesNothing()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        ManualClock manual;
        DelayedActionController controller(1.0, probe.action(), manual.reader());
        controller.run();
        manual.now += 999ms;
        QVERIFY(!ran.wait(2000));
        QCOMPARE(ran.count(), 0);
    }

    void checkFindingExactlyOneSecondSinceTheLastCallRunsTheAction()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        ManualClock manual;
        DelayedActionController controller(1.0, probe.action(), manual.reader());
        controller.run();
        manual.now += 1000ms;
        QVERIFY(ran.wait(5000));
        QCOMPARE(ran.count(), 1);
    }

    void controllerReleasedBeforeItsCheckNeverRunsItsAction()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        auto controller = std::make_unique<DelayedActionController>(1.0, probe.action());
        clock.start();
        controller->run();
        QTimer::singleShot(500, this, [&] { controller.reset(); });
        QVERIFY(!ran.wait(2500));
        QVERIFY(!controller);
        QCOMPARE(ran.count(), 0);
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
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        DelayedActionController controller(interval, probe.action());
        clock.start();
        controller.run();
        QVERIFY(ran.wait(6000));
        QVERIFY2(probe.ranAtMs.first() >= 900 && probe.ranAtMs.first() <= 3000,
                 qPrintable(QString::number(probe.ranAtMs.first())));
        QCOMPARE(controller.interval, interval);
    }

    void lastTimeIsSetByEveryCallAndNeverCleared()
    {
        QElapsedTimer clock;
        ActionProbe probe(clock);
        QSignalSpy ran(&probe, &ActionProbe::ran);
        ManualClock manual;
        DelayedActionController controller(1.0, probe.action(), manual.reader());
        QVERIFY(!controller.lastTime());
        const auto first = manual.now;
        controller.run();
        QCOMPARE(controller.lastTime(), std::optional(first));
        manual.now += 250ms;
        const auto second = manual.now;
        controller.run();
        QCOMPARE(controller.lastTime(), std::optional(second));
        manual.now += 5s;
        QTRY_COMPARE_WITH_TIMEOUT(ran.count(), 2, 5000);
        QCOMPARE(controller.lastTime(), std::optional(second));
    }

    void actionMayReplaceItselfWhileItRuns()
    {
        ManualClock manual;
        auto counter = std::make_shared<int>(0);
        DelayedActionController controller(1.0, nullptr, manual.reader());
        controller.action = [&controller, counter] {
            controller.action = nullptr;
            // The captured state must still be there after the slot was cleared.
            ++*counter;
        };
        controller.run();
        controller.run();
        manual.now += 1s;
        QTRY_COMPARE_WITH_TIMEOUT(*counter, 1, 5000);
        QCOMPARE(counter.use_count(), 1);
    }
};

QTEST_GUILESS_MAIN(DelayedActionControllerTest)
#include "DelayedActionControllerTest.moc"
