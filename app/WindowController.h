// What a handler opens: a window with its content, kept alive by the application delegate.
#pragma once

#include <QObject>

namespace MusicPlugin {

class WindowController : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Shows the window and brings it to the front.
    virtual void showWindow() = 0;
    // The controller of the window's content; null when the window has none.
    virtual QObject* contentViewController() const = 0;
};

} // namespace MusicPlugin
