// The windowed module's entry: the widget application, its backends, and the storyboards' scenes.
#include "MainWindowController.h"
#include "PreferencesWindowController.h"

#include "Storyboard.h"
#include "UiModule.h"

#include <VendelSDK/Platform.h>
#include <VendelSDK/WindowedBackends.h>

#include <QApplication>
#include <QIcon>

extern "C" Q_DECL_EXPORT QCoreApplication* vendelMusicPluginCreateApplication(int& argc, char** argv)
{
    using namespace MusicPlugin;

    auto* app = new QApplication(argc, argv);
    // The windows decide when the application ends, through the application services so that the
    // termination hooks run; an alert closing while no window is shown must not end it.
    app->setQuitOnLastWindowClosed(false);
    app->setWindowIcon(QIcon(QStringLiteral(":/vendel-music-plugin.png")));
    VendelSDK::Platform::setApplicationServices(VendelSDK::makePlatformWindowedApplicationServices());
    VendelSDK::Platform::setAlertPresenter(VendelSDK::makePlatformWindowedAlertPresenter());

    Storyboard::registerScene(QStringLiteral("Main"), QStringLiteral("Edit Window Controller"),
                              [] { return std::make_unique<MainWindowController>(); });
    Storyboard::registerScene(QStringLiteral("Preferences"), QStringLiteral("Preferences Window Controller"),
                              [] { return std::make_unique<PreferencesWindowController>(); });
    return app;
}

static_assert(
    std::is_same_v<decltype(&vendelMusicPluginCreateApplication), MusicPlugin::UiModule::EntryPoint>);
