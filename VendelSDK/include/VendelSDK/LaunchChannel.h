// The single-instance seam: the running instance of a plugin serves the launch URLs of later launches.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace VendelSDK {

/// Keeps one running instance per plugin: a later launch hands its URL to the running one and ends.
class VENDELSDK_EXPORT LaunchChannel
{
public:
    /// Whether this process goes on to serve its own launch, or has handed it to the running instance.
    enum class Role
    {
        running,
        forwarded
    };

    /// Called in the running instance for each later launch, with that launch's URL if it had one.
    /// Answering false refuses the launch (the application is on its way out, say); the refused launch
    /// then waits to take over as the running instance.
    using LaunchReceiver = std::function<bool(const std::optional<QString>& url)>;

    virtual ~LaunchChannel() = default;

    /// Blocks until this process is the running instance of the application, or the running instance
    /// has accepted `url`. The receiver serves later launches from then on, in the event loop.
    virtual Role claim(const QString& applicationID, const std::optional<QString>& url,
                       LaunchReceiver receiver) = 0;
};

/// The channel of the platform this build targets; CMake picks the implementation.
VENDELSDK_EXPORT std::unique_ptr<LaunchChannel> makePlatformLaunchChannel();

} // namespace VendelSDK
