// Application services of a windowed Qt application: the core services plus the real window list.
#pragma once

#include <VendelSDK/QtApplicationServices.h>
#include <VendelSDK/WidgetsExport.h>

namespace VendelSDK {

/// The application services of a windowed Qt application (QApplication).
class VENDELSDK_WIDGETS_EXPORT QtGuiApplicationServices : public QtApplicationServices
{
    Q_OBJECT

public:
    /// Answers the session manager's end-of-session request of the GUI application, if there is one.
    explicit QtGuiApplicationServices(QObject* parent = nullptr);

    /// Every top-level window of the GUI application, in its list order.
    QList<WindowState> windows() const override;

    /// The session is ending: a logout may not wait for the delayed writes, and may end the process without
    /// a termination request, so the pending configuration writes are carried out now.
    void commitData();
};

} // namespace VendelSDK
