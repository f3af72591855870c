// Finds and loads the windowed module before any application object exists.
#include "UiModule.h"

#include "UiModuleInfo.h"

#include <QLibrary>

#include <filesystem>
#include <system_error>

namespace MusicPlugin::UiModule {

namespace {

QString environment(const char* name)
{
    return qEnvironmentVariable(name);
}

// The executable's folder, read before QCoreApplication exists and can tell it.
std::filesystem::path executableFolder(const char* argv0)
{
    std::error_code error;
    const auto self = std::filesystem::canonical("/proc/self/exe", error);
    if (!error) {
        return self.parent_path();
    }
    const auto fromArgument = std::filesystem::weakly_canonical(argv0 ? argv0 : "", error);
    return error ? std::filesystem::path() : fromArgument.parent_path();
}

} // namespace

bool displayAvailable()
{
    // A platform chosen explicitly (offscreen in tests, say) counts as a display.
    return !environment("QT_QPA_PLATFORM").isEmpty() || !environment("WAYLAND_DISPLAY").isEmpty() ||
           !environment("DISPLAY").isEmpty();
}

std::unique_ptr<QCoreApplication> createApplication(int& argc, char** argv, QString& error)
{
    QString path = environment("VENDEL_UI_MODULE");
    if (path.isEmpty()) {
        // In the private library folder beside the executable's folder, installed as in the build tree.
        const auto folder = executableFolder(argc > 0 ? argv[0] : nullptr);
        const auto candidate = folder.parent_path() / VENDEL_UI_MODULE_INSTALL_DIR / VENDEL_UI_MODULE_FILE;
        path = QString::fromStdString(candidate.string());
    }
    // The module stays loaded for the rest of the process: its code runs until the end.
    static QLibrary module;
    module.setFileName(path);
    module.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    const auto entry = reinterpret_cast<EntryPoint>(module.resolve(entryPointName));
    if (!entry) {
        error = module.errorString();
        return nullptr;
    }
    return std::unique_ptr<QCoreApplication>(entry(argc, argv));
}

} // namespace MusicPlugin::UiModule
