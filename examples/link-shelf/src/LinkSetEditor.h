// A table of links to edit: kind, name and URL of each, with buttons to add and remove rows.
#pragma once

#include "LinkSet.h"

#include <QWidget>

class QTableWidget;

namespace LinkShelf {

class LinkSetEditor : public QWidget
{
    Q_OBJECT

public:
    explicit LinkSetEditor(QWidget* parent = nullptr);

    // Shows the set; emits nothing.
    void setLinkSet(const LinkSet& set);
    // The rows that make a link the host can take, in order. A row without a name or with an invalid URL
    // is left out, and marked, until it is mended.
    LinkSet linkSet() const;

    QTableWidget& table() const { return *m_table; }
    // Adds an empty website row and starts editing its name.
    void addRow();
    // Removes the selected rows.
    void removeSelectedRows();

Q_SIGNALS:
    // The user changed a row, added or removed one.
    void changed();

private:
    void appendRow(const VendelSDK::Resource& link);
    void markRow(int row);

    QTableWidget* m_table;
    bool m_filling = false;
};

} // namespace LinkShelf
