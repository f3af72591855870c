// The window level of a plugin's windows: above other applications' floating windows.
#pragma once

#include <VendelSDK/WidgetsExport.h>

class QWidget;

namespace VendelSDK {

/// How a plugin's windows float above other applications' windows.
class VENDELSDK_WIDGETS_EXPORT WindowConfiguration
{
public:
    WindowConfiguration() = delete;

    /// Keeps the window above others, floating panels included. Call it before the window is first shown:
    /// changing the flags of a shown window hides it.
    static void configure(QWidget& window);
};

} // namespace VendelSDK
