// The window system moves the window where it can, which keeps its snapping and edge rules; otherwise the
// window follows the pointer.
#include "WindowBackgroundMover.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace MusicPlugin {

WindowBackgroundMover::WindowBackgroundMover(QWidget& background)
    : QObject(&background), m_background(background)
{
    m_background.installEventFilter(this);
}

bool WindowBackgroundMover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &m_background) {
        return false;
    }
    QWidget* const window = m_background.window();
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() != Qt::LeftButton) {
            return false;
        }
        if (QWindow* handle = window->windowHandle(); handle && handle->startSystemMove()) {
            return true;
        }
        m_grabOffset = press->globalPosition().toPoint() - window->frameGeometry().topLeft();
        return true;
    }
    case QEvent::MouseMove: {
        const auto* move = static_cast<QMouseEvent*>(event);
        if (!m_grabOffset || !move->buttons().testFlag(Qt::LeftButton)) {
            return false;
        }
        window->move(move->globalPosition().toPoint() - *m_grabOffset);
        return true;
    }
    case QEvent::MouseButtonRelease:
        if (!m_grabOffset) {
            return false;
        }
        m_grabOffset.reset();
        return true;
    default:
        return false;
    }
}

} // namespace MusicPlugin
