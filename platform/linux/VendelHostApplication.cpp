// Maps the host's eight commands to D-Bus calls and their replies to script outcomes.
#include "VendelHostApplication.h"

#include "VendelHostProxy.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <array>

namespace VendelSDK {

namespace {

const QString serviceName = QStringLiteral("org.vendel.Host");
const QString objectPath = QStringLiteral("/org/vendel/Host");
const QString noSuchPluginError = QStringLiteral("org.vendel.Host1.Error.NoSuchPlugin");

struct Entry
{
    const char* pattern;
    const char* method;
};

// Indexed by VendelHostApplication::Command; the arguments pass in the order the pattern takes them.
constexpr std::array<Entry, 8> entries{{
    {"get global config %s", "GetGlobalConfig"},
    {"set global config %s action bundle id %s", "SetGlobalConfig"},
    {"get config %s", "GetConfig"},
    {"set config %s action %s", "SetConfig"},
    {"get plugin folder path", "GetPluginFolderPath"},
    {"get path of plugin %s", "GetPathOfPlugin"},
    {"get is plugin installed at path %s", "IsPluginInstalledAtPath"},
    {"install plugin", "InstallPlugin"},
}};

ScriptErrorRecord failure(qint64 number, const QString& message)
{
    return ScriptErrorRecord{number, message, message};
}

ScriptOutcome outcomeOfError(const QDBusMessage& reply)
{
    const QString name = reply.errorName();
    if (name == u"org.freedesktop.DBus.Error.ServiceUnknown" ||
        name == u"org.freedesktop.DBus.Error.NameHasNoOwner") {
        return failure(VendelHostApplication::applicationIsNotRunning,
                       QStringLiteral("Application isn't running."));
    }
    if (name == u"org.freedesktop.DBus.Error.NoReply") {
        return failure(VendelHostApplication::timedOut, QStringLiteral("AppleEvent timed out."));
    }
    const QString message = reply.errorMessage();
    return failure(VendelHostApplication::hostFailed, message.isEmpty() ? name : message);
}

} // namespace

VendelHostApplication::VendelHostApplication(std::optional<std::chrono::milliseconds> timeout)
    : m_timeout(timeout)
{}

VendelHostApplication::~VendelHostApplication() = default;

QStringList VendelHostApplication::dictionary() const
{
    QStringList patterns;
    for (const Entry& entry : entries) {
        patterns.append(QString::fromLatin1(entry.pattern));
    }
    return patterns;
}

ScriptOutcome VendelHostApplication::perform(qsizetype entry, const QStringList& arguments)
{
    QVariantList values;
    for (const QString& argument : arguments) {
        values.append(argument);
    }
    // The generated typed calls would turn an argument-less reply, which means no result, into a
    // signature error, and the blocking call pads it with an empty value; an untyped pending call keeps the
    // reply as it came. Waiting on it runs no event loop, so the script stays synchronous and nothing else
    // runs on the main thread meanwhile.
    QDBusPendingCall call = proxy().asyncCallWithArgumentList(
        QString::fromLatin1(entries.at(static_cast<std::size_t>(entry)).method), values);
    call.waitForFinished();
    const QDBusMessage reply = call.reply();
    return outcome(static_cast<Command>(entry), reply);
}

ScriptOutcome VendelHostApplication::outcome(Command command, const QDBusMessage& reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage) {
        if (command == getPathOfPlugin && reply.errorName() == noSuchPluginError) {
            return ScriptNoResult{};
        }
        return outcomeOfError(reply);
    }
    const QVariantList values = reply.arguments();
    if (reply.type() == QDBusMessage::ReplyMessage && values.isEmpty()) {
        return ScriptNoResult{};
    }
    if (reply.type() == QDBusMessage::ReplyMessage && values.size() == 1 &&
        values.constFirst().metaType() == QMetaType::fromType<QString>()) {
        return values.constFirst().toString();
    }
    return failure(unexpectedReply, QStringLiteral("Can’t make some data into the expected type."));
}

VendelHostProxy& VendelHostApplication::proxy()
{
    // Made on first use, so that a process that never talks to the host never touches the bus.
    if (!m_proxy) {
        m_proxy = std::make_unique<VendelHostProxy>(serviceName, objectPath, QDBusConnection::sessionBus());
        if (m_timeout) {
            m_proxy->setTimeout(static_cast<int>(m_timeout->count()));
        }
    }
    return *m_proxy;
}

} // namespace VendelSDK
