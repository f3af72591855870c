// Kept apart from the Objective-C++ backends so that the mapping is tested wherever the project builds.
#include "FrameworkError.h"

namespace MusicPlugin {

using namespace VendelSDK;

Error frameworkError(const FrameworkErrorFacts& facts)
{
    QVariantMap userInfo = facts.userInfo;
    userInfo.insert(QString::fromLatin1(localizedDescriptionKey), facts.localizedDescription);
    // A reason left over in the user information would contradict the one Foundation works out.
    if (facts.localizedFailureReason) {
        userInfo.insert(QString::fromLatin1(localizedFailureReasonKey), *facts.localizedFailureReason);
    } else {
        userInfo.remove(QString::fromLatin1(localizedFailureReasonKey));
    }
    return Error(facts.domain, facts.code, userInfo);
}

} // namespace MusicPlugin
