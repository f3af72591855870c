// Each control calls the editor's setter, as a binding would; the editor's change signals update the
// controls, with their own signals blocked so that showing a value never writes it back.
#include "MainWindowController.h"

#include "ui_Main.h"

#include "WindowBackgroundMover.h"

#include "App.h"
#include "EditorViewController.h"

#include <VendelSDK/FatalError.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/WindowConfiguration.h>

#include <QCloseEvent>
#include <QCompleter>
#include <QLineEdit>
#include <QMainWindow>
#include <QSignalBlocker>

namespace MusicPlugin {

MainWindowController::MainWindowController(QObject* parent)
    : MainWindowController(new EditorViewController, parent)
{}

MainWindowController::MainWindowController(EditorViewController* content, QObject* parent)
    : WindowController(parent), m_content(content), m_window(std::make_unique<QMainWindow>()),
      m_form(std::make_unique<Ui::Main>())
{
    if (m_content) {
        m_content->setParent(this);
    }
    m_form->setupUi(m_window.get());
    windowDidLoad();
}

MainWindowController::~MainWindowController() = default;

void MainWindowController::showWindow()
{
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

QObject* MainWindowController::contentViewController() const
{
    return m_content;
}

void MainWindowController::windowDidLoad()
{
    if (!m_window) {
        VendelSDK::fatalError(QStringLiteral("The editor has no window."), "app/ui/MainWindowController",
                              __LINE__);
    }
    new WindowBackgroundMover(*m_form->editorView);
    VendelSDK::WindowConfiguration::configure(*m_window);
    m_window->installEventFilter(this);

    // Menus and tests find the action by its selector's name.
    m_form->showPreferencesAction->setObjectName(QStringLiteral("showPreferences:"));
    connect(m_form->showPreferencesAction, &QAction::triggered, this, &MainWindowController::showPreferences);

    QComboBox* const playlists = m_form->playlistComboBox;
    //: Placeholder of the playlist field while no playlist is chosen
    playlists->lineEdit()->setPlaceholderText(QCoreApplication::translate("MainWindowController", "None"));
    // Playlist names are matched exactly when the action runs, so completion must not change their case.
    playlists->completer()->setCaseSensitivity(Qt::CaseSensitive);
    bindControls();
}

void MainWindowController::showPreferences()
{
    if (!contentViewController()) {
        VendelSDK::fatalError(QStringLiteral("The editor window has no content."),
                              "app/ui/MainWindowController", __LINE__);
    }
    App::shared().vendelPlugin().actionController.onConfigure();
}

bool MainWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window.get() && event->type() == QEvent::Close) {
        windowWillClose();
    }
    return WindowController::eventFilter(watched, event);
}

void MainWindowController::windowWillClose()
{
    // The closing window still counts itself: 1 means no other window is shown.
    if (App::visibleWindowsCount() == 1) {
        VendelSDK::Platform::applicationServices().terminate();
    }
}

void MainWindowController::bindControls()
{
    if (!m_content) {
        return;
    }
    EditorViewController* const editor = m_content;
    connect(editor, &EditorViewController::actionIndexChanged, this, &MainWindowController::showActionIndex);
    connect(editor, &EditorViewController::selectedPlaylistChanged, this,
            &MainWindowController::showSelectedPlaylist);
    connect(editor, &EditorViewController::shouldShuffleChanged, this,
            &MainWindowController::showShouldShuffle);
    connect(editor, &EditorViewController::playlistStoreChanged, this,
            &MainWindowController::bindPlaylistStore);

    connect(m_form->actionComboBox, &QComboBox::currentIndexChanged, editor, [editor](int index) {
        if (index >= 0) {
            editor->setActionIndex(index);
        }
    });
    // An emptied field means no playlist, as a field that was never filled.
    connect(m_form->playlistComboBox, &QComboBox::currentTextChanged, editor, [editor](const QString& text) {
        editor->setSelectedPlaylist(text.isEmpty() ? std::nullopt : std::optional<QString>(text));
    });
    connect(m_form->shuffleCheckBox, &QCheckBox::toggled, editor, &EditorViewController::setShouldShuffle);

    bindPlaylistStore();
    showActionIndex();
    showShouldShuffle();
}

void MainWindowController::bindPlaylistStore()
{
    disconnect(m_playlistsConnection);
    if (PlaylistStore* store = m_content ? m_content->playlistStore() : nullptr) {
        m_playlistsConnection =
            connect(store, &PlaylistStore::playlistsChanged, this, &MainWindowController::showPlaylists);
    }
    showPlaylists();
}

void MainWindowController::showActionIndex()
{
    QComboBox* const combo = m_form->actionComboBox;
    const QSignalBlocker blocker(combo);
    // An index that names no operation (a stored 5, say) shows no choice rather than a wrong one.
    const qint64 index = m_content->actionIndex();
    combo->setCurrentIndex(index >= 0 && index < combo->count() ? int(index) : -1);
}

void MainWindowController::showPlaylists()
{
    QComboBox* const combo = m_form->playlistComboBox;
    {
        const QSignalBlocker blocker(combo);
        combo->clear();
        if (const PlaylistStore* store = m_content->playlistStore()) {
            combo->addItems(store->playlists());
        }
    }
    // Refilling the list moves the field to the first name; the chosen one is shown again.
    showSelectedPlaylist();
}

void MainWindowController::showSelectedPlaylist()
{
    QComboBox* const combo = m_form->playlistComboBox;
    const QString text = m_content->selectedPlaylist().value_or(QString());
    const QSignalBlocker blocker(combo);
    // A name the user is typing is already shown; setting it again would move the cursor.
    if (combo->currentText() == text) {
        return;
    }
    // A name that is no longer among the playlists stays in the field as it was stored.
    combo->setCurrentIndex(combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    combo->setEditText(text);
}

void MainWindowController::showShouldShuffle()
{
    const QSignalBlocker blocker(m_form->shuffleCheckBox);
    m_form->shuffleCheckBox->setChecked(m_content->shouldShuffle());
}

} // namespace MusicPlugin
