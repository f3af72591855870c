// The toolkit may hand one get-URL event to the application by more than one path; it is dispatched once.
#include "GetURLEventGate.h"

namespace VendelSDK {

namespace {

bool sameEvent(const AppleEventFacts& left, const AppleEventFacts& right)
{
    return left.eventClass == right.eventClass && left.eventID == right.eventID &&
           left.returnID == right.returnID && left.transactionID == right.transactionID &&
           left.directObjectText == right.directObjectText;
}

} // namespace

std::optional<QString> GetURLEventGate::urlToDispatch(const std::optional<AppleEventFacts>& current)
{
    // A URL that reached the handlers without an event did not come from the system: the application
    // opened it itself, and it is no launch.
    if (!current || current->eventClass != internetEventClass || current->eventID != getURLEventID ||
        !current->directObjectText) {
        return std::nullopt;
    }
    if (m_last && sameEvent(*m_last, *current)) {
        return std::nullopt;
    }
    m_last = current;
    return current->directObjectText;
}

} // namespace VendelSDK
