// Kept apart from the Objective-C++ window configuration so that these rules are tested everywhere.
#include "WindowLevelRules.h"

namespace VendelSDK {

bool setsNativeWindowLevel(QStringView platformName)
{
    return platformName == u"cocoa";
}

bool resetsWindowLevel(QEvent::Type type)
{
    return type == QEvent::Show || type == QEvent::WinIdChange || type == QEvent::WindowStateChange;
}

std::optional<long> liftedWindowLevel(long level, bool pluginWindowShown)
{
    if (!pluginWindowShown || level >= pluginWindowLevel) {
        return std::nullopt;
    }
    return pluginWindowLevel;
}

} // namespace VendelSDK
