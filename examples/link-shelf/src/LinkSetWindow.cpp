// The window takes the plugin's window level before it is first shown, as every plugin window does.
#include "LinkSetWindow.h"

#include "LinkSetEditor.h"

#include <VendelSDK/WindowConfiguration.h>

#include <QLabel>
#include <QVBoxLayout>

namespace LinkShelf {

LinkSetWindow::LinkSetWindow(const QString& title, const QString& heading, const LinkSet& set,
                             std::function<void(const LinkSet&)> changed, QWidget* footer)
    : m_editor(new LinkSetEditor(this))
{
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(heading, this));
    layout->addWidget(m_editor);
    if (footer != nullptr) {
        layout->addWidget(footer);
    }
    m_editor->setLinkSet(set);
    connect(m_editor, &LinkSetEditor::changed, this,
            [this, changed = std::move(changed)] { changed(m_editor->linkSet()); });
    resize(560, 320);
    VendelSDK::WindowConfiguration::configure(*this);
}

} // namespace LinkShelf
