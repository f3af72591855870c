// Every request goes to the served host and is answered later, so nothing here waits; the list follows the
// host's listings, and the selection follows the action, not the row.
#include "HostWindow.h"

#include "ActionsClient.h"
#include "MessageArea.h"
#include "NewActionDialog.h"

#include <QAbstractItemDelegate>
#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace VendelHost {

namespace {

QAction* makeAction(QObject* parent, const QString& text, const QString& icon, const QKeySequence& keys)
{
    auto* action = new QAction(QIcon::fromTheme(icon), text, parent);
    action->setShortcut(keys);
    return action;
}

// A plugin's display name in a menu: its ampersands are its own, not mnemonics.
QString menuText(const QString& text)
{
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

} // namespace

HostWindow::HostWindow(ActionsClient& client, QWidget* parent)
    : QMainWindow(parent), m_client(client), m_filterField(new QLineEdit(this)), m_view(new QTreeView(this)),
      m_listOrNote(new QStackedWidget(this)), m_note(new QLabel(this)), m_messages(new MessageArea(this))
{
    //: Title of the host's window, and its name in the desktop's menu
    setWindowTitle(tr("Vendel Actions"));

    m_filter.setSourceModel(&m_model);
    m_view->setModel(&m_filter);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    // Renaming is F2's, and a double click runs, as Enter does.
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->header()->setStretchLastSection(false);
    m_view->header()->setSectionResizeMode(ActionListModel::TitleColumn, QHeaderView::Stretch);
    m_view->header()->setSectionResizeMode(ActionListModel::PluginColumn, QHeaderView::ResizeToContents);
    m_view->header()->setSectionsClickable(false);
    connect(m_view, &QTreeView::doubleClicked, this, &HostWindow::runCurrent);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &HostWindow::updateActions);
    // A listing that came while a title was being edited waits until the edit is over.
    connect(m_view->itemDelegate(), &QAbstractItemDelegate::closeEditor, this, [this] {
        m_editing = false;
        if (m_listedWhileEditing) {
            QMetaObject::invokeMethod(this, &HostWindow::listed, Qt::QueuedConnection);
        }
    });
    connect(&m_model, &ActionListModel::renameRequested, &m_client, &ActionsClient::rename);

