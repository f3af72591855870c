// Every edit is reported at once; the owner decides when it reaches the host (the providers' delayed write).
#include "LinkSetEditor.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <iterator>

namespace LinkShelf {

using VendelSDK::Resource;

namespace {

enum Column
{
    kindColumn,
    nameColumn,
    urlColumn
};

constexpr Resource::ResourceType kinds[] = {
    Resource::ResourceType::file,     Resource::ResourceType::folder,      Resource::ResourceType::website,
    Resource::ResourceType::terminal, Resource::ResourceType::application, Resource::ResourceType::url};

QString text(const QTableWidget& table, int row, int column)
{
    const QTableWidgetItem* item = table.item(row, column);
    return item != nullptr ? item->text().trimmed() : QString();
}

Resource rowLink(const QTableWidget& table, int row)
{
    Resource link;
    if (const auto* kind = qobject_cast<const QComboBox*>(table.cellWidget(row, kindColumn))) {
        link.type = kinds[kind->currentIndex()];
    }
    link.name = text(table, row, nameColumn);
    link.url = text(table, row, urlColumn);
    return link;
}

bool complete(const Resource& link)
{
    return !link.name.isEmpty() && LinkSet::isValid(link);
}

} // namespace

LinkSetEditor::LinkSetEditor(QWidget* parent) : QWidget(parent), m_table(new QTableWidget(0, 3, this))
{
    m_table->setObjectName(QStringLiteral("links"));
    m_table->setHorizontalHeaderLabels({
        //: Column of the kind of each link (website, folder, ...)
        tr("Kind"),
        //: Column of the name the host shows for each link
        tr("Name"),
        //: Column of the address of each link
        tr("URL"),
    });
    m_table->horizontalHeader()->setSectionResizeMode(urlColumn, QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);

    //: Button that adds a link
    auto* add = new QPushButton(tr("Add"), this);
    add->setObjectName(QStringLiteral("add"));
    //: Button that removes the selected links
    auto* remove = new QPushButton(tr("Remove"), this);
    remove->setObjectName(QStringLiteral("remove"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);
    layout->addLayout(buttons);

    connect(add, &QPushButton::clicked, this, &LinkSetEditor::addRow);
    connect(remove, &QPushButton::clicked, this, &LinkSetEditor::removeSelectedRows);
    connect(m_table, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (!m_filling) {
            markRow(item->row());
            Q_EMIT changed();
        }
    });
}

void LinkSetEditor::setLinkSet(const LinkSet& set)
{
    m_table->setRowCount(0);
    for (const Resource& link : set.links) {
        appendRow(link);
    }
}

LinkSet LinkSetEditor::linkSet() const
{
    LinkSet set;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        Resource link = rowLink(*m_table, row);
        if (complete(link)) {
            set.links.append(std::move(link));
        }
    }
    return set;
}

void LinkSetEditor::addRow()
{
    Resource link;
    link.type = Resource::ResourceType::website;
    appendRow(link);
    const int row = m_table->rowCount() - 1;
    m_table->setCurrentCell(row, nameColumn);
    m_table->editItem(m_table->item(row, nameColumn));
    // An empty row changes no link; it counts once it is filled in.
}

void LinkSetEditor::removeSelectedRows()
{
    QList<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows()) {
        rows.append(index.row());
    }
    if (rows.isEmpty()) {
        return;
    }
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : rows) {
        m_table->removeRow(row);
    }
    Q_EMIT changed();
}

void LinkSetEditor::appendRow(const Resource& link)
{
    m_filling = true;
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    auto* kind = new QComboBox(m_table);
    for (const Resource::ResourceType type : kinds) {
        kind->addItem(Resource::rawValue(type));
    }
    kind->setCurrentIndex(static_cast<int>(std::find(std::begin(kinds), std::end(kinds), link.type) - kinds));
    m_table->setCellWidget(row, kindColumn, kind);
    m_table->setItem(row, nameColumn, new QTableWidgetItem(link.name));
    m_table->setItem(row, urlColumn, new QTableWidgetItem(link.url));
    markRow(row);
    m_filling = false;
    connect(kind, &QComboBox::currentIndexChanged, this, [this, kind] {
        for (int r = 0; r < m_table->rowCount(); ++r) {
            if (m_table->cellWidget(r, kindColumn) == kind) {
                markRow(r);
            }
        }
        Q_EMIT changed();
    });
}

void LinkSetEditor::markRow(int row)
{
    QTableWidgetItem* url = m_table->item(row, urlColumn);
    if (url == nullptr) {
        return;
    }
    const bool wasFilling = m_filling;
    m_filling = true;
    const Resource link = rowLink(*m_table, row);
    const bool bad = !link.url.isEmpty() && !LinkSet::isValid(link);
    url->setForeground(bad ? QBrush(Qt::red) : QBrush());
    //: Tooltip of a link whose address is not a valid absolute URL; the link is not kept until it is
    url->setToolTip(bad ? tr("Not a valid URL: the link is not kept until it is mended.") : QString());
    m_filling = wasFilling;
}

} // namespace LinkShelf
