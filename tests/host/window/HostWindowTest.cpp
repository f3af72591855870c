// Tests the host's window on a private X server with real key presses (xdotool, through the X server's test
// extension): making, renaming, running, editing and deleting actions, each checked in the host's database
// and in what the plugin did, and the failures the window shows. The bus starts the served host, as on a
// desktop.
#include "HostWindow.h"
#include "ActionsClient.h"
#include "ActivatedHost.h"
#include "HostProcess.h"
#include "HostStorage.h"
#include "MessageArea.h"
#include "MpdTestServer.h"
#include "StubLaunches.h"
#include "XDisplay.h"

#include <QApplication>
#include <QDBusConnection>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <csignal>
#include <cstdio>

using namespace VendelHost;
using namespace VendelHost::Testing;
using MusicPlugin::Testing::XKeyboard;
using MusicPlugin::Testing::XvfbDisplay;
using VendelSDK::Testing::MpdTestServer;

namespace {

const QString stub = StubLaunches::stub();
const QString musicPlugin = QStringLiteral(VENDEL_MUSIC_PLUGIN);
const QStringList roadTripSongs{QStringLiteral("road/one.wav"), QStringLiteral("road/two.wav")};
const QStringList focusSongs{QStringLiteral("focus/deep.wav")};
const QString playRoadTrip = QStringLiteral("{\"action\":0,\"name\":\"Road Trip\",\"shouldShuffle\":true}");
// Generous: the machine may be busy; every wait ends as soon as its condition holds.
constexpr int generousMs = 30000;

// Whether the process has ended (a zombie counts: its parent reaps it in its own time).
bool hasEnded(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly)) {
        return true;
    }
    const QByteArray line = stat.readAll();
    const qsizetype end = line.lastIndexOf(')');
    return end < 0 || line.mid(end + 2, 1) == "Z";
}

QString commandLineOf(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(pid));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).replace(u'\0', u' ').trimmed()
                                          : QString();
}

} // namespace