    //: Placeholder of the filter field above the list
    m_filterField->setPlaceholderText(tr("Filter by title"));
    m_filterField->setClearButtonEnabled(true);
    m_filterField->installEventFilter(this);
    connect(m_filterField, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_filter.setQuery(text);
        selectFirstIfNone();
        updateActions();
    });

    m_note->setTextFormat(Qt::PlainText);
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setWordWrap(true);
    m_listOrNote->addWidget(m_view);
    m_listOrNote->addWidget(m_note);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->addWidget(m_filterField);
    layout->addWidget(m_messages);
    layout->addWidget(m_listOrNote, 1);
    setCentralWidget(central);

    //: Menu and toolbar: make a new action
    QAction* create = makeAction(this, tr("&New Action…"), QStringLiteral("document-new"),
                                 QKeySequence(Qt::CTRL | Qt::Key_N));
    connect(create, &QAction::triggered, this, &HostWindow::createAction);
    //: Menu and toolbar: run the selected action (Enter)
    m_run = makeAction(this, tr("&Run"), QStringLiteral("media-playback-start"), {});
    // Enter runs in the list; in the filter field it runs too (see eventFilter), and in a title being
    // edited it ends the edit.
    m_run->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    m_run->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(m_run);
    connect(m_run, &QAction::triggered, this, &HostWindow::runCurrent);
    m_edit =
        //: Menu and toolbar: open the selected action in its plugin's editor
        makeAction(this, tr("&Edit…"), QStringLiteral("document-edit"), QKeySequence(Qt::CTRL | Qt::Key_E));
    connect(m_edit, &QAction::triggered, this, &HostWindow::editCurrent);
    //: Menu and toolbar: rename the selected action in place (F2)
    m_rename = makeAction(this, tr("Rena&me"), QStringLiteral("edit-rename"), QKeySequence(Qt::Key_F2));
    connect(m_rename, &QAction::triggered, this, &HostWindow::renameCurrent);
    //: Menu and toolbar: delete the selected action, after a question
    m_delete = makeAction(this, tr("&Delete…"), QStringLiteral("edit-delete"), QKeySequence(Qt::Key_Delete));
    // Only in the list: in a text field Delete deletes text.
    m_delete->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(m_delete);
    connect(m_delete, &QAction::triggered, this, &HostWindow::deleteCurrent);
    //: Menu and toolbar: open the preferences of the selected action's plugin
    m_preferences = makeAction(this, tr("Plugin &Preferences…"), QStringLiteral("preferences-other"),
                               QKeySequence(Qt::CTRL | Qt::Key_Comma));
    connect(m_preferences, &QAction::triggered, this, &HostWindow::configureCurrentPlugin);
    QAction* find =
        //: View menu: go to the filter field (Ctrl+F)
        makeAction(this, tr("&Filter"), QStringLiteral("edit-find"), QKeySequence(Qt::CTRL | Qt::Key_F));
    connect(find, &QAction::triggered, this, [this] {
        m_filterField->setFocus(Qt::ShortcutFocusReason);
        m_filterField->selectAll();
    });
    QAction* refresh =
        //: View menu: ask the host for the actions again (F5)
        makeAction(this, tr("&Refresh"), QStringLiteral("view-refresh"), QKeySequence(Qt::Key_F5));
    connect(refresh, &QAction::triggered, &m_client, &ActionsClient::refresh);
    QAction* close =
        //: Action menu: close the window
        makeAction(this, tr("&Close"), QStringLiteral("window-close"), QKeySequence(Qt::CTRL | Qt::Key_W));
    close->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_Q)});
    connect(close, &QAction::triggered, this, &QWidget::close);

    //: Menu title
    QMenu* actions = menuBar()->addMenu(tr("&Action"));
    actions->addActions({create, m_run, m_edit, m_rename, m_delete});
    actions->addSeparator();
    actions->addAction(m_preferences);
    actions->addSeparator();
    actions->addAction(close);
    //: Menu title
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addActions({find, refresh});
    //: Menu title: one entry per installed plugin, opening its preferences
    m_pluginMenu = menuBar()->addMenu(tr("&Plugins"));

    //: Name of the toolbar
    QToolBar* tools = addToolBar(tr("Actions"));
    tools->setObjectName(QStringLiteral("actions"));
    tools->setMovable(false);
    tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tools->addActions({create, m_run, m_edit, m_rename, m_delete, m_preferences});

    connect(&m_client, &ActionsClient::listed, this, &HostWindow::listed);
    connect(&m_client, &ActionsClient::failed, m_messages, &MessageArea::add);
    connect(&m_client, &ActionsClient::status, this,
            [this](const QString& message) { statusBar()->showMessage(message); });
    connect(&m_client, &ActionsClient::created, this, [this](const QString& actionID) {
        // A new action must show, whatever the filter would hide.
        m_filterField->clear();
        m_selectWhenListed = actionID;
    });
    statusBar();
    resize(640, 420);
    // Until the host's first listing has come, the list shows empty rather than the note that there are
    // no actions.
    updatePluginMenu();
    updateActions();
    m_view->setFocus();
}

void HostWindow::setFilter(const QString& text)
{
    m_filterField->setText(text);
}

QString HostWindow::currentAction() const
{
    const QModelIndex current = m_view->currentIndex();
    return current.isValid() ? current.data(ActionListModel::IdRole).toString() : QString();
}

void HostWindow::runCurrent()
{
    const QString id = currentAction();
    if (!id.isEmpty()) {
        m_client.run(id);
    }
}

void HostWindow::editCurrent()
{
    const QString id = currentAction();
    if (!id.isEmpty()) {
        m_client.edit(id);
    }
}

void HostWindow::renameCurrent()
{
    const QModelIndex current = m_view->currentIndex();
    if (current.isValid()) {
        m_view->setFocus();
        const QModelIndex title = current.siblingAtColumn(ActionListModel::TitleColumn);
        m_view->edit(title);
        m_editing = m_view->indexWidget(title) != nullptr;
    }
}

void HostWindow::deleteCurrent()
{
    const QString id = currentAction();
    const auto entry = m_client.action(id);
    if (!entry) {
        return;
    }
    //: Title of the question before deleting an action
    const QString title = tr("Delete Action");
    //: The question before deleting; %1 is the action's title
    const QString text = tr("Delete “%1”?").arg(entry->title);
    auto* question = new QMessageBox(QMessageBox::Question, title, text, QMessageBox::NoButton, this);
    question->setTextFormat(Qt::PlainText);
    //: Below the question before deleting an action
    question->setInformativeText(tr("Its settings are deleted with it."));
    //: Button of the question that deletes the action
    QPushButton* remove = question->addButton(tr("&Delete"), QMessageBox::DestructiveRole);
    QPushButton* cancel = question->addButton(QMessageBox::Cancel);
    question->setDefaultButton(cancel);
    question->setEscapeButton(cancel);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setWindowModality(Qt::WindowModal);
    connect(question, &QMessageBox::finished, this, [this, question, remove, id] {
        if (question->clickedButton() == remove) {
            m_client.remove(id);
        }
    });
    question->open();
}

