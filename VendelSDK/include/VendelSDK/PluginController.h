// Holds the application's launch handlers and dispatches launch URLs to them.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <functional>
#include <optional>

namespace VendelSDK {

/// The plugin's launch handlers, and the dispatch of a launch URL to them: `run/<id>` to onRun,
/// `edit/<id>` to onEdit, `configure` to onConfigure and `runCommand[/<id>]` to onRunCommand. Set every
/// handler that the plugin supports before launching finishes.
class VENDELSDK_EXPORT PluginController
{
public:
    /// A handler of one action, given the action's identifier.
    using IdentifierHandler = std::function<void(const QString& actionID)>;
    /// The handler of the plugin's preferences.
    using ConfigureHandler = std::function<void()>;
    /// A handler of a command run, with the action's identifier if the URL named one.
    using RunCommandHandler = std::function<void(const std::optional<QString>& actionID)>;

    /// Every handler starts as a default that stops the process, naming the missing action.
    PluginController();

    /// Runs the action; a run ends the application (ApplicationServices::terminate()) when it is done.
    IdentifierHandler onRun;
    /// Opens the action's editor.
    IdentifierHandler onEdit;
    /// Opens the plugin's preferences.
    ConfigureHandler onConfigure;
    /// Runs a command of the plugin, for the action named if any.
    RunCommandHandler onRunCommand;
    /// Set once a launch URL made a handler run; the start-up check then does nothing.
    bool didPerformAction = false;

    /// Takes the launch event's URL text; true when a handler ran.
    bool handle(const std::optional<QString>& event);
};

} // namespace VendelSDK
