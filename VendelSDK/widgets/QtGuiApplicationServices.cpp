// Reads the window list of the GUI application; kept apart so that a run never loads the GUI libraries.
#include <VendelSDK/QtGuiApplicationServices.h>

#include <VendelSDK/ConfigWriteBack.h>

#include <QGuiApplication>
#include <QSessionManager>
#include <QWindow>

namespace VendelSDK {

QtGuiApplicationServices::QtGuiApplicationServices(QObject* parent) : QtApplicationServices(parent)
{
    if (auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        connect(app, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { commitData(); });
    }
}

void QtGuiApplicationServices::commitData()
{
    ConfigWriteBack::carryOutPendingWrites();
}

QList<WindowState> QtGuiApplicationServices::windows() const
{
    QList<WindowState> states;
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return states;
    }
    for (const QWindow* window : QGuiApplication::topLevelWindows()) {
        states.append({window->isVisible(), window->windowStates().testFlag(Qt::WindowMinimized)});
    }
    return states;
}

} // namespace VendelSDK
