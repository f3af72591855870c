// A window around one link set: the action's editor, or the preferences with the links every action adds.
#pragma once

#include "LinkSet.h"

#include <QWidget>

#include <functional>

namespace LinkShelf {

class LinkSetEditor;

class LinkSetWindow : public QWidget
{
    Q_OBJECT

public:
    // `changed` gets the set after each edit; `footer`, if given, goes below the table.
    LinkSetWindow(const QString& title, const QString& heading, const LinkSet& set,
                  std::function<void(const LinkSet&)> changed, QWidget* footer = nullptr);

    LinkSetEditor& editor() const { return *m_editor; }

private:
    LinkSetEditor* m_editor;
};

} // namespace LinkShelf
