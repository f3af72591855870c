// The host knows an installed plugin by the canonical path of its executable, so that is the bundle path.
#include "AppBundle.h"

#include "AppBundleInfo.h"

namespace MusicPlugin {

VendelSDK::Bundle appBundle()
{
    using VendelSDK::Bundle;
    const QVariantMap info{
        {QString::fromLatin1(Bundle::nameKey), QStringLiteral(VENDEL_BUNDLE_NAME)},
        {QString::fromLatin1(Bundle::copyrightKey), QStringLiteral(VENDEL_BUNDLE_COPYRIGHT)},
        {QString::fromLatin1(Bundle::shortVersionKey), QStringLiteral(VENDEL_BUNDLE_SHORT_VERSION)},
        {QString::fromLatin1(Bundle::versionKey), QStringLiteral(VENDEL_BUNDLE_VERSION)},
    };
    return Bundle(Bundle::ofRunningExecutable().path(), QStringLiteral(VENDEL_BUNDLE_IDENTIFIER), info);
}

} // namespace MusicPlugin