void HostWindow::createAction()
{
    if (m_client.plugins().isEmpty()) {
        m_messages->add(
            //: Message when a new action is asked for and no plugin is installed
            tr("No plugin is installed yet: a plugin installs itself when it is started on its own."));
        return;
    }
    auto* dialog = new NewActionDialog(m_client.plugins(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    connect(dialog, &QDialog::accepted, this,
            [this, dialog] { m_client.create(dialog->plugin(), dialog->title()); });
    dialog->open();
}

void HostWindow::configureCurrentPlugin()
{
    const QModelIndex current = m_view->currentIndex();
    if (current.isValid()) {
        m_client.configure(current.data(ActionListModel::PluginRole).toString());
    }
}

bool HostWindow::event(QEvent* event)
{
    // Others change the actions too (the command line, other windows): coming back to the window shows
    // them as they are.
    if (event->type() == QEvent::WindowActivate) {
        m_client.refresh();
    }
    return QMainWindow::event(event);
}

bool HostWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_filterField && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            runCurrent();
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            // The selection moves while the typing goes on.
            QCoreApplication::sendEvent(m_view, event);
            return true;
        case Qt::Key_Escape:
            if (!m_filterField->text().isEmpty()) {
                m_filterField->clear();
                return true;
            }
            break;
        default:
            break;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void HostWindow::listed()
{
    m_listedWhileEditing = m_editing;
    if (m_listedWhileEditing) {
        return;
    }
    m_listedOnce = true;
    const QString wanted = m_selectWhenListed.isEmpty() ? currentAction() : m_selectWhenListed;
    m_model.setEntries(m_client.actions());
    if (m_model.rowOf(wanted) >= 0) {
        select(wanted);
        if (wanted == m_selectWhenListed) {
            m_selectWhenListed.clear();
        }
    }
    selectFirstIfNone();
    updatePluginMenu();
    updateActions();
}

void HostWindow::select(const QString& actionID)
{
    const QModelIndex source = m_model.index(m_model.rowOf(actionID), ActionListModel::TitleColumn);
    const QModelIndex shown = m_filter.mapFromSource(source);
    if (shown.isValid()) {
        m_view->setCurrentIndex(shown);
    }
}

void HostWindow::selectFirstIfNone()
{
    if (!m_view->currentIndex().isValid() && m_filter.rowCount() > 0) {
        m_view->setCurrentIndex(m_filter.index(0, ActionListModel::TitleColumn));
    }
}

void HostWindow::updateActions()
{
    const bool selected = m_view->currentIndex().isValid();
    for (QAction* action : {m_run, m_edit, m_rename, m_delete, m_preferences}) {
        action->setEnabled(selected);
    }
    if (m_model.rowCount() == 0) {
        //: Shown in place of the empty list
        m_note->setText(tr("There are no actions yet. Make one with New Action (Ctrl+N)."));
    } else if (m_filter.rowCount() == 0) {
        //: Shown in place of the list when the filter hides every action; %1 is the filter text
        m_note->setText(tr("No action's title holds “%1”.").arg(m_filterField->text()));
    }
    // When the list comes back from behind the note, the keys go to it, unless the user is typing a filter;
    // when it gives way to the note, they go to the filter. Otherwise the focus stays where the user put it.
    const bool listShows = m_filter.rowCount() > 0 || !m_listedOnce;
    const bool listShown = m_listOrNote->currentWidget() == m_view;
    const bool listHadFocus = m_view->hasFocus();
    m_listOrNote->setCurrentWidget(listShows ? static_cast<QWidget*>(m_view) : m_note);
    if (listShows && !listShown && m_filterField->text().isEmpty()) {
        m_view->setFocus();
    } else if (!listShows && listShown && (listHadFocus || !focusWidget())) {
        m_filterField->setFocus();
    }
}

void HostWindow::updatePluginMenu()
{
    m_pluginMenu->clear();
    for (const PluginEntry& plugin : m_client.plugins()) {
        const QString name = plugin.name;
        //: Entry of the Plugins menu; %1 is the plugin's display name
        QAction* configure = m_pluginMenu->addAction(tr("%1 Preferences…").arg(menuText(plugin.displayName)));
        connect(configure, &QAction::triggered, this, [this, name] { m_client.configure(name); });
    }
    m_pluginMenu->setEnabled(!m_client.plugins().isEmpty());
}

} // namespace VendelHost
