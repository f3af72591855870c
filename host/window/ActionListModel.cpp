// Icons are a themed icon's name or an absolute path, as the plugin's desktop entry gave them.
#include "ActionListModel.h"

#include <QDir>

namespace VendelHost {

ActionListModel::ActionListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ActionListModel::setEntries(const ActionEntries& entries)
{
    beginResetModel();
    m_entries = entries;
    endResetModel();
}

int ActionListModel::rowOf(const QString& actionID) const
{
    for (qsizetype row = 0; row < m_entries.size(); ++row) {
        if (m_entries.at(row).id == actionID) {
            return int(row);
        }
    }
    return -1;
}

int ActionListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

int ActionListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ActionListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size()) {
        return {};
    }
    const ActionEntry& entry = m_entries.at(index.row());
    switch (role) {
    case IdRole:
        return entry.id;
    case PluginRole:
        return entry.plugin;
    case Qt::DisplayRole:
    case Qt::EditRole:
        // Plain text: the item views draw text as it is, never as markup.
        return index.column() == TitleColumn ? entry.title : entry.pluginDisplayName;
    case Qt::DecorationRole:
        return index.column() == TitleColumn ? QVariant(icon(entry.pluginIcon)) : QVariant();
    default:
        return {};
    }
}

QVariant ActionListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    if (section == TitleColumn) {
        //: Heading of the list's column of action titles
        return tr("Action");
    }
    //: Heading of the list's column of plugin names
    return tr("Plugin");
}

Qt::ItemFlags ActionListModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() == TitleColumn) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

bool ActionListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() != TitleColumn ||
        index.row() >= m_entries.size()) {
        return false;
    }
    ActionEntry& entry = m_entries[index.row()];
    const QString title = value.toString();
    if (title == entry.title) {
        return false;
    }
    // An emptied title asks for the default one, which only the host knows; the old one shows until then.
    if (!title.trimmed().isEmpty()) {
        entry.title = title;
        Q_EMIT dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    }
    Q_EMIT renameRequested(entry.id, title);
    return true;
}

QIcon ActionListModel::icon(const QString& name) const
{
    const auto found = m_icons.constFind(name);
    if (found != m_icons.constEnd()) {
        return *found;
    }
    const QIcon generic = QIcon::fromTheme(QStringLiteral("application-x-executable"));
    QIcon made = QDir::isAbsolutePath(name) ? QIcon(name) : QIcon::fromTheme(name, generic);
    if (made.isNull()) {
        made = generic;
    }
    m_icons.insert(name, made);
    return made;
}

} // namespace VendelHost
