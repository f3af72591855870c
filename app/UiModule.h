// The windowed part of the application is a module that only launches with a display load, so that a
// headless run never pays for the GUI libraries.
#pragma once

#include <QCoreApplication>
#include <QString>

#include <memory>

namespace MusicPlugin::UiModule {

// The module's one entry point: makes the windowed application and installs the windowed backends
// (alerts, window list, the storyboards' scenes).
inline constexpr auto entryPointName = "vendelMusicPluginCreateApplication";
using EntryPoint = QCoreApplication* (*)(int& argc, char** argv);

// Whether the session has a display to open windows on.
bool displayAvailable();

// Loads the module from the private library folder (or the one VENDEL_UI_MODULE names) and makes the windowed
// application; null, with the reason in `error`, when the module cannot be loaded.
std::unique_ptr<QCoreApplication> createApplication(int& argc, char** argv, QString& error);

} // namespace MusicPlugin::UiModule
