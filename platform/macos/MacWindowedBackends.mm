// The windowed backends of macOS: the application's own services and native alert panels.
#include "CocoaAlertPresenter.h"
#include "MacApplicationServices.h"

#include <VendelSDK/WindowedBackends.h>

namespace VendelSDK {

std::unique_ptr<ApplicationServices> makePlatformWindowedApplicationServices()
{
    return std::make_unique<MacApplicationServices>();
}

std::unique_ptr<AlertPresenter> makePlatformWindowedAlertPresenter()
{
    return std::make_unique<CocoaAlertPresenter>();
}

} // namespace VendelSDK
