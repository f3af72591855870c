// A peer in a thread: its own poll loop over the bus and an eventfd that wakes it for posted jobs.
#include "BusPeer.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdint>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace VendelSDK::Testing {

namespace {

int serveCall(sd_bus_message* call, void* userdata, sd_bus_error*)
{
    return static_cast<BusPeer*>(userdata)->answer(call);
}

const sd_bus_vtable peerTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Echo", "s", "s", serveCall, 0),
    SD_BUS_METHOD("Refuse", "", "", serveCall, 0),
    SD_BUS_METHOD("Silent", "", "", serveCall, 0),
    SD_BUS_SIGNAL("Changed", "s", 0),
    SD_BUS_VTABLE_END,
};

std::atomic<int> handledSignals{0};

void countSignal(int)
{
    ++handledSignals;
}

} // namespace

BusPeer::BusPeer(const QString& address)
{
    m_wake = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    m_thread = std::thread([this, address] { run(address); });
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!m_ready && !m_stop && std::chrono::steady_clock::now() < until) {
        std::this_thread::yield();
    }
}

BusPeer::~BusPeer()
{
    m_stop = true;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(m_wake, &one, sizeof one);
    m_thread.join();
    ::close(m_wake);
}

QString BusPeer::uniqueName() const
{
    const std::lock_guard lock(m_mutex);
    return m_uniqueName;
}

int BusPeer::calls(const QString& member) const
{
    const std::lock_guard lock(m_mutex);
    return int(std::count(m_calls.begin(), m_calls.end(), member));
}

std::vector<BusPeer::Answer> BusPeer::answers() const
{
    const std::lock_guard lock(m_mutex);
    return m_answers;
}

void BusPeer::post(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(m_wake, &one, sizeof one);
}

void BusPeer::emitChanged(const QString& text)
{
    post([this, text] {
        sd_bus_emit_signal(m_bus, path, interface, "Changed", "s", text.toUtf8().constData());
    });
}

void BusPeer::callLater(const QString& destination, const char* callPath, const char* callInterface,
                        const char* member, const QString& argument)
{
    // The call goes out later: the texts go with it, not pointers to the caller's.
    post([this, destination = destination.toUtf8(), path = QByteArray(callPath),
          interfaceName = QByteArray(callInterface), method = QByteArray(member), text = argument.toUtf8()] {
        sd_bus_error error{};
        sd_bus_message* reply = nullptr;
        Answer answer;
        if (sd_bus_call_method(m_bus, destination.constData(), path.constData(), interfaceName.constData(),
                               method.constData(), &error, &reply, "s", text.constData()) < 0) {
            answer = {true, QString::fromUtf8(error.name)};
        } else {
            const char* answered = nullptr;
            sd_bus_message_read_basic(reply, 's', &answered);
            answer = {false, QString::fromUtf8(answered)};
        }
        sd_bus_error_free(&error);
        sd_bus_message_unref(reply);
        const std::lock_guard lock(m_mutex);
        m_answers.push_back(answer);
    });
}

int BusPeer::answer(sd_bus_message* call)
{
    const QString member = QString::fromLatin1(sd_bus_message_get_member(call));
    {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(member);
    }
    if (onCall) {
        onCall(member);
    }
    if (member == u"Echo") {
        const char* text = nullptr;
        sd_bus_message_read_basic(call, 's', &text);
        return sd_bus_reply_method_return(call, "s", text);
    }
    if (member == u"Refuse") {
        return sd_bus_reply_method_errorf(call, "org.vendel.Test1.Error.Refused", "Refused on purpose");
    }
    // Silent: the caller waits for an answer that never comes.
    return 1;
}

void BusPeer::run(const QString& address)
{
    sigset_t usr1;
    sigemptyset(&usr1);
    sigaddset(&usr1, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &usr1, nullptr);

    sd_bus_slot* slot = nullptr;
    if (sd_bus_new(&m_bus) < 0 || sd_bus_set_address(m_bus, address.toUtf8().constData()) < 0 ||
        sd_bus_set_bus_client(m_bus, 1) < 0 || sd_bus_start(m_bus) < 0 ||
        sd_bus_add_object_vtable(m_bus, &slot, path, interface, peerTable, this) < 0 ||
        sd_bus_request_name(m_bus, name, SD_BUS_NAME_QUEUE) < 0) {
        m_stop = true;
        sd_bus_slot_unref(slot);
        sd_bus_flush_close_unref(m_bus);
        return;
    }
    const char* unique = nullptr;
    sd_bus_get_unique_name(m_bus, &unique);
    {
        const std::lock_guard lock(m_mutex);
        m_uniqueName = QString::fromLatin1(unique);
    }
    m_ready = true;
    while (!m_stop) {
        std::vector<std::function<void()>> jobs;
        {
            const std::lock_guard lock(m_mutex);
            jobs.swap(m_jobs);
        }
        for (const auto& job : jobs) {
            job();
        }
        const int processed = sd_bus_process(m_bus, nullptr);
        if (processed > 0) {
            continue;
        }
        if (processed < 0) {
            break;
        }
        std::uint64_t due = UINT64_MAX;
        sd_bus_get_timeout(m_bus, &due);
        pollfd watched[2] = {{sd_bus_get_fd(m_bus), short(sd_bus_get_events(m_bus)), 0}, {m_wake, POLLIN, 0}};
        ::poll(watched, 2, due == UINT64_MAX ? -1 : 10);
        std::uint64_t count = 0;
        [[maybe_unused]] const auto read = ::read(m_wake, &count, sizeof count);
    }
    // The slot holds a reference to the connection, which would otherwise outlive the peer.
    sd_bus_slot_unref(slot);
    sd_bus_flush_close_unref(m_bus);
    m_bus = nullptr;
}

void SignalBurst::install()
{
    struct sigaction action = {};
    action.sa_handler = countSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;
    ::sigaction(SIGUSR1, &action, nullptr);
}

int SignalBurst::handled()
{
    return handledSignals.load();
}

int SignalBurst::send(pthread_t thread, int count)
{
    const int before = handledSignals.load();
    for (int sent = 1; sent <= count; ++sent) {
        if (pthread_kill(thread, SIGUSR1) != 0) {
            break;
        }
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (handledSignals.load() < before + sent && std::chrono::steady_clock::now() < until) {
            std::this_thread::yield();
        }
    }
    return handledSignals.load() - before;
}

} // namespace VendelSDK::Testing
