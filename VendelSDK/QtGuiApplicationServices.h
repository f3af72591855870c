// Application services of a windowed Qt application: the core services plus the real window list.
#pragma once

#include "QtApplicationServices.h"

namespace VendelSDK {

class QtGuiApplicationServices : public QtApplicationServices
{
    Q_OBJECT

public:
    using QtApplicationServices::QtApplicationServices;

    // Every top-level window of the GUI application, in its list order.
    QList<WindowState> windows() const override;
};

} // namespace VendelSDK
