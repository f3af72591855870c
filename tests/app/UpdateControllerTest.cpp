// Tests the shared update controller: one instance, made once, with an updater that can be asked to check.
#include "UpdateController.h"

#include <QTest>
#include <QThread>

using namespace MusicPlugin;

class UpdateControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sharedIsOneInstanceWithOneUpdater()
    {
        UpdateController& first = UpdateController::shared();
        UpdateController& second = UpdateController::shared();
        QCOMPARE(&first, &second);
        QCOMPARE(&first.updater(), &second.updater());
    }

    void concurrentFirstUsesSeeTheSameInstance()
    {
        UpdateController* seen[2] = {nullptr, nullptr};
        QThread* threads[2];
        for (int i = 0; i < 2; ++i) {
            threads[i] = QThread::create([&seen, i] { seen[i] = &UpdateController::shared(); });
            threads[i]->start();
        }
        for (QThread* thread : threads) {
            thread->wait();
            delete thread;
        }
        QVERIFY(seen[0] != nullptr);
        QCOMPARE(seen[0], seen[1]);
        QCOMPARE(seen[0], &UpdateController::shared());
    }
};

QTEST_GUILESS_MAIN(UpdateControllerTest)
#include "UpdateControllerTest.moc"
