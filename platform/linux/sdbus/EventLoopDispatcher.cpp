// The hand-over of a connection's incoming messages to the Qt event loop.
#include "EventLoopDispatcher.h"

#include "Process.h"
#include "Wait.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <QTimer>

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <exception>

#include <poll.h>

namespace VendelSDK::SdBus {

EventLoopDispatcher::EventLoopDispatcher(Bus bus) : m_bus(std::move(bus))
{
    const int fd = m_bus.isConnected() ? sd_bus_get_fd(m_bus.get()) : -1;
    if (fd < 0 || QAbstractEventDispatcher::instance() == nullptr) {
        return;
    }
    m_context = std::make_unique<QObject>();
    m_readable = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
    m_writable = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Write);
    m_writable->setEnabled(false);
    m_timer = std::make_unique<QTimer>();
    m_timer->setSingleShot(true);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_context.get(), [this] { dispatch(); });
    QObject::connect(m_writable.get(), &QSocketNotifier::activated, m_context.get(), [this] { dispatch(); });
    QObject::connect(m_timer.get(), &QTimer::timeout, m_context.get(), [this] { dispatch(); });
    // Blocking calls elsewhere in the thread read the socket too, and may leave messages queued that the
    // socket no longer announces: before the loop sleeps, the bus says whether it has work now.
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     m_context.get(), [this] { arm(); });
    arm();
}

EventLoopDispatcher::~EventLoopDispatcher() = default;

void EventLoopDispatcher::dispatch()
{
    if (m_closed) {
        return;
    }
    // Inside a handler of the connection (one that runs a nested event loop) nothing can be handled: the loop
    // stops watching until the handler has returned, rather than wake for the same bytes again and again.
    if (isProcessing()) {
        suspend();
        return;
    }
    int status = 0;
    try {
        do {
            status = process(m_bus);
        } while (status > 0);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "A handler of a bus message failed: %s\n", exception.what());
    } catch (...) {
        std::fputs("A handler of a bus message failed.\n", stderr);
    }
    if (status < 0 && status != -EBUSY) {
        // The connection is gone: nothing more will arrive, and a dead socket must not wake the loop.
        m_closed = true;
        suspend();
        return;
    }
    arm();
}

void EventLoopDispatcher::suspend()
{
    m_readable->setEnabled(false);
    m_writable->setEnabled(false);
    m_timer->stop();
}

void EventLoopDispatcher::arm()
{
    if (!m_context || m_closed || isProcessing()) {
        return;
    }
    m_readable->setEnabled(true);
    const int events = sd_bus_get_events(m_bus.get());
    m_writable->setEnabled(events > 0 && (events & POLLOUT) != 0);
    const auto due = dueIn(m_bus);
    if (!due) {
        m_timer->stop();
        return;
    }
    const int interval = int(std::min<std::chrono::milliseconds::rep>(due->count(), INT_MAX));
    if (!m_timer->isActive() || m_timer->remainingTime() != interval) {
        m_timer->start(interval);
    }
}

} // namespace VendelSDK::SdBus
