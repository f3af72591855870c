// Tests the host's writer thread: jobs in order, outcomes on the caller's thread, and any failure reported
// while the thread goes on serving.
#include "WriterThread.h"
#include "HostError.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <stdexcept>

using namespace VendelHost;

namespace {

// What a failure says, whatever its type.
QString describe(const std::exception_ptr& failure)
{
    if (!failure) {
        return QStringLiteral("nothing");
    }
    try {
        std::rethrow_exception(failure);
    } catch (const HostError& error) {
        return QStringLiteral("HostError: ") + error.message();
    } catch (const std::exception& error) {
        return QStringLiteral("exception: ") + QString::fromLocal8Bit(error.what());
    } catch (...) {
        return QStringLiteral("unknown");
    }
}

} // namespace

class WriterThreadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jobsRunInOrderAndAnswerOnTheCallersThread()
    {
        QTemporaryDir folder;
        WriterThread writer(folder.path());
        QStringList answers;
        QList<QThread*> answeredOn;
        QList<QThread*> ranOn;
        for (int index = 0; index < 5; ++index) {
            writer.post(
                [index, &ranOn](HostStorage& storage) -> QVariantList {
                    ranOn.append(QThread::currentThread());
                    return {index, storage.actions().size()};
                },
                this,
                [&](const WriterThread::Outcome& outcome) {
                    answeredOn.append(QThread::currentThread());
                    answers.append(QStringLiteral("%1/%2")
                                       .arg(outcome.values.value(0).toInt())
                                       .arg(outcome.values.value(1).toInt()));
                });
        }
        QTRY_COMPARE(answers.size(), 5);
        QCOMPARE(answers, (QStringList{QStringLiteral("0/0"), QStringLiteral("1/0"), QStringLiteral("2/0"),
                                       QStringLiteral("3/0"), QStringLiteral("4/0")}));
        QCOMPARE(answeredOn, QList<QThread*>(5, QThread::currentThread()));
        QVERIFY(!ranOn.contains(QThread::currentThread()));
    }

    void anyFailureIsReportedAndTheNextJobStillRuns_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("expected");
        QTest::newRow("host error") << 0 << QStringLiteral("HostError: refused");
        QTest::newRow("standard exception") << 1 << QStringLiteral("exception: out of range");
        QTest::newRow("allocation") << 2 << QStringLiteral("exception: std::bad_alloc");
        QTest::newRow("anything else") << 3 << QStringLiteral("unknown");
    }

    void anyFailureIsReportedAndTheNextJobStillRuns()
    {
        QFETCH(int, kind);
        QFETCH(QString, expected);
        QTemporaryDir folder;
        WriterThread writer(folder.path());
        QStringList outcomes;
        const auto record = [&](const WriterThread::Outcome& outcome) {
            outcomes.append(outcome.failure ? describe(outcome.failure) : outcome.values.value(0).toString());
        };
        writer.post(
            [kind](HostStorage&) -> QVariantList {
                switch (kind) {
                case 0:
                    throw HostError(QStringLiteral("refused"));
                case 1:
                    throw std::out_of_range("out of range");
                case 2:
                    throw std::bad_alloc();
                default:
                    throw 42;
                }
            },
            this, record);
        writer.post(
            [](HostStorage& storage) -> QVariantList { return {storage.createAction(QStringLiteral("p"))}; },
            this, record);
        QTRY_COMPARE(outcomes.size(), 2);
        QCOMPARE(outcomes.at(0), expected);
        QCOMPARE(outcomes.at(1).size(), 36);
        QCOMPARE(HostStorage(folder.path()).actions().size(), 1);
    }

    void storageThatCannotOpenFailsEachJobAlone()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("file"));
        QVERIFY(QFile(file).open(QIODevice::WriteOnly));
        WriterThread writer(file);
        QStringList outcomes;
        for (int index = 0; index < 2; ++index) {
            writer.post(
                [](HostStorage&) -> QVariantList { return {1}; }, this,
                [&](const WriterThread::Outcome& outcome) { outcomes.append(describe(outcome.failure)); });
        }
        QTRY_COMPARE(outcomes.size(), 2);
        for (const QString& outcome : outcomes) {
            QVERIFY2(outcome.startsWith(QStringLiteral("HostError: Cannot use the data folder")),
                     qPrintable(outcome));
        }
    }
};

QTEST_GUILESS_MAIN(WriterThreadTest)
#include "WriterThreadTest.moc"
