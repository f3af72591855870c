// Builds alerts from errors.
#include <VendelSDK/Alert.h>

namespace VendelSDK {

Alert Alert::fromError(const Error& error)
{
    return Alert{error.localizedDescription(), error.localizedFailureReason(), {}, error};
}

} // namespace VendelSDK
