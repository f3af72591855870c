// Asks which installed plugin a new action is for, and for its title, which may stay empty.
#pragma once

#include "ActionEntries.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

namespace VendelHost {

class NewActionDialog : public QDialog
{
    Q_OBJECT

public:
    NewActionDialog(const PluginEntries& plugins, QWidget* parent = nullptr);

    // The chosen plugin's name.
    QString plugin() const;
    // As typed; the empty title gives the action the default one.
    QString title() const;

private:
    QComboBox* m_plugins;
    QLineEdit* m_title;
};

} // namespace VendelHost
