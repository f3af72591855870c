// A real application bundle carries its own identity; a bare executable is given this build's.
#include "AppBundle.h"

#include "AppBundleInfo.h"

namespace MusicPlugin {

VendelSDK::Bundle appBundle()
{
    using VendelSDK::Bundle;
    Bundle bundle = VendelSDK::makePlatformMainBundle();
    if (!bundle.identifier().isEmpty()) {
        return bundle;
    }
    const QVariantMap info{
        {QString::fromLatin1(Bundle::nameKey), QStringLiteral(VENDEL_BUNDLE_NAME)},
        {QString::fromLatin1(Bundle::copyrightKey), QStringLiteral(VENDEL_BUNDLE_COPYRIGHT)},
        {QString::fromLatin1(Bundle::shortVersionKey), QStringLiteral(VENDEL_BUNDLE_SHORT_VERSION)},
        {QString::fromLatin1(Bundle::versionKey), QStringLiteral(VENDEL_BUNDLE_VERSION)},
    };
    return Bundle(bundle.path(), QStringLiteral(VENDEL_BUNDLE_IDENTIFIER), info);
}

} // namespace MusicPlugin
