// Uses the bus name's queue, so that the bus daemon alone decides which launch becomes the running instance.
#include "DBusLaunchChannel.h"

#include <algorithm>
#include <cstdio>

namespace VendelSDK {

using namespace std::chrono;

bool LaunchService::Launch(const QStringList& urls)
{
    if (!receiver || urls.size() > 1) {
        return false;
    }
    return receiver(urls.isEmpty() ? std::nullopt : std::optional<QString>(urls.first()));
}

DBusLaunchChannel::DBusLaunchChannel(SdBus::Bus bus, milliseconds handOverTimeout)
    : m_bus(std::move(bus)), m_handOverTimeout(handOverTimeout)
{}

milliseconds DBusLaunchChannel::handOverTimeoutFromEnvironment()
{
    bool valid = false;
    const double seconds = qEnvironmentVariable("VENDEL_HANDOVER_TIMEOUT").trimmed().toDouble(&valid);
    if (!valid || !(seconds > 0)) {
        return defaultHandOverTimeout;
    }
    return milliseconds(qint64(std::clamp(seconds * 1000.0, 1.0, 86400000.0)));
}

DBusLaunchChannel::~DBusLaunchChannel()
{
    // Launches handed over from now on find no object and wait for the name instead.
    m_dispatcher.reset();
    m_object.reset();
}

void DBusLaunchChannel::release()
{
    m_service.receiver = nullptr;
    giveUpName();
}

void DBusLaunchChannel::giveUpName()
{
    if (!m_name.isEmpty()) {
        SdBus::releaseName(m_bus, m_name);
        m_name.clear();
    }
}

QString DBusLaunchChannel::busName(const QString& applicationID)
{
    // Elements of a bus name are made of ASCII letters, digits, "_" and "-", and do not start with a digit.
    QStringList elements;
    for (const QString& part : applicationID.split(QLatin1Char('.'))) {
        QString element;
        for (const QChar c : part) {
            const bool allowed = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
                                 (c >= u'0' && c <= u'9') || c == u'_' || c == u'-';
            element.append(allowed ? c : QLatin1Char('_'));
        }
        if (element.isEmpty() || element.front().isDigit()) {
            element.prepend(QLatin1Char('_'));
        }
        elements.append(element);
    }
    if (elements.size() < 2) {
        elements.prepend(QStringLiteral("org.vendel.plugin"));
    }
    // A bus name is at most 255 characters; a longer identifier keeps its beginning.
    return elements.join(QLatin1Char('.')).left(255);
}

LaunchChannel::Role DBusLaunchChannel::claim(const QString& applicationID, const std::optional<QString>& url,
                                             LaunchReceiver receiver)
{
    if (!m_bus.isConnected()) {
        // Without a session bus there is no one to hand over to: this launch serves itself.
        return Role::running;
    }
    m_name = busName(applicationID);
    m_object = SdBus::serveMethod(m_bus, objectPath, interfaceName, launchMethod, launchSignature,
                                  launchResult, [this](SdBus::Message& call, SdBus::Message& reply) {
                                      QStringList urls;
                                      if (!call.read(urls)) {
                                          return false;
                                      }
                                      reply.append(m_service.Launch(urls));
                                      return true;
                                  });
    if (SdBus::requestName(m_bus, m_name) == SdBus::NameRequest::queued) {
        if (forward(m_name, url) || !waitToTakeOver(m_name, url)) {
            giveUpName();
            return Role::forwarded;
        }
    }
    // The name could not be asked for at all (an odd bus): serve this launch alone rather than lose it.
    m_service.receiver = std::move(receiver);
    // Later launches arrive while the application runs its event loop.
    m_dispatcher = std::make_unique<SdBus::EventLoopDispatcher>(m_bus);
    return Role::running;
}

bool DBusLaunchChannel::forward(const QString& name, const std::optional<QString>& url)
{
    SdBus::Message call = m_bus.methodCall(name, objectPath, interfaceName, launchMethod);
    call.append(url ? QStringList{*url} : QStringList{});
    SdBus::Reply reply = SdBus::call(m_bus, call, m_handOverTimeout);
    bool accepted = false;
    return !reply.error && reply.message.signature() == QLatin1String(launchResult) &&
           reply.message.read(accepted) && accepted;
}

bool DBusLaunchChannel::waitToTakeOver(const QString& name, const std::optional<QString>& url)
{
    // The running instance refused, usually because it is ending. The queue makes this launch the owner
    // when it has gone; a launch queued earlier may take over first, and is then asked again. Nothing else
    // runs in this process yet, so the wait serves the bus alone, without an event loop.
    QString owner;
    bool ownerChanged = false;
    const SdBus::Slot watch = SdBus::addMatch(
        m_bus,
        QStringLiteral("type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                       "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='%1'")
            .arg(name),
        [&](SdBus::Message& signal) {
            QString changedName;
            QString oldOwner;
            QString newOwner;
            if (signal.read(changedName) && signal.read(oldOwner) && signal.read(newOwner) &&
                changedName == name) {
                owner = newOwner;
                ownerChanged = true;
            }
        });
    const QString self = m_bus.uniqueName();
    // The owner may have changed between the refusal and the start of the watch.
    const QString refusedBy = SdBus::nameOwner(m_bus, name);
    owner = refusedBy;
    ownerChanged = true;
    const auto deadline = steady_clock::now() + m_handOverTimeout;
    for (;;) {
        if (ownerChanged) {
            ownerChanged = false;
            if (owner == self) {
                return true;
            }
            if (!owner.isEmpty() && owner != refusedBy && forward(name, url)) {
                return false;
            }
        }
        if (SdBus::waitUntil(
                m_bus, [&ownerChanged] { return ownerChanged; }, deadline) != SdBus::WaitEnd::done) {
            std::fputs("The running instance did not answer; this launch goes on by itself.\n", stderr);
            return true;
        }
    }
}

} // namespace VendelSDK
