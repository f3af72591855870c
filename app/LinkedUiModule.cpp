// Where the application is always windowed, the windows are linked into the executable: nothing to load.
#include "UiModule.h"

extern "C" QCoreApplication* vendelMusicPluginCreateApplication(int& argc, char** argv);

namespace MusicPlugin::UiModule {

bool displayAvailable()
{
    return true;
}

std::unique_ptr<QCoreApplication> createApplication(int& argc, char** argv, QString&)
{
    return std::unique_ptr<QCoreApplication>(vendelMusicPluginCreateApplication(argc, argv));
}

} // namespace MusicPlugin::UiModule
