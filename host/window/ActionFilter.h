// The window's list as the user filters it: the actions whose titles hold every word typed, in any case and
// with or without accents, sorted by title as people sort words.
#pragma once

#include "TitleQuery.h"

#include <QCollator>
#include <QSortFilterProxyModel>

namespace VendelHost {

class ActionFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ActionFilter(QObject* parent = nullptr);

    void setQuery(const QString& text);
    const QString& query() const { return m_text; }

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QString m_text;
    TitleQuery m_query{QString()};
    QCollator m_collator;
};

} // namespace VendelHost
