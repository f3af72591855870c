// Tests launching plugins: the launch URLs, waiting for a run, and every way a run can fail.
#include "PluginLauncher.h"
#include "HostError.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace VendelHost;
using namespace std::chrono_literals;

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);

QString errorOf(const std::function<void()>& action)
{
    try {
        action();
        return {};
    } catch (const HostError& error) {
        return error.message();
    }
}

} // namespace

class PluginLauncherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        qputenv("VENDEL_STUB_RECORD", m_directory->filePath(QStringLiteral("record")).toUtf8());
        qunsetenv("VENDEL_STUB_EXIT");
        qunsetenv("VENDEL_STUB_HANG");
        qunsetenv("VENDEL_STUB_CRASH");
    }

    void cleanup() { m_directory.reset(); }

    void launchUrlsCarryThePercentEncodedIdentifier()
    {
        QCOMPARE(PluginLauncher::runUrl(QStringLiteral("4f0c-9a")),
                 QStringLiteral("vendelplugin://run/4f0c-9a"));
        QCOMPARE(PluginLauncher::editUrl(QStringLiteral("Road Trip/2\"")),
                 QStringLiteral("vendelplugin://edit/Road%20Trip%2F2%22"));
        QCOMPARE(PluginLauncher::configureUrl(), QStringLiteral("vendelplugin://configure"));
    }

    void aRunIsWaitedFor()
    {
        PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 30s);
        QCOMPARE(record(), QByteArray("vendelplugin://run/a\n"));
    }

    void aFailedRunIsReported()
    {
        qputenv("VENDEL_STUB_EXIT", "3");
        const QString message =
            errorOf([] { PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("exit status 3")), qPrintable(message));
    }

    void aCrashIsReported()
    {
        qputenv("VENDEL_STUB_CRASH", "1");
        const QString message =
            errorOf([] { PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("crashed")), qPrintable(message));
    }

    void aRunThatNeverEndsIsStopped()
    {
        qputenv("VENDEL_STUB_HANG", "1");
        const QString message =
            errorOf([] { PluginLauncher::runAndWait(stub, QStringLiteral("vendelplugin://run/a"), 300ms); });
        QVERIFY2(message.contains(QStringLiteral("did not finish")), qPrintable(message));
    }

    void aMissingOrUnrunnableExecutableIsReported()
    {
        const QString missing = m_directory->filePath(QStringLiteral("missing"));
        QString message = errorOf(
            [&] { PluginLauncher::runAndWait(missing, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("is missing; install the plugin again")),
                 qPrintable(message));
        message = errorOf([&] { PluginLauncher::startDetached(missing, PluginLauncher::configureUrl()); });
        QVERIFY2(message.contains(QStringLiteral("is missing")), qPrintable(message));

        const QString text = m_directory->filePath(QStringLiteral("text"));
        QFile(text).open(QIODevice::WriteOnly);
        message =
            errorOf([&] { PluginLauncher::runAndWait(text, QStringLiteral("vendelplugin://run/a"), 30s); });
        QVERIFY2(message.contains(QStringLiteral("cannot be run")), qPrintable(message));
        message = errorOf(
            [&] { PluginLauncher::startDetached(m_directory->path(), PluginLauncher::configureUrl()); });
        QVERIFY2(message.contains(QStringLiteral("cannot be run")), qPrintable(message));
    }

    void aDetachedLaunchIsNotWaitedFor()
    {
        QVERIFY(PluginLauncher::startDetached(stub, PluginLauncher::editUrl(QStringLiteral("x"))) > 0);
        QTRY_COMPARE(record(), QByteArray("vendelplugin://edit/x\n"));
    }

private:
    QByteArray record() const
    {
        QFile file(m_directory->filePath(QStringLiteral("record")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_GUILESS_MAIN(PluginLauncherTest)
#include "PluginLauncherTest.moc"
