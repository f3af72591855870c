// Handles a connection's incoming messages from the calling thread's Qt event loop.
#pragma once

#include "Bus.h"

#include <memory>

class QObject;
class QSocketNotifier;
class QTimer;

namespace VendelSDK::SdBus {

// The bus's file descriptor wakes the loop, and the bus's own time-outs run on a timer. The loop never
// handles the connection from inside one of its callbacks (a handler that runs a nested event loop): it waits
// until that handler has returned. An exception from a handler cannot go on through the event loop: it is
// reported on standard error, and the dispatcher goes on serving.
class EventLoopDispatcher
{
public:
    explicit EventLoopDispatcher(Bus bus);
    ~EventLoopDispatcher();
    EventLoopDispatcher(const EventLoopDispatcher&) = delete;
    EventLoopDispatcher& operator=(const EventLoopDispatcher&) = delete;

private:
    void dispatch();
    void suspend();
    void arm();

    Bus m_bus;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    std::unique_ptr<QTimer> m_timer;
    std::unique_ptr<QObject> m_context;
    bool m_closed = false;
};

} // namespace VendelSDK::SdBus
