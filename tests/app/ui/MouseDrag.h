// Drags with the mouse in a widget, by events, as a user's press, moves and release arrive.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace MusicPlugin::Testing {

// Presses `button` at `local` in `widget`, moves by `offset` in two steps and releases. The pointer's screen
// positions are fixed at the press: a window moving under the pointer does not move the pointer.
inline void mouseDrag(QWidget* widget, QPoint local, QPoint offset, Qt::MouseButton button = Qt::LeftButton)
{
    const QPoint global = widget->mapToGlobal(local);
    auto send = [widget, local, global](QEvent::Type type, QPoint by, Qt::MouseButton changed,
                                        Qt::MouseButtons held) {
        QMouseEvent event(type, QPointF(local + by), QPointF(global + by), changed, held, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    send(QEvent::MouseButtonPress, QPoint(), button, button);
    send(QEvent::MouseMove, offset / 2, Qt::NoButton, button);
    send(QEvent::MouseMove, offset, Qt::NoButton, button);
    send(QEvent::MouseButtonRelease, offset, button, Qt::NoButton);
}

} // namespace MusicPlugin::Testing
