// A small owning layer over sd-bus: the connection, messages, errors, blocking calls and served methods.
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

struct sd_bus;
struct sd_bus_message;
struct sd_bus_slot;

class QObject;
class QSocketNotifier;
class QTimer;

namespace VendelSDK::SdBus {

// An error as the bus names it, with its readable message (possibly empty).
struct Error
{
    QString name;
    QString message;
};

// Errors this layer reports itself, named as the bus names them.
inline constexpr auto disconnectedError = "org.freedesktop.DBus.Error.Disconnected";
inline constexpr auto noReplyError = "org.freedesktop.DBus.Error.NoReply";
inline constexpr auto invalidArgsError = "org.freedesktop.DBus.Error.InvalidArgs";

struct Unref
{
    void operator()(sd_bus* bus) const;
    void operator()(sd_bus_message* message) const;
    void operator()(sd_bus_slot* slot) const;
};

// A registration on the bus (a served object, a match); it ends when the slot goes.
using Slot = std::unique_ptr<sd_bus_slot, Unref>;

// A message being built (a call, a reply) or read (a reply, an incoming call). Appending stops at the first
// value the bus cannot carry, and the call then fails with InvalidArgs instead of sending a changed value.
// Reads return false when the next value is not of the asked type.
class Message
{
public:
    Message() = default;
    // Takes over one reference.
    explicit Message(sd_bus_message* message);

    sd_bus_message* get() const { return m_message.get(); }
    bool isValid() const { return m_message != nullptr && m_status >= 0; }

    Message& append(const QString& text);
    Message& append(const QStringList& texts);
    Message& append(bool value);
    Message& append(quint32 value);
    Message& appendObjectPath(const QString& path);
    Message& appendVariant(bool value);

    // The signature of the whole message's arguments.
    QString signature() const;
    // The number its sender gave it; each connection numbers the messages it sends in increasing order.
    quint64 serial() const;
    bool read(QString& text);
    bool read(QStringList& texts);
    bool read(bool& value);
    bool read(quint32& value);
    bool read(qint32& value);
    bool readObjectPath(QString& path);
    bool enter(char type, const char* contents);
    bool exit();
    bool skip();

private:
    friend class Bus;
    Message& fail(int status);
    bool readText(char type, QString& text);

    std::unique_ptr<sd_bus_message, Unref> m_message;
    int m_status = 0;
};

// What came back from a call: a method return, or an error.
struct Reply
{
    std::optional<Error> error;
    Message message;
};

// A shared reference to a bus connection. A default-constructed bus is not connected: every call on it fails
// with Disconnected, as calls on a session bus that could not be reached do.
class Bus
{
public:
    Bus() = default;
    // Adds one reference.
    explicit Bus(sd_bus* bus);
    Bus(const Bus& other);
    Bus& operator=(const Bus& other);
    Bus(Bus&&) noexcept = default;
    Bus& operator=(Bus&&) noexcept = default;
    ~Bus();

    // The calling thread's connection to the user's session bus (DBUS_SESSION_BUS_ADDRESS), opened on first
    // use and kept for the thread's life, so that every client in the thread shares one connection.
    static Bus session();

    sd_bus* get() const { return m_bus.get(); }
    bool isConnected() const;
    // The connection's unique name, such as ":1.42"; empty when not connected.
    QString uniqueName() const;

    Message methodCall(const QString& destination, const char* path, const char* interface,
                       const char* member) const;
    // Blocks the calling thread until the reply, an error or the time-out (the bus's default without one);
    // runs nothing else meanwhile. A time-out reads as NoReply, as the bus daemon reports it.
    Reply call(Message& message, std::optional<std::chrono::milliseconds> timeout = std::nullopt) const;

    // Asks for a well-known name, waiting in its queue while another connection owns it; a connection that
    // owns the name already is its owner.
    enum class NameRequest
    {
        owner,
        queued,
        failed,
    };
    NameRequest requestName(const QString& name) const;
    void releaseName(const QString& name) const;
    // The unique name of the name's owner; empty when it has none or the bus cannot say.
    QString nameOwner(const QString& name) const;

    // Serves one method of an object. The handler reads the call's arguments and appends the reply's;
    // when it returns false the caller gets InvalidArgs.
    using MethodHandler = std::function<bool(Message& call, Message& reply)>;
    Slot serveMethod(const char* path, const char* interface, const char* member, const char* signature,
                     const char* result, MethodHandler handler) const;
    // Calls the handler for every message that the match rule selects.
    Slot addMatch(const QString& rule, std::function<void(Message&)> handler) const;

    // Handles what the connection has received; when nothing was, waits for more until the deadline.
    // False when the deadline passed or the connection failed.
    bool processUntil(std::chrono::steady_clock::time_point deadline) const;

private:
    std::unique_ptr<sd_bus, Unref> m_bus;
};

// Handles a connection's incoming messages from the calling thread's Qt event loop: the bus's file
// descriptor wakes the loop, and the bus's own time-outs run on a timer.
class EventLoopDispatcher
{
public:
    explicit EventLoopDispatcher(Bus bus);
    ~EventLoopDispatcher();
    EventLoopDispatcher(const EventLoopDispatcher&) = delete;
    EventLoopDispatcher& operator=(const EventLoopDispatcher&) = delete;

private:
    void dispatch();
    void arm();

    Bus m_bus;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    std::unique_ptr<QTimer> m_timer;
    std::unique_ptr<QObject> m_context;
    bool m_closed = false;
};

} // namespace VendelSDK::SdBus
