// Tests how the served host starts a plugin and learns of its end: statuses, signals, failed starts, and a
// plugin that outlives the object that watched it.
#include "PluginProcess.h"
#include "HostError.h"
#include "HostErrorText.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace VendelHost;

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);

// The process's state letter from /proc, or 0 when it is gone.
char stateOf(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray line = file.readAll();
    const qsizetype end = line.lastIndexOf(')');
    return end >= 0 && end + 2 < line.size() ? line.at(end + 2) : 0;
}

} // namespace

class PluginProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        qputenv("VENDEL_STUB_RECORD", QFile::encodeName(m_directory->filePath(QStringLiteral("record"))));
    }

    void cleanup()
    {
        for (const char* name :
             {"VENDEL_STUB_RECORD", "VENDEL_STUB_EXIT", "VENDEL_STUB_HANG", "VENDEL_STUB_CRASH"}) {
            qunsetenv(name);
        }
        m_directory.reset();
    }

    void theUrlIsTheOneArgumentAndNoShellReadsIt()
    {
        const QString url = QStringLiteral("vendelplugin://run/a;touch%20x $(touch y) `touch z`");
        PluginProcess process(stub, url);
        QSignalSpy finished(&process, &PluginProcess::finished);
        QVERIFY(finished.wait(30000));
        QCOMPARE(finished.constFirst(), (QVariantList{0, 0}));
        QFile record(m_directory->filePath(QStringLiteral("record")));
        QVERIFY(record.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(record.readAll()), url + u'\n');
        for (const char* name : {"x", "y", "z"}) {
            QVERIFY(!QFile::exists(QString::fromLatin1(name)));
        }
    }

    void theExitStatusIsReported()
    {
        qputenv("VENDEL_STUB_EXIT", "5");
        PluginProcess process(stub, QStringLiteral("vendelplugin://configure"));
        QSignalSpy finished(&process, &PluginProcess::finished);
        QVERIFY(finished.wait(30000));
        QCOMPARE(finished.constFirst(), (QVariantList{5, 0}));
        QVERIFY(!process.isRunning());
    }

    void theSignalThatEndedItIsReported()
    {
        qputenv("VENDEL_STUB_CRASH", "1");
        PluginProcess process(stub, QStringLiteral("vendelplugin://configure"));
        QSignalSpy finished(&process, &PluginProcess::finished);
        QVERIFY(finished.wait(30000));
        QCOMPARE(finished.constFirst(), (QVariantList{-1, SIGABRT}));
    }

    void killEndsItAtOnce()
    {
        qputenv("VENDEL_STUB_HANG", "1");
        PluginProcess process(stub, QStringLiteral("vendelplugin://configure"));
        QSignalSpy finished(&process, &PluginProcess::finished);
        QVERIFY(process.isRunning());
        process.kill();
        QVERIFY(finished.wait(30000));
        QCOMPARE(finished.constFirst(), (QVariantList{-1, SIGKILL}));
        QCOMPARE(stateOf(process.processId()), 0);
    }

    void itRunsInASessionOfItsOwn()
    {
        qputenv("VENDEL_STUB_HANG", "1");
        PluginProcess process(stub, QStringLiteral("vendelplugin://configure"));
        QSignalSpy finished(&process, &PluginProcess::finished);
        QCOMPARE(::getsid(static_cast<pid_t>(process.processId())), static_cast<pid_t>(process.processId()));
        process.kill();
        QVERIFY(finished.wait(30000));
    }

    void aPluginOutlivesTheObjectThatWatchedIt()
    {
        qputenv("VENDEL_STUB_HANG", "1");
        qint64 pid = 0;
        {
            PluginProcess process(stub, QStringLiteral("vendelplugin://edit/x"));
            pid = process.processId();
        }
        QVERIFY(pid > 0);
        const char state = stateOf(pid);
        QVERIFY2(state != 0 && state != 'Z', QByteArray(1, state).constData());
        ::kill(static_cast<pid_t>(pid), SIGKILL);
        QCOMPARE(::waitpid(static_cast<pid_t>(pid), nullptr, 0), static_cast<pid_t>(pid));
    }

    void aPluginThatCannotStartIsAnError_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("expected");
        QTest::newRow("missing") << QByteArray() << QStringLiteral("No such file or directory");
        QTest::newRow("no executable format") << QByteArray("\x7f"
                                                            "ELF garbage")
                                              << QStringLiteral("Exec format error");
    }

    void aPluginThatCannotStartIsAnError()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, expected);
        const QString path = m_directory->filePath(QStringLiteral("plugin"));
        if (!contents.isEmpty()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(contents);
            file.close();
            QVERIFY(file.setPermissions(file.permissions() | QFile::ExeOwner));
        }
        const QString message =
            errorOf([&] { PluginProcess process(path, QStringLiteral("vendelplugin://configure")); });
        QCOMPARE(message, QStringLiteral("Cannot start %1: %2.").arg(path, expected));
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_GUILESS_MAIN(PluginProcessTest)
#include "PluginProcessTest.moc"
