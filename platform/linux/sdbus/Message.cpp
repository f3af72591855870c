// Messages: appending stops at the first value the bus cannot carry; reads leave values alone on a mismatch.
#include "Message.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstdint>

namespace VendelSDK::SdBus {

namespace {

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

} // namespace VendelSDK::SdBus
