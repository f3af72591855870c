// Failures shown in the window, above the list, until the user dismisses them: never a dialog that stops
// the work.
#pragma once

#include <QStringList>
#include <QWidget>

class QVBoxLayout;

namespace VendelHost {

class MessageArea : public QWidget
{
    Q_OBJECT

public:
    // The newest stay when there are more.
    static constexpr int maxMessages = 4;

    explicit MessageArea(QWidget* parent = nullptr);

    // Shown as plain text; a message the same as one shown moves to the end instead of showing twice.
    void add(const QString& message);
    void clear();
    // The messages shown, oldest first.
    QStringList messages() const;

private:
    void remove(QWidget* row);

    QVBoxLayout* m_rows;
};

} // namespace VendelHost
