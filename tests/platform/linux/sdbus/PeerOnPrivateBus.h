// A bus daemon of the test's own, the peer on it, and the test's own connection to that daemon.
#pragma once

#include "Bus.h"
#include "BusPeer.h"
#include "PrivateBusDaemon.h"

#include <memory>

namespace VendelSDK::Testing {

struct PeerOnPrivateBus
{
    PrivateBusDaemon daemon;
    std::unique_ptr<BusPeer> peer;
    SdBus::Bus bus;

    // Empty once the daemon, the peer and the connection are up; otherwise what failed.
    QString start()
    {
        if (!daemon.start()) {
            return daemon.errorString();
        }
        peer = std::make_unique<BusPeer>(daemon.address());
        if (!peer->isReady()) {
            return QStringLiteral("the peer could not connect");
        }
        bus = SdBus::Bus::open(daemon.address());
        return bus.isConnected() ? QString() : QStringLiteral("the test could not connect");
    }
};

} // namespace VendelSDK::Testing
