// The actions as the window lists them: icon and title, then the plugin's display name; titles are edited in
// place.
#pragma once

#include "ActionEntries.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

namespace VendelHost {

class ActionListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        TitleColumn,
        PluginColumn,
        ColumnCount,
    };
    enum Role
    {
        IdRole = Qt::UserRole,
        PluginRole,
    };

    explicit ActionListModel(QObject* parent = nullptr);

    void setEntries(const ActionEntries& entries);
    const ActionEntries& entries() const { return m_entries; }
    // The row of the action, or -1.
    int rowOf(const QString& actionID) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // A title edited in place is asked for (renameRequested) and shown until the host's next listing.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

Q_SIGNALS:
    void renameRequested(const QString& actionID, const QString& title);

private:
    QIcon icon(const QString& name) const;

    ActionEntries m_entries;
    mutable QHash<QString, QIcon> m_icons;
};

} // namespace VendelHost
