// KRunner's own client, KF5's Plasma::RunnerManager, against the served host: the manager finds the runner
// through its desktop file in the build's share folder (laid out as installed), the bus starts the host on
// the first query, and the ranked matches, a run and the "Edit" action reach a recording stub plugin. Runs
// under dbus-run-session, with XDG folders of its own: KRunner keeps launch counts that change relevance.
#include <KRunner/QueryMatch>
#include <KRunner/RunnerManager>

#include <QAction>
#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

constexpr int generousMs = 30000;
const QString runnerId = QStringLiteral("org.vendel.Actions");

QString setting(const char* name)
{
    return qEnvironmentVariable(name);
}

} // namespace

class KRunnerClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(!setting("VENDEL_HOST_EXECUTABLE").isEmpty() &&
                     !setting("VENDEL_TEST_PLUGIN_STUB").isEmpty(),
                 "the test's environment names vendel-host and the stub plugin");
        // What the bus gives the host it starts: this test's data, and the stub's record.
        qDBusRegisterMetaType<QMap<QString, QString>>();
        QDBusMessage update = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("UpdateActivationEnvironment"));
        update.setArguments({QVariant::fromValue(
            QMap<QString, QString>{{QStringLiteral("VENDEL_HOST_DATA_DIR"), dataDirectory()},
                                   {QStringLiteral("VENDEL_STUB_RECORD"), recordPath()}})});
        const QDBusMessage updated = QDBusConnection::sessionBus().call(update);
        QVERIFY2(updated.type() == QDBusMessage::ReplyMessage, qPrintable(updated.errorMessage()));
        // Started without a launch URL, the stub installs itself, and the bus starts the host for it.
        QCOMPARE(run(setting("VENDEL_TEST_PLUGIN_STUB"), {}), 0);
        for (const QString& title :
             {QStringLiteral("Road Trip"), QStringLiteral("Car Road"), QStringLiteral("road"),
              QStringLiteral("Railroad"), QStringLiteral("Focus")}) {
            QCOMPARE(run(setting("VENDEL_HOST_EXECUTABLE"),
                         {QStringLiteral("action"), QStringLiteral("new"),
                          QStringLiteral("vendel_test_plugin_stub"), QStringLiteral("--title"), title,
                          QStringLiteral("--no-edit")}),
                     0);
            m_ids.insert(title, m_lastOutput.trimmed());
        }
    }

    void theRunnerIsFoundFromItsDesktopFile()
    {
        QStringList ids;
        for (const KPluginMetaData& runner : Plasma::RunnerManager::runnerMetaDataList()) {
            ids.append(runner.pluginId());
        }
        QVERIFY2(ids.contains(runnerId), qPrintable(ids.join(QStringLiteral(", "))));
    }

    void matchesComeRankedWithTheirPlugins()
    {
        Plasma::RunnerManager manager;
        const QList<Plasma::QueryMatch> matches = query(manager, QStringLiteral("ROAD"));
        QStringList titles;
        for (const Plasma::QueryMatch& match : matches) {
            titles.append(match.text());
            QCOMPARE(match.subtext(), QStringLiteral("vendel_test_plugin_stub"));
            QCOMPARE(match.iconName(), QStringLiteral("application-x-executable"));
        }
        QCOMPARE(titles, (QStringList{QStringLiteral("road"), QStringLiteral("Road Trip"),
                                      QStringLiteral("Car Road"), QStringLiteral("Railroad")}));
        QCOMPARE(matches.constFirst().type(), Plasma::QueryMatch::ExactMatch);
        QCOMPARE(matches.at(1).type(), Plasma::QueryMatch::PossibleMatch);
    }

    void aMatchRunsAndItsEditActionEdits()
    {
        Plasma::RunnerManager manager;
        const QList<Plasma::QueryMatch> matches = query(manager, QStringLiteral("road trip"));
        QCOMPARE(matches.size(), 1);
        Plasma::QueryMatch match = matches.constFirst();
        const QString id = m_ids.value(QStringLiteral("Road Trip"));
        manager.run(match);
        QTRY_COMPARE_WITH_TIMEOUT(record(), QStringLiteral("vendelplugin://run/%1\n").arg(id), generousMs);

        const QList<QAction*> actions = manager.actionsForMatch(match);
        QAction* edit = nullptr;
        QStringList texts;
        for (QAction* action : actions) {
            texts.append(action->text());
            if (action->text() == QStringLiteral("Edit")) {
                edit = action;
            }
        }
        QVERIFY2(edit, qPrintable(texts.join(QStringLiteral(", "))));
        QCOMPARE(actions.size(), 1);
        match.setSelectedAction(edit);
        manager.run(match);
        QTRY_COMPARE_WITH_TIMEOUT(
            record(), QStringLiteral("vendelplugin://run/%1\nvendelplugin://edit/%1\n").arg(id), generousMs);
    }

private:
    // The matches of the query from this runner alone, best first as KRunner orders them.
    static QList<Plasma::QueryMatch> query(Plasma::RunnerManager& manager, const QString& text)
    {
        QSignalSpy finished(&manager, &Plasma::RunnerManager::queryFinished);
        manager.launchQuery(text, runnerId);
        if (!finished.wait(generousMs)) {
            qWarning("the query did not finish");
        }
        QList<Plasma::QueryMatch> matches = manager.matches();
        std::stable_sort(
            matches.begin(), matches.end(),
            [](const Plasma::QueryMatch& left, const Plasma::QueryMatch& right) { return right < left; });
        return matches;
    }

    int run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("VENDEL_HOST_DATA_DIR"), dataDirectory());
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        if (!process.waitForFinished(generousMs)) {
            return -1;
        }
        m_lastOutput = QString::fromUtf8(process.readAllStandardOutput());
        const QByteArray errors = process.readAllStandardError();
        if (process.exitCode() != 0) {
            qWarning("%s: %s", qPrintable(program), errors.constData());
        }
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QString dataDirectory() const { return m_folder.filePath(QStringLiteral("data")); }
    QString recordPath() const { return m_folder.filePath(QStringLiteral("record")); }

    QString record() const
    {
        QFile file(recordPath());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir m_folder;
    QHash<QString, QString> m_ids;
    QString m_lastOutput;
};

// KRunner reads and writes its configuration, history and launch counts in the XDG folders: fresh ones,
// before anything reads them.
int main(int argc, char** argv)
{
    QTemporaryDir home;
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        qputenv(variable, QFile::encodeName(home.filePath(QString::fromLatin1(variable))));
    }
    QApplication application(argc, argv);
    KRunnerClientTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "KRunnerClientTest.moc"
