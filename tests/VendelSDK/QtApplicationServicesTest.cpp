// Tests termination before and during the event loop, the will-terminate hook and main-thread work.
#include <VendelSDK/QtApplicationServices.h>

#include <VendelSDK/TerminationSignals.h>

#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <csignal>
#include <thread>

using namespace VendelSDK;

class QtApplicationServicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void terminateBeforeTheLoopStartsEndsTheLoop()
    {
        QtApplicationServices services;
        QSignalSpy willTerminate(&services, &ApplicationServices::willTerminate);
        services.terminate();
        QCOMPARE(willTerminate.count(), 0);
        // A safety net: if termination were lost, this ends the loop with another code.
        QTimer::singleShot(10000, [] { QCoreApplication::exit(99); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(willTerminate.count(), 1);
    }

    void terminateDuringTheLoopRunsTheHookOnceOnTheMainThread()
    {
        QtApplicationServices services;
        QThread* hookThread = nullptr;
        int hooks = 0;
        connect(&services, &ApplicationServices::willTerminate, this, [&] {
            ++hooks;
            hookThread = QThread::currentThread();
        });
        QTimer::singleShot(0, [&] {
            services.terminate();
            services.terminate();
        });
        QTimer::singleShot(10000, [] { QCoreApplication::exit(99); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(hooks, 1);
        QCOMPARE(hookThread, QCoreApplication::instance()->thread());
    }

    void finishLaunchingIsAnnouncedAfterQueuedLaunchWork()
    {
        QtApplicationServices services;
        QStringList order;
        connect(&services, &ApplicationServices::didFinishLaunching, this,
                [&] { order.append(QStringLiteral("finished")); });
        services.postToMainThread([&] { order.append(QStringLiteral("launch URL")); });
        services.finishLaunchingWhenLoopStarts();
        QCOMPARE(order, QStringList());
        QTRY_COMPARE(order, (QStringList{QStringLiteral("launch URL"), QStringLiteral("finished")}));
    }

    void workPostedFromAnotherThreadRunsOnTheMainThread()
    {
        QtApplicationServices services;
        QThread* ranOn = nullptr;
        QThread* worker =
            QThread::create([&] { services.postToMainThread([&] { ranOn = QThread::currentThread(); }); });
        worker->start();
        worker->wait();
        delete worker;
        QTRY_COMPARE(ranOn, QCoreApplication::instance()->thread());
    }

    void terminationCarriedOutInALoopNestedBeforeTheEventLoopEndsTheApplication()
    {
        QtApplicationServices services;
        services.terminate();
        // A modal alert's loop, shown while the launch URL is dispatched, runs the queued termination.
        QEventLoop alertLoop;
        QTimer::singleShot(5000, &alertLoop, [&] { alertLoop.exit(1); });
        QCOMPARE(alertLoop.exec(), 0);
        // Were the event loop entered now, nothing would end it but this timer.
        QTimer::singleShot(5000, QCoreApplication::instance(), [] { QCoreApplication::exit(7); });
        QCOMPARE(services.exec(), 0);
    }

    void signalEndsTheLoopWithTheHookOnTheMainThreadAndIsRemembered_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << int(SIGTERM);
        QTest::newRow("SIGINT") << int(SIGINT);
        QTest::newRow("SIGHUP") << int(SIGHUP);
    }

    void signalEndsTheLoopWithTheHookOnTheMainThreadAndIsRemembered()
    {
        QFETCH(int, signal);
        QtApplicationServices services;
        // The process's ending stands in for the real one, which would end this test too.
        int endedBy = 0;
        services.terminateOnSignals([&endedBy](int number) { endedBy = number; });
        QCOMPARE(services.terminatingSignal(), 0);
        QThread* hookThread = nullptr;
        connect(&services, &ApplicationServices::willTerminate, this,
                [&hookThread] { hookThread = QThread::currentThread(); });
        // From another thread, as a signal may be delivered to any of the process's threads.
        std::thread([signal] { std::raise(signal); }).join();
        QTimer::singleShot(10000, [] { QCoreApplication::exit(99); });
        QCOMPARE(services.exec(), 0);
        QCOMPARE(hookThread, QThread::currentThread());
        QCOMPARE(endedBy, signal);
        QCOMPARE(services.terminatingSignal(), signal);
        QVERIFY(services.terminationRequested());
    }

    void signalNoticedOutsideTheEventLoopRunsTheHooksThenEndsBeforeTheFlowGoesOn()
    {
        QtApplicationServices services;
        QStringList order;
        services.terminateOnSignals(
            [&order](int number) { order.append(QStringLiteral("end %1").arg(number)); });
        connect(&services, &ApplicationServices::willTerminate, this,
                [&order] { order.append(QStringLiteral("hook")); });
        std::raise(SIGTERM);
        QCOMPARE(services.terminatingSignal(), int(SIGTERM));
        // What a wait for the bus does when the signal's pipe wakes it: the signal is carried out right
        // there.
        TerminationSignals::deliverPending();
        order.append(QStringLiteral("after the wait"));
        QCOMPARE(order, (QStringList{QStringLiteral("hook"), QStringLiteral("end %1").arg(SIGTERM),
                                     QStringLiteral("after the wait")}));
    }

    void signalWhileTheHooksRunLetsThemFinishAndIsRemembered()
    {
        QtApplicationServices services;
        int endedBy = 0;
        services.terminateOnSignals([&endedBy](int number) { endedBy = number; });
        bool hookFinished = false;
        connect(&services, &ApplicationServices::willTerminate, this, [&hookFinished] {
            // A write at termination waits for the host, and the signal comes meanwhile.
            std::raise(SIGHUP);
            TerminationSignals::deliverPending();
            hookFinished = true;
        });
        services.terminate();
        QTimer::singleShot(10000, [] { QCoreApplication::exit(99); });
        QCOMPARE(services.exec(), 0);
        QVERIFY(hookFinished);
        QCOMPARE(endedBy, 0);
        QCOMPARE(services.terminatingSignal(), int(SIGHUP));
    }

    void withoutSignalHandlingNoSignalIsReported()
    {
        QtApplicationServices services;
        services.terminate();
        QCOMPARE(services.exec(), 0);
        QCOMPARE(services.terminatingSignal(), 0);
    }

    void aCoreApplicationListsNoWindows()
    {
        QtApplicationServices services;
        QVERIFY(services.windows().isEmpty());
    }

    void terminationIsReportedAsRequestedFromTheFirstCall()
    {
        QtApplicationServices services;
        QVERIFY(!services.terminationRequested());
        services.terminate();
        QVERIFY(services.terminationRequested());
    }
};

QTEST_GUILESS_MAIN(QtApplicationServicesTest)
#include "QtApplicationServicesTest.moc"
