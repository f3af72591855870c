// Decides which get-URL event, if any, a launch URL came with, and lets each event through once.
#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

namespace VendelSDK {

// A four-character code as the Apple event manager packs it: 'GURL' is 0x4755524C.
constexpr quint32 fourCharCode(const char (&code)[5])
{
    return quint32(quint8(code[0])) << 24 | quint32(quint8(code[1])) << 16 | quint32(quint8(code[2])) << 8 |
           quint32(quint8(code[3]));
}

inline constexpr quint32 internetEventClass = fourCharCode("GURL");
inline constexpr quint32 getURLEventID = fourCharCode("GURL");

// What the Apple event manager says about the event it is handling.
struct AppleEventFacts
{
    quint32 eventClass = 0;
    quint32 eventID = 0;
    // Identify one event: the sender numbers its events, and a transaction groups them.
    qint32 returnID = 0;
    qint32 transactionID = 0;
    // The direct object's text; absent when there is none or it cannot be read as text.
    std::optional<QString> directObjectText;
};

class GetURLEventGate
{
public:
    // The exact text to dispatch for the event being handled (none when no event is being handled), or
    // nothing: the event is no get-URL event, carries no text, or was let through already by another path.
    std::optional<QString> urlToDispatch(const std::optional<AppleEventFacts>& current);

private:
    std::optional<AppleEventFacts> m_last;
};

} // namespace VendelSDK
