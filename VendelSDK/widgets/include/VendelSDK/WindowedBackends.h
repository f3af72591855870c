// The backends of a windowed application: its services and its alerts, chosen for the platform.
#pragma once

#include <VendelSDK/AlertPresenter.h>
#include <VendelSDK/ApplicationServices.h>

#include <memory>

namespace VendelSDK {

// The windowed backends of the platform this build targets; CMake picks the implementation. Both need
// the windowed application object to exist.
std::unique_ptr<ApplicationServices> makePlatformWindowedApplicationServices();
std::unique_ptr<AlertPresenter> makePlatformWindowedAlertPresenter();

} // namespace VendelSDK
