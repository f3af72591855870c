// Holds the application's launch handlers and dispatches launch URLs to them.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <functional>
#include <optional>

namespace VendelSDK {

class VENDELSDK_EXPORT PluginController
{
public:
    using IdentifierHandler = std::function<void(const QString& actionID)>;
    using ConfigureHandler = std::function<void()>;
    using RunCommandHandler = std::function<void(const std::optional<QString>& actionID)>;

    // Every handler starts as a default that stops the process, naming the missing action.
    PluginController();

    IdentifierHandler onRun;
    IdentifierHandler onEdit;
    ConfigureHandler onConfigure;
    RunCommandHandler onRunCommand;
    bool didPerformAction = false;

    // Takes the launch event's URL text; true when a handler ran.
    bool handle(const std::optional<QString>& event);
};

} // namespace VendelSDK
