// Each message is a row of its own: the text, which can be selected and copied, and a button that dismisses
// it.
#include "MessageArea.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace VendelHost {

namespace {

constexpr auto messageProperty = "message";

} // namespace

MessageArea::MessageArea(QWidget* parent) : QWidget(parent), m_rows(new QVBoxLayout(this))
{
    m_rows->setContentsMargins(0, 0, 0, 0);
    setVisible(false);
}

void MessageArea::add(const QString& message)
{
    for (int index = 0; index < m_rows->count(); ++index) {
        QWidget* row = m_rows->itemAt(index)->widget();
        if (row->property(messageProperty).toString() == message) {
            m_rows->removeWidget(row);
            m_rows->addWidget(row);
            return;
        }
    }
    auto* row = new QFrame(this);
    row->setProperty(messageProperty, message);
    row->setFrameShape(QFrame::StyledPanel);
    row->setAutoFillBackground(true);
    QPalette palette = row->palette();
    palette.setColor(QPalette::Window, QColor(0xfc, 0xe8, 0xe6));
    palette.setColor(QPalette::WindowText, QColor(0x5f, 0x21, 0x20));
    row->setPalette(palette);
    auto* layout = new QHBoxLayout(row);
    auto* text = new QLabel(message, row);
    // Titles and names are the user's own texts: never read as markup.
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(text, 1);
    auto* dismiss = new QToolButton(row);
    //: Button that removes a message from the window
    dismiss->setText(tr("Dismiss"));
    dismiss->setAutoRaise(true);
    connect(dismiss, &QToolButton::clicked, this, [this, row] { remove(row); });
    layout->addWidget(dismiss, 0, Qt::AlignTop);
    m_rows->addWidget(row);
    while (m_rows->count() > maxMessages) {
        remove(m_rows->itemAt(0)->widget());
    }
    setVisible(true);
}

void MessageArea::clear()
{
    while (m_rows->count() > 0) {
        remove(m_rows->itemAt(0)->widget());
    }
}

QStringList MessageArea::messages() const
{
    QStringList shown;
    for (int index = 0; index < m_rows->count(); ++index) {
        shown.append(m_rows->itemAt(index)->widget()->property(messageProperty).toString());
    }
    return shown;
}

void MessageArea::remove(QWidget* row)
{
    m_rows->removeWidget(row);
    row->deleteLater();
    setVisible(m_rows->count() > 0);
}

} // namespace VendelHost
