// Kept apart from the Objective-C++ presenter so that the mapping is tested wherever the project builds.
#include "CocoaAlertContent.h"

namespace VendelSDK {

namespace {

bool foundationCanHold(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

} // namespace

CocoaAlertContent cocoaAlertContent(const Alert& alert)
{
    CocoaAlertContent content{std::nullopt, alert.messageText, alert.informativeText, alert.buttons};
    if (alert.error) {
        CocoaAlertError error{alert.error->domain(), alert.error->code(), {}};
        for (auto entry = alert.error->userInfo().cbegin(); entry != alert.error->userInfo().cend();
             ++entry) {
            if (foundationCanHold(entry.value())) {
                error.userInfo.insert(entry.key(), entry.value());
            }
        }
        content.error = std::move(error);
    }
    return content;
}

int pressedButtonIndex(long modalResponse, qsizetype buttonCount)
{
    const long index = modalResponse - firstButtonModalResponse;
    return index >= 0 && index < buttonCount ? int(index) : 0;
}

} // namespace VendelSDK
