// The title field takes as many characters as a title may have; the host checks the rest.
#include "NewActionDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace VendelHost {

namespace {

// The host's limit on a title's length.
constexpr int maxTitleCharacters = 200;

} // namespace

NewActionDialog::NewActionDialog(const PluginEntries& plugins, QWidget* parent)
    : QDialog(parent), m_plugins(new QComboBox(this)), m_title(new QLineEdit(this))
{
    //: Title of the dialog that makes an action
    setWindowTitle(tr("New Action"));
    for (const PluginEntry& plugin : plugins) {
        m_plugins->addItem(plugin.displayName, plugin.name);
    }
    m_title->setMaxLength(maxTitleCharacters);
    //: Placeholder of the title field: an action without a title is shown with its plugin's name and a number
    m_title->setPlaceholderText(tr("Optional: the plugin's name and a number"));
    auto* form = new QFormLayout(this);
    //: Label of the list of installed plugins in the new action dialog
    form->addRow(tr("&Plugin:"), m_plugins);
    //: Label of the title field in the new action dialog
    form->addRow(tr("&Title:"), m_title);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    //: Button of the new action dialog
    QPushButton* create = buttons->addButton(tr("&Create"), QDialogButtonBox::AcceptRole);
    create->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    m_title->setFocus();
}

QString NewActionDialog::plugin() const
{
    return m_plugins->currentData().toString();
}

QString NewActionDialog::title() const
{
    return m_title->text();
}

} // namespace VendelHost
