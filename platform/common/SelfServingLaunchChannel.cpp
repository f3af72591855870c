// Where the system itself keeps one instance (macOS hands a URL to the running application), or where no
// single-instance channel exists, every launch serves itself.
#include <VendelSDK/LaunchChannel.h>

namespace VendelSDK {

namespace {

class SelfServingLaunchChannel final : public LaunchChannel
{
public:
    Role claim(const QString&, const std::optional<QString>&, LaunchReceiver) override
    {
        return Role::running;
    }
};

} // namespace

std::unique_ptr<LaunchChannel> makePlatformLaunchChannel()
{
    return std::make_unique<SelfServingLaunchChannel>();
}

} // namespace VendelSDK
