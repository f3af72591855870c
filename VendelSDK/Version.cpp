// The version of the SDK library itself, which may be newer than the headers a plugin was compiled with.
#include <VendelSDK/Version.h>

namespace VendelSDK {

const char* runtimeVersion() noexcept
{
    return VENDELSDK_VERSION_STRING;
}

} // namespace VendelSDK
