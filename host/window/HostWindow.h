// The host's window: the actions listed with their icons, titles and plugins, filtered as the user types, and
// run, edited, renamed, deleted and made from it, all from the keyboard too.
#pragma once

#include "ActionFilter.h"
#include "ActionListModel.h"

#include <QMainWindow>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedWidget;
class QTreeView;

namespace VendelHost {

class ActionsClient;
class MessageArea;

class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HostWindow(ActionsClient& client, QWidget* parent = nullptr);

    void setFilter(const QString& text);
    // The selected action's identifier, or empty.
    QString currentAction() const;
    MessageArea* messages() const { return m_messages; }

    void runCurrent();
    void editCurrent();
    void renameCurrent();
    // Asks first, in a window-modal question that the event loop keeps answering around.
    void deleteCurrent();
    void createAction();
    void configureCurrentPlugin();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void listed();
    void select(const QString& actionID);
    void selectFirstIfNone();
    void updateActions();
    void updatePluginMenu();

    ActionsClient& m_client;
    ActionListModel m_model;
    ActionFilter m_filter;
    QLineEdit* m_filterField;
    QTreeView* m_view;
    QStackedWidget* m_listOrNote;
    QLabel* m_note;
    MessageArea* m_messages;
    QMenu* m_pluginMenu;
    QAction* m_run;
    QAction* m_edit;
    QAction* m_rename;
    QAction* m_delete;
    QAction* m_preferences;
    // Selected once the listing that holds it has come.
    QString m_selectWhenListed;
    // A title is being edited in place: a listing then would close the editor.
    bool m_editing = false;
    bool m_listedWhileEditing = false;
    bool m_listedOnce = false;
};

} // namespace VendelHost
