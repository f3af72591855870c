// Maps the host's eight commands to D-Bus calls and their replies to script outcomes.
#include "VendelHostApplication.h"

#include <QCoreApplication>

#include "SdBus.h"

#include <array>

namespace VendelSDK {

namespace {

constexpr auto serviceName = "org.vendel.Host";
constexpr auto objectPath = "/org/vendel/Host";
constexpr auto interfaceName = "org.vendel.Host1";
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

ScriptOutcome outcomeOfError(const VendelHostApplication::Reply& reply)
{
    const QString& name = reply.errorName;
    if (name == u"org.freedesktop.DBus.Error.ServiceUnknown" ||
        name == u"org.freedesktop.DBus.Error.NameHasNoOwner") {
        //: The system's message when the host application is not running
        return failure(VendelHostApplication::applicationIsNotRunning,
                       QCoreApplication::translate("VendelHostApplication", "Application isn't running."));
    }
    if (name == u"org.freedesktop.DBus.Error.NoReply") {
        //: The system's message when the host application did not answer in time
        return failure(VendelHostApplication::timedOut,
                       QCoreApplication::translate("VendelHostApplication", "AppleEvent timed out."));
    }
    const QString& message = reply.errorMessage;
    return failure(VendelHostApplication::hostFailed, message.isEmpty() ? name : message);
}

} // namespace

VendelHostApplication::VendelHostApplication(std::optional<std::chrono::milliseconds> timeout)
    : m_timeout(timeout)
{}

QStringList VendelHostApplication::dictionary() const
{
    QStringList patterns;
    for (const Entry& entry : entries) {
        patterns.append(QString::fromLatin1(entry.pattern));
    }
    return patterns;
}

QList<VendelHostApplication::Method> VendelHostApplication::methods()
{
    QList<Method> methods;
    for (const Entry& entry : entries) {
        const QString pattern = QString::fromLatin1(entry.pattern);
        methods.append({QString::fromLatin1(entry.method), QString(pattern.count(u"%s"), u's')});
    }
    return methods;
}

ScriptOutcome VendelHostApplication::perform(qsizetype entry, const QStringList& arguments)
{
    // The bus is opened on first use, so that a process that never talks to the host never touches it.
    // The call blocks without running any event loop: the script stays synchronous, and only the bus's own
    // handlers (a launch handed over, which waits for the event loop) and termination signals run meanwhile.
    const SdBus::Bus bus = SdBus::Bus::session();
    SdBus::Message call = bus.methodCall(QString::fromLatin1(serviceName), objectPath, interfaceName,
                                         entries.at(static_cast<std::size_t>(entry)).method);
    for (const QString& argument : arguments) {
        call.append(argument);
    }
    SdBus::Reply answer = SdBus::call(bus, call, m_timeout);
    Reply reply;
    if (answer.error) {
        reply.errorName = answer.error->name;
        reply.errorMessage = answer.error->message;
    } else {
        // The reply is kept as it came: no arguments mean no result, whatever the method declares.
        reply.signature = answer.message.signature();
        if (reply.signature == u"s") {
            answer.message.read(reply.text);
        }
    }
    return outcome(static_cast<Command>(entry), reply);
}

ScriptOutcome VendelHostApplication::outcome(Command command, const Reply& reply)
{
    if (!reply.errorName.isEmpty()) {
        if (command == getPathOfPlugin && reply.errorName == noSuchPluginError) {
            return ScriptNoResult{};
        }
        return outcomeOfError(reply);
    }
    if (reply.signature.isEmpty()) {
        return ScriptNoResult{};
    }
    if (reply.signature == u"s") {
        return reply.text;
    }
    //: The system's message when the host application answered with a value of another kind
    return failure(
        unexpectedReply,
        QCoreApplication::translate("VendelHostApplication", "Can’t make some data into the expected type."));
}

} // namespace VendelSDK