class HostWindowTest : public QObject
{
    Q_OBJECT

public:
    explicit HostWindowTest(QString display) : m_keyboard(display), m_displayName(std::move(display)) {}

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(
            QFile::setPermissions(m_runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        for (const QString& song : roadTripSongs + focusSongs) {
            m_mpd.addSong(song);
        }
        m_mpd.addPlaylist(QStringLiteral("Road Trip"), roadTripSongs);
        m_mpd.addPlaylist(QStringLiteral("Focus"), focusSongs);
        QVERIFY2(m_mpd.start(), qPrintable(m_mpd.errorString()));
    }

    void init()
    {
        QVERIFY(m_mpd.reset());
        m_stub = std::make_unique<StubLaunches>();
        // What the served host, and the plugins it starts, see: this test's data, display, MPD and stub.
        auto environment = m_stub->environment();
        environment.insert({
            {QStringLiteral("VENDEL_HOST_DATA_DIR"), m_stub->dataDirectory()},
            {QStringLiteral("DISPLAY"), m_displayName},
            {QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path()},
            {QStringLiteral("MPD_HOST"), m_mpd.socketPath()},
            {QStringLiteral("VENDEL_MUSIC"), QStringLiteral("mpd")},
        });
        QVERIFY(ActivatedHost::setEnvironment(environment));
        m_stub->installStub();
        HostStorage(m_stub->dataDirectory())
            .recordPlugin({QStringLiteral("vendel-music-plugin"), musicPlugin, QStringLiteral("Vendel Music"),
                           QStringLiteral("vendel-music-plugin")});
        QVERIFY(!HostProcess::isHostOnBus());
        m_client = std::make_unique<ActionsClient>(QDBusConnection::sessionBus());
        m_window = std::make_unique<HostWindow>(*m_client);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_client->refresh();
        m_windowId = windowShown(QCoreApplication::applicationPid(), QStringLiteral("Vendel Actions"));
        QVERIFY(!m_windowId.isEmpty());
        // The first listing started the host.
        QTRY_VERIFY_WITH_TIMEOUT(HostProcess::isHostOnBus(), generousMs);
    }

    void cleanup()
    {
        m_window.reset();
        m_client.reset();
        for (const qint64 pid : std::as_const(m_plugins)) {
            ::kill(pid_t(pid), SIGKILL);
        }
        m_plugins.clear();
        QVERIFY(ActivatedHost::stop());
        m_stub.reset();
    }

    void makesAnActionWithATitleAndOpensItsEditor()
    {
        QVERIFY(showsTitles({}));
        QVERIFY(press({QStringLiteral("ctrl+n")}));
        const QString dialog = windowShown(QCoreApplication::applicationPid(), QStringLiteral("New Action"));
        QVERIFY(!dialog.isEmpty());
        // The title field has the keys; the plugin list is one back, and the stub is its first plugin.
        QVERIFY(m_keyboard.type(dialog, QStringLiteral("Road Trip")));
        QVERIFY(m_keyboard.press(
            dialog, {QStringLiteral("shift+Tab"), QStringLiteral("Home"), QStringLiteral("Return")}));

        QTRY_COMPARE_WITH_TIMEOUT(HostStorage(m_stub->dataDirectory()).actions().size(), 1, generousMs);
        const HostStorage::Action made = HostStorage(m_stub->dataDirectory()).actions().constFirst();
        QCOMPARE(made.ownTitle, QStringLiteral("Road Trip"));
        QCOMPARE(made.plugin, QStringLiteral("stub"));
        // The plugin's editor was opened for it, as `action new` does.
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://edit/%1\n").arg(made.id), generousMs);
        QVERIFY(showsTitles({QStringLiteral("Road Trip")}));
        QTRY_COMPARE_WITH_TIMEOUT(m_window->currentAction(), made.id, generousMs);
    }

    void renamesAnActionInPlace()
    {
        const QString id = HostStorage(m_stub->dataDirectory())
                               .createAction(QStringLiteral("stub"), QStringLiteral("Focus"));
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Focus")}));
        QVERIFY(press({QStringLiteral("F2")}));
        QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<QLineEdit*>(QApplication::focusWidget()), generousMs);
        QVERIFY(press({QStringLiteral("ctrl+a")}));
        QVERIFY(m_keyboard.type(m_windowId, QStringLiteral("Deep Focus")));
        QVERIFY(press({QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(HostStorage(m_stub->dataDirectory()).action(id)->ownTitle,
                                  QStringLiteral("Deep Focus"), generousMs);
        QVERIFY(showsTitles({QStringLiteral("Deep Focus")}));

        // An emptied title gives the default one back.
        QVERIFY(press({QStringLiteral("F2")}));
        QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<QLineEdit*>(QApplication::focusWidget()), generousMs);
        QVERIFY(press({QStringLiteral("ctrl+a"), QStringLiteral("BackSpace"), QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(HostStorage(m_stub->dataDirectory()).action(id)->ownTitle, QString(),
                                  generousMs);
        QVERIFY(showsTitles({QStringLiteral("Stub Player 1")}));
        // Renaming starts no plugin.
        QCOMPARE(m_stub->contents(QStringLiteral("record")), QString());
        QCOMPARE(m_window->messages()->messages(), QStringList());
    }

    void runsAnActionAndTheMusicPlays()
    {
        QVERIFY(m_mpd.playStoredPlaylist(QStringLiteral("Focus")));
        const QString id = musicAction(QStringLiteral("Road Trip"), playRoadTrip);
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Road Trip")}));
        QVERIFY(press({QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(m_window->statusBar()->currentMessage(),
                                  QStringLiteral("“Road Trip” has run."), generousMs);
        const auto status = m_mpd.status();
        QVERIFY(status);
        QCOMPARE(status->state, QStringLiteral("play"));
        QVERIFY(status->random);
        QCOMPARE(m_mpd.queue().value_or(QStringList{}), roadTripSongs);
        // The plugin read its record through the host and wrote it back unchanged as it ended.
        QCOMPARE(QJsonDocument::fromJson(HostStorage(m_stub->dataDirectory()).action(id)->config.toUtf8()),
                 QJsonDocument::fromJson(playRoadTrip.toUtf8()));
        QCOMPARE(m_window->messages()->messages(), QStringList());
    }

    void editOpensThePluginsEditor()
    {
        const QString id = musicAction(QStringLiteral("Road Trip"), playRoadTrip);
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Road Trip")}));
        QVERIFY(press({QStringLiteral("ctrl+e")}));
        const QString editor = windowShown(0, QStringLiteral("Music Action"));
        QVERIFY(!editor.isEmpty());
        const qint64 pid = m_keyboard.processOf(editor);
        QVERIFY(pid > 0);
        m_plugins.append(pid);
        QCOMPARE(commandLineOf(pid), QStringLiteral("%1 vendelplugin://edit/%2").arg(musicPlugin, id));
        // Ended as a desktop ends it, the editor writes what it shows back: the record as it was.
        ::kill(pid_t(pid), SIGTERM);
        QTRY_VERIFY_WITH_TIMEOUT(hasEnded(pid), generousMs);
        QCOMPARE(QJsonDocument::fromJson(HostStorage(m_stub->dataDirectory()).action(id)->config.toUtf8()),
                 QJsonDocument::fromJson(playRoadTrip.toUtf8()));
        QCOMPARE(m_mpd.status().value_or(MpdTestServer::Status{}).state, QStringLiteral("stop"));
    }

    void deleteCancelledKeepsTheAction()
    {
        const QString id = HostStorage(m_stub->dataDirectory())
                               .createAction(QStringLiteral("stub"), QStringLiteral("Old Mix"));
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Old Mix")}));
        QVERIFY(press({QStringLiteral("Delete")}));
        const QString question = deleteQuestion(QStringLiteral("Delete “Old Mix”?"));
        QVERIFY(!question.isEmpty());
        QVERIFY(m_keyboard.press(question, {QStringLiteral("Escape")}));
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->findChild<QMessageBox*>(), generousMs);
        // The host is asked once more, and still has it.
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Old Mix")}));
        QVERIFY(HostStorage(m_stub->dataDirectory()).action(id));
    }

    void deleteConfirmedRemovesTheAction()
    {
        const QString kept =
            HostStorage(m_stub->dataDirectory()).createAction(QStringLiteral("stub"), QStringLiteral("Kept"));
        const QString id = HostStorage(m_stub->dataDirectory())
                               .createAction(QStringLiteral("stub"), QStringLiteral("Old Mix"));
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Kept"), QStringLiteral("Old Mix")}));
        QVERIFY(press({QStringLiteral("Down")}));
        QTRY_COMPARE_WITH_TIMEOUT(m_window->currentAction(), id, generousMs);
        QVERIFY(press({QStringLiteral("Delete")}));
        const QString question = deleteQuestion(QStringLiteral("Delete “Old Mix”?"));
        QVERIFY(!question.isEmpty());
        QVERIFY(m_keyboard.press(question, {QStringLiteral("alt+d")}));
        QTRY_VERIFY_WITH_TIMEOUT(!HostStorage(m_stub->dataDirectory()).action(id), generousMs);
        QVERIFY(HostStorage(m_stub->dataDirectory()).action(kept));
        QVERIFY(showsTitles({QStringLiteral("Kept")}));
        QCOMPARE(m_stub->contents(QStringLiteral("record")), QString());
    }

    void aPluginsPreferencesOpen()
    {
        HostStorage(m_stub->dataDirectory())
            .createAction(QStringLiteral("stub"), QStringLiteral("Road Trip"));
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Road Trip")}));
        QVERIFY(press({QStringLiteral("ctrl+comma")}));
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://configure/stub\n"), generousMs);
    }

    void aRemovedExecutableIsNamedInTheWindow()
    {
        const QString copy = m_stub->path(QStringLiteral("copied-plugin"));
        QVERIFY(QFile::copy(stub, copy));
        {
            HostStorage storage(m_stub->dataDirectory());
            storage.recordPlugin({QStringLiteral("copied"), copy});
            storage.createAction(QStringLiteral("copied"), QStringLiteral("Gone Tune"));
        }
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Gone Tune")}));
        QVERIFY(QFile::remove(copy));
        QVERIFY(press({QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(
            m_window->messages()->messages(),
            QStringList{QStringLiteral("“Gone Tune” did not run. Its plugin's executable %1 is "
                                       "missing; install the plugin again.")
                            .arg(copy)},
            generousMs);
        QVERIFY(shownMessageIsPlainText());
    }

    void aSecondRunOfAHeldActionIsRefusedAndTheWindowGoesOn()
    {
        const QString id =
            HostStorage(m_stub->dataDirectory()).createAction(QStringLiteral("stub"), QStringLiteral("Held"));
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({QStringLiteral("Held")}));
        QVERIFY(m_stub->held().hold());
        QVERIFY(press({QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://run/%1\n").arg(id), generousMs);
        QVERIFY(press({QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(
            m_window->messages()->messages(),
            QStringList{QStringLiteral("“Held” did not run. It is still running; it can run "
                                       "again when this run has ended.")},
            generousMs);
        // While the plugin is held the window answers: it filters as the user types.
        QVERIFY(press({QStringLiteral("ctrl+f")}));
        QVERIFY(m_keyboard.type(m_windowId, QStringLiteral("zz")));
        QVERIFY(showsTitles({}));
        QVERIFY(press({QStringLiteral("Escape")}));
        QVERIFY(showsTitles({QStringLiteral("Held")}));
        QCOMPARE(m_stub->contents(QStringLiteral("done")), QString());
        m_stub->held().release();
        QTRY_COMPARE_WITH_TIMEOUT(m_window->statusBar()->currentMessage(), QStringLiteral("“Held” has run."),
                                  generousMs);
        QCOMPARE(m_stub->contents(QStringLiteral("record")).count(u'\n'), 1);
    }

    void titlesAreShownAsPlainText()
    {
        const QString markup = QStringLiteral("<b>Bold</b> & <i>Loud</i>");
        {
            HostStorage storage(m_stub->dataDirectory());
            storage.recordPlugin({QStringLiteral("missing"), m_stub->path(QStringLiteral("missing"))});
            storage.createAction(QStringLiteral("missing"), markup);
        }
        QVERIFY(press({QStringLiteral("F5")}));
        QVERIFY(showsTitles({markup}));
        QVERIFY(press({QStringLiteral("Return")}));
        QTRY_COMPARE_WITH_TIMEOUT(m_window->messages()->messages().size(), 1, generousMs);
        QVERIFY(m_window->messages()->messages().constFirst().startsWith(
            QStringLiteral("“%1” did not run.").arg(markup)));
        QVERIFY(shownMessageIsPlainText());
        QVERIFY(press({QStringLiteral("Delete")}));
        QVERIFY(!deleteQuestion(QStringLiteral("Delete “%1”?").arg(markup)).isEmpty());
        QCOMPARE(m_window->findChild<QMessageBox*>()->textFormat(), Qt::PlainText);
    }

private:
    QString musicAction(const QString& title, const QString& config)
    {
        HostStorage storage(m_stub->dataDirectory());
        const QString id = storage.createAction(QStringLiteral("vendel-music-plugin"), title);
        storage.setConfig(id, config);
        return id;
    }

    // The viewable window of that title (of any process for pid 0), once it shows; the event loop runs
    // meanwhile, so that this process's own windows can show.
    QString windowShown(qint64 pid, const QString& title) const
    {
        QString window;
        if (!QTest::qWaitFor(
                [&] {
                    window = m_keyboard.findWindow(pid, title);
                    return !window.isEmpty();
                },
                generousMs)) {
            qWarning("no window \"%s\" showed", qPrintable(title));
        }
        return window;
    }

    bool press(const QStringList& keys) const
    {
        const bool pressed = m_keyboard.press(m_windowId, keys);
        if (!pressed) {
            qWarning("%s", qPrintable(m_keyboard.errorString()));
        }
        return pressed;
    }

    // Waits until the list shows these titles, in this order.
    bool showsTitles(const QStringList& titles) const
    {
        const auto* view = m_window->findChild<QTreeView*>();
        QStringList shown;
        const bool showing = QTest::qWaitFor(
            [&] {
                shown.clear();
                for (int row = 0; row < view->model()->rowCount(); ++row) {
                    shown.append(view->model()->index(row, 0).data().toString());
                }
                return shown == titles;
            },
            generousMs);
        if (!showing) {
            qWarning("the list shows %s", qPrintable(shown.join(QStringLiteral(" | "))));
        }
        return showing;
    }

    // The window's question before a deletion, once it shows with this text; its X window.
    QString deleteQuestion(const QString& text) const
    {
        if (!QTest::qWaitFor([&] { return m_window->findChild<QMessageBox*>() != nullptr; }, generousMs)) {
            qWarning("no question was asked");
            return {};
        }
        const QMessageBox* box = m_window->findChild<QMessageBox*>();
        if (box->text() != text) {
            qWarning("the question reads %s", qPrintable(box->text()));
            return {};
        }
        return windowShown(QCoreApplication::applicationPid(), QStringLiteral("Delete Action"));
    }

    bool shownMessageIsPlainText() const
    {
        const auto labels = m_window->messages()->findChildren<QLabel*>();
        return !labels.isEmpty() && std::all_of(labels.begin(), labels.end(), [](const QLabel* label) {
            return label->textFormat() == Qt::PlainText;
        });
    }

    XKeyboard m_keyboard;
    QString m_displayName;
    MpdTestServer m_mpd;
    QTemporaryDir m_runtime;
    std::unique_ptr<StubLaunches> m_stub;
    std::unique_ptr<ActionsClient> m_client;
    std::unique_ptr<HostWindow> m_window;
    QString m_windowId;
    QList<qint64> m_plugins;
};

// The window needs its X server before the application connects to a display, so the server starts first.
int main(int argc, char** argv)
{
    XvfbDisplay display;
    if (!display.start()) {
        std::fprintf(stderr, "%s\n", qPrintable(display.errorString()));
        return 1;
    }
    qputenv("DISPLAY", display.name().toUtf8());
    qunsetenv("WAYLAND_DISPLAY");
    qunsetenv("QT_QPA_PLATFORM");
    QApplication application(argc, argv);
    HostWindowTest test(display.name());
    return QTest::qExec(&test, argc, argv);
}

#include "HostWindowTest.moc"
