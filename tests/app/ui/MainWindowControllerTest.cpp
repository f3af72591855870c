// Tests the editor window: its level, the controls bound both ways to the editor, the playlist field that
// keeps a name that is gone, the background drag, the preferences action, keyboard access, and closing.
#include "MainWindowController.h"

#include "FakeHost.h"
#include "FixedMediaLibrary.h"
#include "MouseDrag.h"
#include "TestPlatform.h"
#include "UserPace.h"
#include <VendelSDK/QtGuiApplicationServices.h>
#include <VendelSDK/Translations.h>

#include "App.h"
#include "EditorViewController.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>

#include <memory>

using namespace MusicPlugin;
using namespace MusicPlugin::Testing;
using namespace VendelSDK;
using namespace VendelSDK::Testing;
using namespace std::chrono_literals;

namespace {

const QString actionID = QStringLiteral("A1");

// The form's controls, found by the names that the form gives them.
struct Controls
{
    explicit Controls(const MainWindowController& controller)
    {
        const QMainWindow* window = controller.window();
        action = window->findChild<QComboBox*>(QStringLiteral("actionComboBox"));
        playlist = window->findChild<QComboBox*>(QStringLiteral("playlistComboBox"));
        shuffle = window->findChild<QCheckBox*>(QStringLiteral("shuffleCheckBox"));
        actionLabel = window->findChild<QLabel*>(QStringLiteral("actionLabel"));
        playlistLabel = window->findChild<QLabel*>(QStringLiteral("playlistLabel"));
        background = window->findChild<QWidget*>(QStringLiteral("editorView"));
        QVERIFY(action && playlist && shuffle && actionLabel && playlistLabel && background);
    }

    QComboBox* action = nullptr;
    QComboBox* playlist = nullptr;
    QCheckBox* shuffle = nullptr;
    QLabel* actionLabel = nullptr;
    QLabel* playlistLabel = nullptr;
    QWidget* background = nullptr;
};

} // namespace

class MainWindowControllerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestPlatform> platform;
    std::unique_ptr<FakeHost> host;
    std::unique_ptr<FixedMediaLibrary> library;
    TestApplicationServices* services = nullptr;

    std::unique_ptr<MainWindowController> makeController()
    {
        return std::make_unique<MainWindowController>(new EditorViewController(new PlaylistStore(*library)));
    }

    // What the edit handler does: load the action, then show the window.
    std::unique_ptr<MainWindowController> openEditor(const QString& record)
    {
        host->configs.insert(actionID, record);
        auto controller = makeController();
        controller->editorViewController()->setActionIdentifier(actionID);
        controller->editorViewController()->loadConfiguration();
        controller->showWindow();
        return controller;
    }

