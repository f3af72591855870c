// Name ownership: asking for a well-known name, queueing for it, giving it up, and finding its owner.
#pragma once

#include "Bus.h"

#include <QString>

namespace VendelSDK::SdBus {

enum class NameRequest
{
    owner,
    queued,
    failed,
};

// Asks for a well-known name, waiting in its queue while another connection owns it; a connection that owns
// the name already is its owner.
NameRequest requestName(const Bus& bus, const QString& name);
// Gives the name up, or leaves its queue; the next in the queue becomes its owner.
void releaseName(const Bus& bus, const QString& name);
// The unique name of the name's owner; empty when it has none or the bus cannot say.
QString nameOwner(const Bus& bus, const QString& name);

} // namespace VendelSDK::SdBus
