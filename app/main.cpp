// The executable's entry: the process is the core library's.
#include "PluginMain.h"

int main(int argc, char* argv[])
{
    return MusicPlugin::pluginMain(argc, argv);
}
