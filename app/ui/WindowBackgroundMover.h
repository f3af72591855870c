// Moves a window when the user drags its background, as windows without a title bar to grab need.
#pragma once

#include <QObject>
#include <QPoint>

#include <optional>

class QWidget;

namespace MusicPlugin {

class WindowBackgroundMover : public QObject
{
    Q_OBJECT

public:
    // Watches `background`, a widget of the window to move; presses that its child controls take are not
    // seen, so only the background itself and passive children such as labels start a drag.
    explicit WindowBackgroundMover(QWidget& background);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_background;
    // Where the pointer holds the window's frame while a drag is moved by hand.
    std::optional<QPoint> m_grabOffset;
};

} // namespace MusicPlugin
