// Matches: the bus daemon routes the signals that a rule selects to this connection, for a handler.
#pragma once

#include "Bus.h"
#include "Message.h"

#include <QString>

#include <functional>

namespace VendelSDK::SdBus {

// Asks the bus daemon for the messages that the match rule selects and waits until it has agreed, so that
// any such message sent after this returns reaches the handler. The handler runs in the waits of this thread
// that handle the connection's messages, for as long as the slot lives. Nothing when the daemon refused the
// rule or the connection failed.
Slot addMatch(const Bus& bus, const QString& rule, std::function<void(Message&)> handler);

} // namespace VendelSDK::SdBus
