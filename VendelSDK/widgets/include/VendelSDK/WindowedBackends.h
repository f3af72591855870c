// The backends of a windowed application: its services and its alerts, chosen for the platform.
#pragma once

#include <VendelSDK/AlertPresenter.h>
#include <VendelSDK/ApplicationServices.h>
#include <VendelSDK/WidgetsExport.h>

#include <memory>

namespace VendelSDK {

/// The windowed backends of the platform this build targets; CMake picks the implementation. Both need
/// the windowed application object to exist.
VENDELSDK_WIDGETS_EXPORT std::unique_ptr<ApplicationServices> makePlatformWindowedApplicationServices();
/// The windowed alert presenter of the platform this build targets; needs the windowed application object.
VENDELSDK_WIDGETS_EXPORT std::unique_ptr<AlertPresenter> makePlatformWindowedAlertPresenter();

} // namespace VendelSDK
