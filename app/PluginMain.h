// The whole of the plugin's process, which the executable's main() hands over to.
#pragma once

namespace MusicPlugin {

// Answers the command line, or makes the application and serves the launch URL; returns the exit status. It
// lives in the core library so that everything the process runs is there, once, for the windowed module too.
int pluginMain(int argc, char* argv[]);

} // namespace MusicPlugin
