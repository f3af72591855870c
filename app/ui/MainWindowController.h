// The action editor's window: the form "Main", its controls bound to an EditorViewController.
#pragma once

#include "EditorViewController.h"
#include "WindowController.h"

#include <QPointer>

#include <memory>

class QMainWindow;

namespace Ui {
class Main;
} // namespace Ui

namespace MusicPlugin {

class MainWindowController : public WindowController
{
    Q_OBJECT

public:
    // The scene "Edit Window Controller": an editor with the platform's playlists.
    explicit MainWindowController(QObject* parent = nullptr);
    // Shows `content`, which the window controller takes over.
    explicit MainWindowController(EditorViewController* content, QObject* parent = nullptr);
    ~MainWindowController() override;

    void showWindow() override;
    QObject* contentViewController() const override;
    EditorViewController* editorViewController() const { return m_content; }
    QMainWindow* window() const { return m_window.get(); }

public Q_SLOTS:
    // "showPreferences:": opens the plugin's preferences. A window without content is a programming error
    // and stops the process.
    void showPreferences();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void windowDidLoad();
    // The last window shown to close ends the application; a minimised one counts as shown.
    void windowWillClose();

    void bindControls();
    void bindPlaylistStore();
    void showActionIndex();
    void showPlaylists();
    void showSelectedPlaylist();
    void showShouldShuffle();

    QPointer<EditorViewController> m_content;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<Ui::Main> m_form;
    QMetaObject::Connection m_playlistsConnection;
};

} // namespace MusicPlugin
