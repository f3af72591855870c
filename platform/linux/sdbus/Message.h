// Messages of the sd-bus layer: building and reading them, the bus's errors, and owning registrations.
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

struct sd_bus;
struct sd_bus_message;
struct sd_bus_slot;

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
inline constexpr auto failedError = "org.freedesktop.DBus.Error.Failed";

struct Unref
{
    void operator()(sd_bus* bus) const;
    void operator()(sd_bus_message* message) const;
    void operator()(sd_bus_slot* slot) const;
};

// A registration on the bus (a served object, a match, a pending call); it ends when the slot goes.
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
    // Marks the message as not to be sent when `status` is a failure (negative); the first one counts.
    Message& fail(int status);

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
    bool readText(char type, QString& text);

    std::unique_ptr<sd_bus_message, Unref> m_message;
    int m_status = 0;
};

} // namespace VendelSDK::SdBus
