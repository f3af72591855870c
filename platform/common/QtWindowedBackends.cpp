// The windowed backends where the toolkit's own windows and message boxes serve: the window list from
// the GUI application, alerts in message boxes.
#include <VendelSDK/QtGuiApplicationServices.h>
#include <VendelSDK/WidgetAlertPresenter.h>
#include <VendelSDK/WindowedBackends.h>

namespace VendelSDK {

std::unique_ptr<ApplicationServices> makePlatformWindowedApplicationServices()
{
    return std::make_unique<QtGuiApplicationServices>();
}

std::unique_ptr<AlertPresenter> makePlatformWindowedAlertPresenter()
{
    return std::make_unique<WidgetAlertPresenter>();
}

} // namespace VendelSDK