private Q_SLOTS:
    void init()
    {
        platform = std::make_unique<TestPlatform>();
        host = std::make_unique<FakeHost>(*platform->engine);
        library = std::make_unique<FixedMediaLibrary>(
            QStringList{QStringLiteral("Morning"), QStringLiteral("Evening"), QStringLiteral("Morning")});
        // The real window list of the widget application; termination requests are only counted.
        services = platform->services;
        services->windowSource = [] { return QtGuiApplicationServices().windows(); };
    }

    void cleanup()
    {
        services->terminateNow();
        platform.reset();
        host.reset();
        library.reset();
    }

    void windowOfTheMainFormStaysOnTopWithTheEditorAsContent()
    {
        const auto controller = makeController();
        QMainWindow* window = controller->window();
        QVERIFY(window);
        QCOMPARE(window->objectName(), QStringLiteral("EditWindowController"));
        QVERIFY(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(qobject_cast<EditorViewController*>(controller->contentViewController()));
        QCOMPARE(controller->contentViewController(), controller->editorViewController());
        QVERIFY(!window->isVisible());
        controller->showWindow();
        QVERIFY(window->isVisible());
        QVERIFY(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    }

    void loadedRecordIsShownInTheControls()
    {
        const auto controller =
            openEditor(QStringLiteral("{\"action\":1,\"name\":\"Evening\",\"shouldShuffle\":true}"));
        const Controls ui(*controller);
        QCOMPARE(ui.action->currentIndex(), 1);
        QCOMPARE(ui.action->currentText(), QStringLiteral("Pause"));
        QCOMPARE(ui.playlist->currentText(), QStringLiteral("Evening"));
        QCOMPARE(ui.playlist->currentIndex(), 1);
        QStringList items;
        for (int i = 0; i < ui.playlist->count(); ++i) {
            items.append(ui.playlist->itemText(i));
        }
        QCOMPARE(items, controller->editorViewController()->playlistStore()->playlists());
        QCOMPARE(items.size(), 3);
        QVERIFY(ui.shuffle->isChecked());
    }

    void playlistThatIsGoneStaysInTheFieldAndIsWrittenBackUnchanged()
    {
        const QString record = QStringLiteral("{\"action\":0,\"name\":\"Gone\",\"shouldShuffle\":false}");
        const auto controller = openEditor(record);
        const Controls ui(*controller);
        QVERIFY(ui.playlist->isEditable());
        QCOMPARE(ui.playlist->currentText(), QStringLiteral("Gone"));
        QCOMPARE(ui.playlist->currentIndex(), -1);
        QCOMPARE(ui.playlist->count(), 3);
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        QCOMPARE(host->writes.constFirst().text, record);
    }

    void changesOfTheControlsCallTheSettersAndWriteOnce()
    {
        const auto controller = openEditor(QStringLiteral("{\"action\":0,\"shouldShuffle\":false}"));
        platform->scheduler->advance(1s);
        QCOMPARE(host->writes.size(), 1);
        EditorViewController* editor = controller->editorViewController();
        const Controls ui(*controller);

        QList<std::function<void()>> steps{
            [&] { QTest::keyClick(ui.action, Qt::Key_Down); },
            [&] { ui.playlist->setCurrentIndex(1); },
            [&] { QTest::mouseClick(ui.shuffle, Qt::LeftButton, {}, QPoint(8, ui.shuffle->height() / 2)); },
            [&] { ui.playlist->lineEdit()->selectAll(); },
        };
        for (const QChar c : QStringLiteral("Road Trip")) {
            steps.append([&ui, c] { QTest::keyClicks(ui.playlist->lineEdit(), QString(c)); });
        }
        runAtUserPace(*platform->scheduler, steps);
        QCOMPARE(editor->selectedPlaylist(), std::optional<QString>(QStringLiteral("Road Trip")));
        QVERIFY(editor->shouldShuffle());
        QCOMPARE(editor->actionIndex(), 1);
        // Typing keeps the cursor where the user types.
        QCOMPARE(ui.playlist->lineEdit()->cursorPosition(), 9);
        runAtUserPace(*platform->scheduler, {[&] { QTest::keyClick(ui.action, Qt::Key_Up); }});
        QCOMPARE(editor->actionIndex(), 0);
        QCOMPARE(host->writes.size(), 1);

        platform->scheduler->advance(999ms);
        QCOMPARE(host->writes.size(), 1);
        platform->scheduler->advance(1ms);
        QCOMPARE(host->writes.size(), 2);
        QCOMPARE(host->writes.at(1).text,
                 QStringLiteral("{\"action\":0,\"name\":\"Road Trip\",\"shouldShuffle\":true}"));
        platform->scheduler->advance(60s);
        QCOMPARE(host->writes.size(), 2);
    }

    void emptiedPlaylistFieldMeansNoPlaylist()
    {
        const auto controller =
            openEditor(QStringLiteral("{\"action\":0,\"name\":\"Evening\",\"shouldShuffle\":false}"));
        const Controls ui(*controller);
        ui.playlist->lineEdit()->clear();
        QCOMPARE(controller->editorViewController()->selectedPlaylist(), std::nullopt);
        QVERIFY(!controller->editorViewController()->configProvider()->config.name);
    }

    void operationThatNamesNoEntryShowsNoChoice()
    {
        const auto controller = openEditor(QString());
        EditorViewController* editor = controller->editorViewController();
        const Controls ui(*controller);
        editor->setActionIndex(5);
        QCOMPARE(ui.action->currentIndex(), -1);
        editor->setActionIndex(-1);
        QCOMPARE(ui.action->currentIndex(), -1);
        editor->setActionIndex(1);
        QCOMPARE(ui.action->currentIndex(), 1);
        // Showing a value never writes it back as another.
        QCOMPARE(editor->actionIndex(), 1);
    }

    void newPlaylistStoreRefillsTheListAndKeepsTheChosenName()
    {
        const auto controller =
            openEditor(QStringLiteral("{\"action\":0,\"name\":\"Evening\",\"shouldShuffle\":false}"));
        const Controls ui(*controller);
        FixedMediaLibrary other(QStringList{QStringLiteral("Other")});
        controller->editorViewController()->setPlaylistStore(new PlaylistStore(other));
        QCOMPARE(ui.playlist->count(), 1);
        QCOMPARE(ui.playlist->itemText(0), QStringLiteral("Other"));
        QCOMPARE(ui.playlist->currentText(), QStringLiteral("Evening"));
        QCOMPARE(controller->editorViewController()->selectedPlaylist(),
                 std::optional<QString>(QStringLiteral("Evening")));
    }

    void draggingTheBackgroundMovesTheWindow()
    {
        const auto controller = openEditor(QString());
        const Controls ui(*controller);
        QMainWindow* window = controller->window();
        const QPoint start = window->pos();
        mouseDrag(ui.background, QPoint(4, 4), QPoint(40, 30));
        QCOMPARE(window->pos(), start + QPoint(40, 30));
        // A label is part of the background.
        mouseDrag(ui.actionLabel, QPoint(2, 2), QPoint(-10, 5));
        QCOMPARE(window->pos(), start + QPoint(30, 35));
        // A control keeps its presses.
        mouseDrag(ui.shuffle, QPoint(2, 2), QPoint(50, 50));
        QCOMPARE(window->pos(), start + QPoint(30, 35));
    }

    void editorSpeaksTheDesktopsLanguage_data()
    {
        QTest::addColumn<QStringList>("uiLanguages");
        QTest::addColumn<QStringList>("texts");
        // Title, the two labels, the two actions, the shuffle switch, the empty playlist's placeholder, the
        // menu and its item: each differs from the English.
        QTest::newRow("German") << QStringList{QStringLiteral("de-DE")}
                                << QStringList{QStringLiteral("Musikaktion"),
                                               QStringLiteral("&Aktion:"),
                                               QStringLiteral("&Wiedergabeliste:"),
                                               QStringLiteral("Wiedergabeliste abspielen"),
                                               QStringLiteral("Pausieren"),
                                               QStringLiteral("Vor dem Abspielen &zufällig mischen"),
                                               QStringLiteral("Keine"),
                                               QStringLiteral("&Einstellungen"),
                                               QStringLiteral("Ein&stellungen…")};
        QTest::newRow("French") << QStringList{QStringLiteral("fr-FR")}
                                << QStringList{QStringLiteral("Action musicale"),
                                               QStringLiteral("&Action\u00a0:"),
                                               QStringLiteral("&Liste de lecture\u00a0:"),
                                               QStringLiteral("Lire une liste de lecture"),
                                               QStringLiteral("Mettre en pause"),
                                               QStringLiteral("&Mélanger avant la lecture"),
                                               QStringLiteral("Aucune"),
                                               QStringLiteral("&Configuration"),
                                               QStringLiteral("&Préférences…")};
    }

    void editorSpeaksTheDesktopsLanguage()
    {
        QFETCH(QStringList, uiLanguages);
        QFETCH(QStringList, texts);
        QVERIFY(!Translations::install(QStringLiteral("vendel-music-plugin"), uiLanguages).isEmpty());
        const auto controller = openEditor(QString());
        Translations::install(QString(), {QStringLiteral("C")});
        const Controls ui(*controller);
        auto* preferences = controller->window()->findChild<QAction*>(QStringLiteral("showPreferences:"));
        QVERIFY(preferences);
        QMenu* menu = nullptr;
        for (QObject* object : preferences->associatedObjects()) {
            menu = menu != nullptr ? menu : qobject_cast<QMenu*>(object);
        }
        QVERIFY(menu);
        QCOMPARE((QStringList{controller->window()->windowTitle(), ui.actionLabel->text(),
                              ui.playlistLabel->text(), ui.action->itemText(0), ui.action->itemText(1),
                              ui.shuffle->text(), ui.playlist->lineEdit()->placeholderText(), menu->title(),
                              preferences->text()}),
                 texts);
    }

    void preferencesActionIsInAMenuWithAShortcutAndCallsTheConfigureHandler()
    {
        int configures = 0;
        PluginController& controller = App::shared().vendelPlugin().actionController;
        const auto previous = std::exchange(controller.onConfigure, [&] { ++configures; });
        const auto window = openEditor(QString());
        auto* action = window->window()->findChild<QAction*>(QStringLiteral("showPreferences:"));
        QVERIFY(action);
        QCOMPARE(action->shortcut(), QKeySequence(QStringLiteral("Ctrl+,")));
        bool inMenu = false;
        for (QObject* object : action->associatedObjects()) {
            inMenu = inMenu || qobject_cast<QMenu*>(object) != nullptr;
        }
        QVERIFY(inMenu);
        action->trigger();
        QCOMPARE(configures, 1);
        QVERIFY(QTest::qWaitForWindowActive(window->window()));
        QTest::keyClick(window->window(), Qt::Key_Comma, Qt::ControlModifier);
        controller.onConfigure = previous;
        QCOMPARE(configures, 2);
    }

    void everyControlIsNamedAndTabFollowsTheLayout()
    {
        const auto controller = openEditor(QString());
        const Controls ui(*controller);
        QCOMPARE(ui.actionLabel->buddy(), ui.action);
        QCOMPARE(ui.playlistLabel->buddy(), ui.playlist);
        QCOMPARE(ui.action->accessibleName(), QStringLiteral("Action"));
        QCOMPARE(ui.playlist->accessibleName(), QStringLiteral("Playlist"));
        QVERIFY(!ui.shuffle->text().isEmpty());

        QVERIFY(QTest::qWaitForWindowActive(controller->window()));
        ui.action->setFocus();
        QCOMPARE(QApplication::focusWidget(), ui.action);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), ui.playlist);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), ui.shuffle);
    }

    void closingOneOfTwoWindowsKeepsRunningAndClosingTheLastTerminates()
    {
        const auto first = openEditor(QString());
        const auto second = openEditor(QString());
        QVERIFY(first->window()->close());
        QCOMPARE(services->terminateRequests, 0);
        QVERIFY(second->window()->close());
        QCOMPARE(services->terminateRequests, 1);
    }

    void minimisedWindowCountsAsShown()
    {
        const auto shown = openEditor(QString());
        const auto minimised = openEditor(QString());
        minimised->window()->showMinimized();
        QTRY_VERIFY(minimised->window()->isMinimized());
        QVERIFY(shown->window()->close());
        QCOMPARE(services->terminateRequests, 0);
        QVERIFY(minimised->window()->close());
        QCOMPARE(services->terminateRequests, 1);
    }

    void hiddenWindowDoesNotCount()
    {
        const auto hidden = makeController();
        const auto shown = openEditor(QString());
        QVERIFY(shown->window()->close());
        QCOMPARE(services->terminateRequests, 1);
    }
};

QTEST_MAIN(MainWindowControllerTest)
#include "MainWindowControllerTest.moc"
