// Reads an error through Foundation's own accessors, so that the texts are the ones the system shows.
#include "FoundationErrors.h"

#include "FoundationConversions.h"

namespace MusicPlugin {

using namespace VendelSDK;

FrameworkErrorFacts toFrameworkErrorFacts(NSError* error)
{
    return FrameworkErrorFacts{
        toQString(error.domain), qint64(error.code), toQString(error.localizedDescription),
        toOptionalQString(error.localizedFailureReason), toQVariantMap(error.userInfo)};
}

} // namespace MusicPlugin
