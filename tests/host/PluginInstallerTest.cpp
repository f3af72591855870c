// Tests plugin installation: finding a process's executable, the link in the plugin folder, the record.
#include "PluginInstaller.h"
#include "HostError.h"
#include "HostErrorText.h"
#include "HostStorage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

using namespace VendelHost;

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);

} // namespace

class PluginInstallerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_storage = std::make_unique<HostStorage>(m_directory->filePath(QStringLiteral("data")));
    }

    void cleanup()
    {
        m_storage.reset();
        m_directory.reset();
    }

    void findsTheExecutableOfAProcess()
    {
        QCOMPARE(PluginInstaller::executableOfProcess(QCoreApplication::applicationPid()),
                 QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
    }

    void aProcessThatIsGoneHasNoExecutable()
    {
        QProcess process;
        process.start(stub, {QStringLiteral("x")});
        QVERIFY(process.waitForStarted());
        const qint64 pid = process.processId();
        QVERIFY(process.waitForFinished());
        const QString message = errorOf([&] { PluginInstaller::executableOfProcess(pid); });
        QVERIFY2(message.contains(QStringLiteral("Cannot find the executable of process")),
                 qPrintable(message));
    }

    void anExecutableDeletedSinceTheStartIsRefused()
    {
        const QString copy = m_directory->filePath(QStringLiteral("doomed-plugin"));
        QVERIFY(QFile::copy(stub, copy));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("VENDEL_STUB_HANG"), QStringLiteral("1"));
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.start(copy, {QStringLiteral("x")});
        QVERIFY(process.waitForStarted());
        QCOMPARE(PluginInstaller::executableOfProcess(process.processId()), copy);
        QVERIFY(QFile::remove(copy));
        const QString message = errorOf([&] { PluginInstaller::executableOfProcess(process.processId()); });
        process.kill();
        process.waitForFinished();
        QVERIFY2(message.contains(QStringLiteral("no longer exists")), qPrintable(message));
    }

    void linksAndRecordsThePluginUnderItsFileName()
    {
        PluginInstaller installer(*m_storage);
        const QString canonical = QFileInfo(stub).canonicalFilePath();
        const auto plugin = installer.install(stub);
        QCOMPARE(plugin.name, QFileInfo(stub).fileName());
        QCOMPARE(plugin.path, canonical);
        const QFileInfo link(QDir(m_storage->pluginFolder()).filePath(plugin.name));
        QVERIFY(link.isSymLink());
        QCOMPARE(link.symLinkTarget(), canonical);
        QCOMPARE(m_storage->plugin(plugin.name)->path, canonical);
        QCOMPARE(m_storage->plugins().size(), 1);
    }

    void theCanonicalPathIsRecordedAndEitherPathCounts()
    {
        PluginInstaller installer(*m_storage);
        const QString alias = m_directory->filePath(QStringLiteral("alias"));
        QVERIFY(QFile::link(stub, alias));
        const auto plugin = installer.install(alias);
        QCOMPARE(plugin.name, QFileInfo(stub).fileName());
        QCOMPARE(plugin.path, QFileInfo(stub).canonicalFilePath());
        QVERIFY(installer.isInstalledAtPath(plugin.path));
        QVERIFY(installer.isInstalledAtPath(alias));
        QVERIFY(installer.isInstalledAtPath(QDir(m_storage->pluginFolder()).filePath(plugin.name)));
        QVERIFY(!installer.isInstalledAtPath(QCoreApplication::applicationFilePath()));
        QVERIFY(!installer.isInstalledAtPath(QStringLiteral("/nowhere/at/all")));
        QVERIFY(!installer.isInstalledAtPath(QString()));
    }

    void aNewInstallOfTheSameNameReplacesTheOldOne()
    {
        PluginInstaller installer(*m_storage);
        const QString name = QFileInfo(stub).fileName();
        installer.install(stub);
        const QString elsewhere = m_directory->filePath(QStringLiteral("elsewhere/") + name);
        QVERIFY(QDir().mkpath(QFileInfo(elsewhere).path()));
        QVERIFY(QFile::copy(stub, elsewhere));
        installer.install(elsewhere);
        QCOMPARE(m_storage->plugin(name)->path, elsewhere);
        QCOMPARE(QFileInfo(QDir(m_storage->pluginFolder()).filePath(name)).symLinkTarget(), elsewhere);
        QVERIFY(!installer.isInstalledAtPath(stub));
        // Nothing but the one link is left in the folder.
        QCOMPARE(QDir(m_storage->pluginFolder())
                     .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
                 QStringList{name});
    }

    void refusesWhatIsNoExecutableAndRecordsNothing()
    {
        PluginInstaller installer(*m_storage);
        const QString text = m_directory->filePath(QStringLiteral("notes.txt"));
        QFile(text).open(QIODevice::WriteOnly);
        for (const QString& path :
             {text, m_directory->path(), m_directory->filePath(QStringLiteral("missing"))}) {
            const QString message = errorOf([&] { installer.install(path); });
            QVERIFY2(message.contains(QStringLiteral("not an executable file")), qPrintable(message));
        }
        QVERIFY(m_storage->plugins().isEmpty());
    }

    void aFolderInTheWayOfTheLinkIsReportedAndNothingRecorded()
    {
        PluginInstaller installer(*m_storage);
        const QString name = QFileInfo(stub).fileName();
        QVERIFY(QDir(m_storage->pluginFolder()).mkpath(name + QStringLiteral("/inside")));
        const QString message = errorOf([&] { installer.install(stub); });
        QVERIFY2(message.contains(QStringLiteral("Cannot link")), qPrintable(message));
        QVERIFY(m_storage->plugins().isEmpty());
        QCOMPARE(
            QDir(m_storage->pluginFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList{name});
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<HostStorage> m_storage;
};

QTEST_GUILESS_MAIN(PluginInstallerTest)
#include "PluginInstallerTest.moc"
