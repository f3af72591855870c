// Tests plugin installation: finding a process's executable, the link in the plugin folder, the record.
#include "PluginInstaller.h"
#include "HostError.h"
#include "HostErrorText.h"
#include "HostStorage.h"
#include "XdgDataFolders.h"

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
        hang(process, copy);
        QCOMPARE(PluginInstaller::executableOfProcess(process.processId()), copy);
        QVERIFY(QFile::remove(copy));
        const QString message = errorOf([&] { PluginInstaller::executableOfProcess(process.processId()); });
        process.kill();
        process.waitForFinished();
        QVERIFY2(message.contains(QStringLiteral("no longer exists")), qPrintable(message));
    }

    // The kernel shows a removed executable as "<path> (deleted)"; a file of that very name is not it.
    void aFileNamedLikeADeletedExecutableIsRefused()
    {
        const QString copy = m_directory->filePath(QStringLiteral("doomed-plugin"));
        QVERIFY(QFile::copy(stub, copy));
        QProcess process;
        hang(process, copy);
        QVERIFY(QFile::remove(copy));
        QVERIFY(QFile::copy(stub, copy + QStringLiteral(" (deleted)")));
        const QString message = errorOf([&] { PluginInstaller::executableOfProcess(process.processId()); });
        process.kill();
        process.waitForFinished();
        QVERIFY2(message.contains(QStringLiteral("no longer exists or was replaced")), qPrintable(message));
    }

    // A caller that calls and then starts another program keeps its pid, so the executable read may be
    // the other program's; its bus connection, opened close-on-exec, closes with the exec. Here the
    // exec happens between the pid and the read, and "connected" is what the bus would say.
    void aCallerThatExecsAfterTheCallIsRefused()
    {
        const QString impostor = m_directory->filePath(QStringLiteral("impostor"));
        QVERIFY(QFile::copy(stub, impostor));
        QProcess caller;
        caller.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("VENDEL_STUB_HANG"), QStringLiteral("1"));
        caller.setProcessEnvironment(environment);
        // The shell waits for a line, then turns into the impostor.
        caller.start(QStringLiteral("sh"),
                     {QStringLiteral("-c"), QStringLiteral("read line; exec \"$0\" x"), impostor});
        QVERIFY(caller.waitForStarted());
        const QString exe = QStringLiteral("/proc/%1/exe").arg(caller.processId());
        const QString original = QFileInfo(exe).symLinkTarget();
        const auto stillConnected = [&] { return QFileInfo(exe).symLinkTarget() == original; };

        bool execed = false;
        const QString message = errorOf([&] {
            PluginInstaller::callerExecutable(
                [&] {
                    caller.write("go\n");
                    caller.waitForBytesWritten();
                    execed = QTest::qWaitFor([&] { return !stillConnected(); });
                    return caller.processId();
                },
                stillConnected);
        });
        caller.kill();
        caller.waitForFinished();
        QVERIFY(execed);
        QVERIFY2(message.contains(QStringLiteral("left the bus")), qPrintable(message));
    }

    void aCallerStillConnectedIsInstalledAsItself()
    {
        const QString self = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
        QCOMPARE(PluginInstaller::callerExecutable([] { return QCoreApplication::applicationPid(); },
                                                   [] { return true; }),
                 self);
    }

    void anExecutableWithALongNameInstalls()
    {
        // 255 bytes is as long as a file name gets.
        const QString name = QString(255, u'p');
        const QString path = m_directory->filePath(name);
        QVERIFY(QFile::copy(stub, path));
        const auto plugin = PluginInstaller(*m_storage).install(path);
        QCOMPARE(plugin.name, name);
        QCOMPARE(QFileInfo(QDir(m_storage->pluginFolder()).filePath(name)).symLinkTarget(), path);
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

    void theDesktopEntrysNameAndIconAreRecorded()
    {
        Testing::XdgDataFolders xdg;
        const QString name = QFileInfo(stub).fileName();
        xdg.writeEntry(Testing::XdgDataFolders::FirstSystem, name + QStringLiteral(".desktop"),
                       Testing::XdgDataFolders::entry("Stub Player", "stub-player"));
        const auto plugin = PluginInstaller(*m_storage).install(stub);
        QCOMPARE(plugin.entryName, QStringLiteral("Stub Player"));
        QCOMPARE(m_storage->plugin(name)->displayName(), QStringLiteral("Stub Player"));
        QCOMPARE(m_storage->plugin(name)->icon(), QStringLiteral("stub-player"));

        // Installed again without an entry, the plugin is shown by its executable's name again.
        xdg.writeEntry(Testing::XdgDataFolders::FirstSystem, name + QStringLiteral(".desktop"), "");
        PluginInstaller(*m_storage).install(stub);
        QCOMPARE(m_storage->plugin(name)->displayName(), name);
        QCOMPARE(m_storage->plugin(name)->icon(), QStringLiteral("application-x-executable"));
    }

    void withoutADesktopEntryTheExecutablesNameAndAGenericIconServe()
    {
        Testing::XdgDataFolders xdg;
        const QString name = QFileInfo(stub).fileName();
        PluginInstaller(*m_storage).install(stub);
        QCOMPARE(m_storage->plugin(name)->entryName, QString());
        QCOMPARE(m_storage->plugin(name)->displayName(), name);
        QCOMPARE(m_storage->plugin(name)->icon(), QStringLiteral("application-x-executable"));
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
    // Starts the executable so that it stays until killed.
    static void hang(QProcess& process, const QString& executable)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("VENDEL_STUB_HANG"), QStringLiteral("1"));
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.start(executable, {QStringLiteral("x")});
        QVERIFY(process.waitForStarted());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<HostStorage> m_storage;
};

QTEST_GUILESS_MAIN(PluginInstallerTest)
#include "PluginInstallerTest.moc"
