// Titles sort as people sort words (TitleQuery::titleOrder); equal titles keep the order the actions were
// made in.
#include "ActionFilter.h"

#include "ActionListModel.h"

namespace VendelHost {

ActionFilter::ActionFilter(QObject* parent)
    : QSortFilterProxyModel(parent), m_collator(TitleQuery::titleOrder())
{
    setSortRole(Qt::DisplayRole);
    setDynamicSortFilter(true);
    sort(ActionListModel::TitleColumn);
}

void ActionFilter::setQuery(const QString& text)
{
    if (text == m_text) {
        return;
    }
    m_text = text;
    m_query = TitleQuery(text);
    invalidateFilter();
}

bool ActionFilter::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QModelIndex title = sourceModel()->index(sourceRow, ActionListModel::TitleColumn, sourceParent);
    return m_query.matches(title.data(Qt::DisplayRole).toString());
}

bool ActionFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const int order =
        m_collator.compare(left.data(Qt::DisplayRole).toString(), right.data(Qt::DisplayRole).toString());
    return order != 0 ? order < 0 : left.row() < right.row();
}

} // namespace VendelHost
