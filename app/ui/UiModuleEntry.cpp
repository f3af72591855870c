// The windowed module's entry: the widget application, its backends, and the storyboards' scenes.
#include "app/UiModule.h"

#include "VendelSDK/Platform.h"
#include "VendelSDK/QtGuiApplicationServices.h"
#include "VendelSDK/WidgetAlertPresenter.h"

#include <QApplication>

extern "C" Q_DECL_EXPORT QCoreApplication* vendelMusicPluginCreateApplication(int& argc, char** argv)
{
    auto* app = new QApplication(argc, argv);
    VendelSDK::Platform::setApplicationServices(std::make_unique<VendelSDK::QtGuiApplicationServices>());
    VendelSDK::Platform::setAlertPresenter(std::make_unique<VendelSDK::WidgetAlertPresenter>());
    return app;
}

static_assert(
    std::is_same_v<decltype(&vendelMusicPluginCreateApplication), MusicPlugin::UiModule::EntryPoint>);
