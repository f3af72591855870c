// A child process for the fatal defaults: dispatches its argument to a controller with no handlers.
#include "VendelSDK/PluginController.h"

#include <QString>

#include <cstdio>

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fputs("usage: PluginControllerProbe <launch URL>\n", stderr);
        return 2;
    }
    VendelSDK::PluginController controller;
    // Reaching the end means no default stopped the process.
    return controller.handle(QString::fromUtf8(argv[1])) ? 0 : 3;
}
