// Tests that the termination observer calls its current closure at termination, on the main thread, and
// that a cleared closure or a destroyed observer does nothing.
#include <VendelSDK/AppTerminationObserver.h>
#include <VendelSDK/QtApplicationServices.h>

#include "TestPlatform.h"

#include <QTest>
#include <QThread>
#include <QTimer>

#include <memory>
#include <type_traits>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

class AppTerminationObserverTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noArgumentConstructionIsUnavailable()
    {
        QVERIFY(!std::is_default_constructible_v<AppTerminationObserver>);
        QVERIFY((std::is_constructible_v<AppTerminationObserver, std::function<void()>>));
    }

    void closureRunsOnceAtTerminationOnTheMainThread()
    {
        TestPlatform platform;
        int runs = 0;
        QThread* ranOn = nullptr;
        AppTerminationObserver observer([&] {
            ++runs;
            ranOn = QThread::currentThread();
        });
        QCOMPARE(runs, 0);
        platform.services->terminateNow();
        QCOMPARE(runs, 1);
        QCOMPARE(ranOn, QCoreApplication::instance()->thread());
    }

    void terminationAnnouncedFromAnotherThreadRunsTheClosureOnTheMainThread()
    {
        TestPlatform platform;
        int runs = 0;
        QThread* ranOn = nullptr;
        AppTerminationObserver observer([&] {
            ++runs;
            ranOn = QThread::currentThread();
        });
        std::unique_ptr<QThread> worker(QThread::create([&] { platform.services->terminateNow(); }));
        worker->start();
        worker->wait();
        // The main thread was waiting, so the closure cannot have run on the worker.
        QCOMPARE(runs, 0);
        QTRY_COMPARE(runs, 1);
        QCOMPARE(ranOn, QCoreApplication::instance()->thread());
    }

    void absentClosureAtTerminationDoesNothing()
    {
        TestPlatform platform;
        int runs = 0;
        AppTerminationObserver observer([&] { ++runs; });
        observer.onRun = nullptr;
        platform.services->terminateNow();
        QCOMPARE(runs, 0);
        QVERIFY(!observer.onRun);
    }

    void closureAssignedAfterConstructionIsTheOneCalled()
    {
        TestPlatform platform;
        QStringList calls;
        AppTerminationObserver observer(nullptr);
        observer.onRun = [&] { calls.append(QStringLiteral("first")); };
        observer.onRun = [&] { calls.append(QStringLiteral("second")); };
        platform.services->terminateNow();
        QCOMPARE(calls, QStringList{QStringLiteral("second")});
    }

    void releasedObserverDoesNothingAtTermination()
    {
        TestPlatform platform;
        int runs = 0;
        auto observer = std::make_unique<AppTerminationObserver>([&] { ++runs; });
        observer.reset();
        platform.services->terminateNow();
        QCOMPARE(runs, 0);
    }

    void twoObserversEachCallTheirOwnClosure()
    {
        TestPlatform platform;
        int firstRuns = 0;
        int secondRuns = 0;
        AppTerminationObserver first([&] { ++firstRuns; });
        AppTerminationObserver second([&] { ++secondRuns; });
        platform.services->terminateNow();
        QCOMPARE(firstRuns, 1);
        QCOMPARE(secondRuns, 1);
    }

    void closureMayClearItselfWhileItRuns()
    {
        TestPlatform platform;
        auto counter = std::make_shared<int>(0);
        AppTerminationObserver observer(nullptr);
        observer.onRun = [&observer, counter] {
            observer.onRun = nullptr;
            // The captured state must still be there after the slot was cleared.
            ++*counter;
        };
        platform.services->terminateNow();
        QCOMPARE(*counter, 1);
        QCOMPARE(counter.use_count(), 1);
        platform.services->terminateNow();
        QCOMPARE(*counter, 1);
    }

    void closureRunsWhenTheEventLoopEndsThroughTheApplicationServices()
    {
        TestPlatform platform;
        Platform::setApplicationServices(std::make_unique<QtApplicationServices>());
        int runs = 0;
        bool loopWasRunning = false;
        AppTerminationObserver observer([&] {
            ++runs;
            loopWasRunning = QThread::currentThread()->loopLevel() > 0;
        });
        Platform::applicationServices().terminate();
        QTimer safetyNet;
        safetyNet.setSingleShot(true);
        connect(&safetyNet, &QTimer::timeout, [] { QCoreApplication::exit(99); });
        safetyNet.start(10000);
        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(runs, 1);
        QVERIFY(loopWasRunning);
    }
};

QTEST_GUILESS_MAIN(AppTerminationObserverTest)
#include "AppTerminationObserverTest.moc"
