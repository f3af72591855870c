// Dispatches launch URLs to the application's handlers and remembers whether one ran.
#include <VendelSDK/PluginController.h>

#include <VendelSDK/ConfigWriteBack.h>
#include <VendelSDK/FatalError.h>
#include <VendelSDK/VendelPluginURL.h>

namespace VendelSDK {
namespace {
[[noreturn]] void stopForMissingHandler(const char* message, int line);
// Plugin developers search for these reported locations, so each default stays on its line.
template <int line, int expected> [[noreturn]] void missingHandler(const char* message)
{
    static_assert(line == expected, "a default handler moved away from its reported line");
    stopForMissingHandler(message, line);
}

} // namespace

// The defaults stand in for handlers that the application has not assigned; reaching one is a
// programming error in the application, never something a user can cause and recover from.
PluginController::PluginController()
{
    // clang-format off
    onRun = [](const QString&) {
        missingHandler<__LINE__, 26>("Run action not implemented yet.");
    };

    onEdit = [](const QString&) {
        missingHandler<__LINE__, 30>("Edit action not implemented yet.");
    };

    onConfigure = [] {
        missingHandler<__LINE__, 34>("Edit Global Configuration action not implemented yet.");
    };

    onRunCommand = [](const std::optional<QString>&) {
        missingHandler<__LINE__, 38>("Edit Global Configuration action not implemented yet.");
    };
    // clang-format on
}

namespace {

// Any web page can open a launch URL that reaches a default, and the stop skips the termination hooks: a
// change made in an open window would be lost. So the writes already pending are carried out first,
// once; nothing else runs, and the report still follows.
void stopForMissingHandler(const char* message, int line)
{
    ConfigWriteBack::carryOutPendingWrites();
    fatalError(QString::fromUtf8(message), "VendelSDK/PluginController", line);
}

} // namespace

bool PluginController::handle(const std::optional<QString>& event)
{
    if (!event) {
        return false;
    }
    const auto url = VendelPluginURL::parse(*event);
    if (!url) {
        return false;
    }

    const QString& verb = url->action;
    if (verb == QLatin1String("edit") || verb == QLatin1String("run")) {
        if (!url->actionID) {
            // An identifier-less run or edit clears what an earlier event may have set.
            didPerformAction = false;
            return false;
        }
        // Copy first: a handler may replace itself while it runs.
        const auto handler = verb == QLatin1String("edit") ? onEdit : onRun;
        handler(*url->actionID);
    } else if (verb == QLatin1String("configure")) {
        const auto handler = onConfigure;
        handler();
    } else if (verb == QLatin1String("runCommand")) {
        const auto handler = onRunCommand;
        handler(url->actionID);
    } else {
        return false;
    }
    didPerformAction = true;
    return true;
}

} // namespace VendelSDK
