// The owning layer over sd-bus, and the hand-over of a connection's incoming messages to the Qt event loop.
#include "SdBus.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <QTimer>

#include <systemd/sd-bus.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <ctime>

#include <poll.h>

namespace VendelSDK::SdBus {

namespace {

using namespace std::chrono;

Error errorOf(const sd_bus_error& error)
{
    return Error{QString::fromUtf8(error.name), QString::fromUtf8(error.message)};
}

// What sd-bus reports for an errno that no reply carried: a local failure rather than the peer's answer.
Error localError(int status)
{
    sd_bus_error error{};
    sd_bus_error_set_errno(&error, status);
    Error result = errorOf(error);
    sd_bus_error_free(&error);
    return result;
}

// What a call on a missing or lost session bus reports, in the words the bus clients have always seen.
Error disconnected()
{
    return {QString::fromLatin1(disconnectedError), QStringLiteral("Not connected to D-Bus server")};
}

// The handlers of served methods and matches live on the heap and go with their slot.
struct ServedMethod
{
    QByteArray member;
    QByteArray signature;
    QByteArray result;
    Bus::MethodHandler handler;
    std::array<sd_bus_vtable, 3> vtable{};
};

struct Match
{
    std::function<void(Message&)> handler;
};

int serveCall(sd_bus_message* call, void* userdata, sd_bus_error* error)
{
    auto* served = static_cast<ServedMethod*>(userdata);
    Message incoming(sd_bus_message_ref(call));
    sd_bus_message* reply = nullptr;
    const int status = sd_bus_message_new_method_return(call, &reply);
    if (status < 0) {
        return status;
    }
    Message outgoing(reply);
    if (!served->handler(incoming, outgoing) || !outgoing.isValid()) {
        return sd_bus_error_set(error, invalidArgsError, "The arguments are not what the method takes.");
    }
    return sd_bus_send(nullptr, outgoing.get(), nullptr);
}

int deliverMatch(sd_bus_message* message, void* userdata, sd_bus_error*)
{
    Message incoming(sd_bus_message_ref(message));
    static_cast<Match*>(userdata)->handler(incoming);
    return 0;
}

// Reads one value of a basic type; the value is left as it was when the next one is not of that type.
template <class Raw> bool readBasic(sd_bus_message* message, char type, Raw& value)
{
    Raw read{};
    if (message == nullptr || sd_bus_message_read_basic(message, type, &read) <= 0) {
        return false;
    }
    value = read;
    return true;
}

// RequestName's answers, as the bus daemon numbers them.
constexpr std::uint32_t primaryOwnerReply = 1;
constexpr std::uint32_t inQueueReply = 2;
constexpr std::uint32_t alreadyOwnerReply = 4;

template <class T> void deleteUserdata(void* userdata)
{
    delete static_cast<T*>(userdata);
}

} // namespace

void Unref::operator()(sd_bus* bus) const
{
    sd_bus_unref(bus);
}

void Unref::operator()(sd_bus_message* message) const
{
    sd_bus_message_unref(message);
}

void Unref::operator()(sd_bus_slot* slot) const
{
    sd_bus_slot_unref(slot);
}

// Message

Message::Message(sd_bus_message* message) : m_message(message) {}

Message& Message::fail(int status)
{
    if (m_status >= 0 && status < 0) {
        m_status = status;
    }
    return *this;
}

Message& Message::append(const QString& text)
{
    // A bus string ends at its first NUL; sending the rest cut off would change the text unseen.
    if (!isValid() || text.contains(QChar(0))) {
        return fail(-EINVAL);
    }
    return fail(sd_bus_message_append_basic(get(), 's', text.toUtf8().constData()));
}

Message& Message::append(const QStringList& texts)
{
    if (!isValid()) {
        return fail(-EINVAL);
    }
    fail(sd_bus_message_open_container(get(), 'a', "s"));
    for (const QString& text : texts) {
        append(text);
    }
    return isValid() ? fail(sd_bus_message_close_container(get())) : *this;
}

Message& Message::append(bool value)
{
    const int boolean = value ? 1 : 0;
    return isValid() ? fail(sd_bus_message_append_basic(get(), 'b', &boolean)) : fail(-EINVAL);
}

Message& Message::append(quint32 value)
{
    const std::uint32_t number = value;
    return isValid() ? fail(sd_bus_message_append_basic(get(), 'u', &number)) : fail(-EINVAL);
}

Message& Message::appendObjectPath(const QString& path)
{
    return isValid() ? fail(sd_bus_message_append_basic(get(), 'o', path.toUtf8().constData()))
                     : fail(-EINVAL);
}

Message& Message::appendVariant(bool value)
{
    if (!isValid()) {
        return fail(-EINVAL);
    }
    fail(sd_bus_message_open_container(get(), 'v', "b"));
    append(value);
    return isValid() ? fail(sd_bus_message_close_container(get())) : *this;
}

QString Message::signature() const
{
    return m_message ? QString::fromLatin1(sd_bus_message_get_signature(get(), 1)) : QString();
}

quint64 Message::serial() const
{
    std::uint64_t cookie = 0;
    return m_message && sd_bus_message_get_cookie(get(), &cookie) >= 0 ? quint64(cookie) : 0;
}

bool Message::read(QString& text)
{
    return readText('s', text);
}

bool Message::readObjectPath(QString& path)
{
    return readText('o', path);
}

bool Message::readText(char type, QString& text)
{
    const char* value = nullptr;
    if (!readBasic(get(), type, value)) {
        return false;
    }
    text = QString::fromUtf8(value);
    return true;
}

bool Message::read(QStringList& texts)
{
    if (!enter('a', "s")) {
        return false;
    }
    QStringList values;
    QString text;
    while (read(text)) {
        values.append(text);
    }
    if (!exit()) {
        return false;
    }
    texts = std::move(values);
    return true;
}

bool Message::read(bool& value)
{
    int boolean = 0;
    if (!readBasic(get(), 'b', boolean)) {
        return false;
    }
    value = boolean != 0;
    return true;
}

bool Message::read(quint32& value)
{
    return readBasic(get(), 'u', value);
}

bool Message::read(qint32& value)
{
    return readBasic(get(), 'i', value);
}

bool Message::enter(char type, const char* contents)
{
    return m_message && sd_bus_message_enter_container(get(), type, contents) > 0;
}

bool Message::exit()
{
    return m_message && sd_bus_message_exit_container(get()) >= 0;
}

bool Message::skip()
{
    return m_message && sd_bus_message_skip(get(), nullptr) > 0;
}

// Bus

Bus::Bus(sd_bus* bus) : m_bus(sd_bus_ref(bus)) {}

Bus::Bus(const Bus& other) : m_bus(sd_bus_ref(other.get())) {}

Bus& Bus::operator=(const Bus& other)
{
    if (this != &other) {
        m_bus.reset(sd_bus_ref(other.get()));
    }
    return *this;
}

Bus::~Bus() = default;

Bus Bus::session()
{
    // The thread's default bus keeps no reference of its own: this one keeps it open for the thread.
    thread_local const Bus shared = [] {
        Bus bus;
        sd_bus* opened = nullptr;
        if (sd_bus_default_user(&opened) >= 0) {
            bus.m_bus.reset(opened);
        }
        return bus;
    }();
    return shared;
}

bool Bus::isConnected() const
{
    return m_bus && sd_bus_is_open(get()) > 0;
}

QString Bus::uniqueName() const
{
    const char* name = nullptr;
    if (!isConnected() || sd_bus_get_unique_name(get(), &name) < 0) {
        return {};
    }
    return QString::fromLatin1(name);
}

Message Bus::methodCall(const QString& destination, const char* path, const char* interface,
                        const char* member) const
{
    sd_bus_message* message = nullptr;
    if (!m_bus) {
        return {};
    }
    const int status = sd_bus_message_new_method_call(get(), &message, destination.toUtf8().constData(), path,
                                                      interface, member);
    Message result(status >= 0 ? message : nullptr);
    result.fail(status);
    return result;
}

Reply Bus::call(Message& message, std::optional<milliseconds> timeout) const
{
    if (!isConnected()) {
        return {disconnected(), {}};
    }
    if (!message.isValid()) {
        return {Error{QString::fromLatin1(invalidArgsError),
                      QStringLiteral("The call holds a value that the bus cannot carry.")},
                {}};
    }
    // Zero asks for the bus's default time-out; a shorter wait is at least a microsecond.
    const std::uint64_t microseconds =
        timeout ? std::uint64_t(std::max<milliseconds::rep>(timeout->count(), 0)) * 1000 + 1 : 0;
    sd_bus_error error{};
    sd_bus_message* reply = nullptr;
    const int status = sd_bus_call(get(), message.get(), microseconds, &error, &reply);
    if (status >= 0) {
        return {std::nullopt, Message(reply)};
    }
    Reply result{sd_bus_error_is_set(&error) ? errorOf(error) : localError(status), {}};
    sd_bus_error_free(&error);
    const Error localTimeout = localError(ETIMEDOUT);
    if (!isConnected()) {
        result.error = disconnected();
    } else if (status == -ETIMEDOUT && result.error->name == localTimeout.name &&
               result.error->message == localTimeout.message) {
        // sd-bus reports its own time-out as an errno; the bus daemon's name for it is NoReply.
        result.error = Error{QString::fromLatin1(noReplyError), QStringLiteral("Did not receive a reply.")};
    }
    return result;
}

Bus::NameRequest Bus::requestName(const QString& name) const
{
    if (!isConnected()) {
        return NameRequest::failed;
    }
    // Sent without waiting for the answer to the connection's greeting, the request travels with it: every
    // launch asks for the name, so this saves a round trip to the bus daemon on each.
    std::optional<NameRequest> answer;
    const auto answered = [](sd_bus_message* reply, void* userdata, sd_bus_error*) {
        std::uint32_t code = 0;
        auto& result = *static_cast<std::optional<NameRequest>*>(userdata);
        if (sd_bus_message_is_method_error(reply, nullptr) ||
            sd_bus_message_read_basic(reply, 'u', &code) <= 0) {
            result = NameRequest::failed;
        } else if (code == primaryOwnerReply || code == alreadyOwnerReply) {
            result = NameRequest::owner;
        } else {
            result = code == inQueueReply ? NameRequest::queued : NameRequest::failed;
        }
        return 0;
    };
    sd_bus_slot* pending = nullptr;
    if (sd_bus_request_name_async(get(), &pending, name.toUtf8().constData(), SD_BUS_NAME_QUEUE, answered,
                                  &answer) < 0) {
        return NameRequest::failed;
    }
    const Slot slot(pending);
    // The bus's own time-out for the call ends the wait with an error reply, as a blocking call would.
    while (!answer) {
        if (!processUntil(steady_clock::now() + hours(1))) {
            return NameRequest::failed;
        }
    }
    return *answer;
}

void Bus::releaseName(const QString& name) const
{
    if (isConnected()) {
        sd_bus_release_name(get(), name.toUtf8().constData());
    }
}

QString Bus::nameOwner(const QString& name) const
{
    Message call = methodCall(QStringLiteral("org.freedesktop.DBus"), "/org/freedesktop/DBus",
                              "org.freedesktop.DBus", "GetNameOwner");
    call.append(name);
    Reply reply = this->call(call);
    QString owner;
    if (reply.error || !reply.message.read(owner)) {
        return {};
    }
    return owner;
}

Slot Bus::serveMethod(const char* path, const char* interface, const char* member, const char* signature,
                      const char* result, MethodHandler handler) const
{
    if (!isConnected()) {
        return nullptr;
    }
    auto served = std::make_unique<ServedMethod>();
    served->member = member;
    served->signature = signature;
    served->result = result;
    served->handler = std::move(handler);
    served->vtable = {{
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD(served->member.constData(), served->signature.constData(), served->result.constData(),
                      serveCall, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    }};
    sd_bus_slot* slot = nullptr;
    if (sd_bus_add_object_vtable(get(), &slot, path, interface, served->vtable.data(), served.get()) < 0) {
        return nullptr;
    }
    sd_bus_slot_set_destroy_callback(slot, deleteUserdata<ServedMethod>);
    served.release();
    return Slot(slot);
}

Slot Bus::addMatch(const QString& rule, std::function<void(Message&)> handler) const
{
    if (!isConnected()) {
        return nullptr;
    }
    auto match = std::make_unique<Match>(Match{std::move(handler)});
    sd_bus_slot* slot = nullptr;
    if (sd_bus_add_match(get(), &slot, rule.toUtf8().constData(), deliverMatch, match.get()) < 0) {
        return nullptr;
    }
    sd_bus_slot_set_destroy_callback(slot, deleteUserdata<Match>);
    match.release();
    return Slot(slot);
}

bool Bus::processUntil(steady_clock::time_point deadline) const
{
    if (!isConnected()) {
        return false;
    }
    while (steady_clock::now() < deadline) {
        const int status = sd_bus_process(get(), nullptr);
        if (status < 0) {
            return false;
        }
        if (status > 0) {
            return true;
        }
        const auto left = duration_cast<microseconds>(deadline - steady_clock::now()).count() + 1;
        if (sd_bus_wait(get(), std::uint64_t(std::max<microseconds::rep>(left, 1))) < 0) {
            return false;
        }
    }
    return false;
}

// EventLoopDispatcher

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
    int status = 0;
    do {
        status = sd_bus_process(m_bus.get(), nullptr);
    } while (status > 0);
    if (status < 0) {
        // The connection is gone: nothing more will arrive, and a dead socket must not wake the loop.
        m_closed = true;
        m_readable->setEnabled(false);
        m_writable->setEnabled(false);
        m_timer->stop();
        return;
    }
    arm();
}

void EventLoopDispatcher::arm()
{
    if (!m_context || m_closed) {
        return;
    }
    const int events = sd_bus_get_events(m_bus.get());
    m_writable->setEnabled(events > 0 && (events & POLLOUT) != 0);
    std::uint64_t due = UINT64_MAX;
    if (sd_bus_get_timeout(m_bus.get(), &due) < 0 || due == UINT64_MAX) {
        m_timer->stop();
        return;
    }
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const std::uint64_t nowMicroseconds =
        std::uint64_t(now.tv_sec) * 1000000 + std::uint64_t(now.tv_nsec) / 1000;
    const std::uint64_t waitMilliseconds = due > nowMicroseconds ? (due - nowMicroseconds + 999) / 1000 : 0;
    const int interval = int(std::min<std::uint64_t>(waitMilliseconds, INT_MAX));
    if (!m_timer->isActive() || m_timer->remainingTime() != interval) {
        m_timer->start(interval);
    }
}

} // namespace VendelSDK::SdBus
