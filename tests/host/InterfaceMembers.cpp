// Only the members' names, kinds and argument types count: that is what a client built from either side sees.
#include "InterfaceMembers.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QXmlStreamReader>

namespace VendelHost::Testing {

QStringList interfaceMembers(const QByteArray& xml, const QString& interface)
{
    QStringList members;
    QXmlStreamReader reader(xml);
    bool inInterface = false;
    QString member;
    QString in;
    QString out;
    const auto finish = [&] {
        if (!member.isEmpty()) {
            members.append(QStringLiteral("%1(%2)(%3)").arg(member, in, out));
        }
        member.clear();
        in.clear();
        out.clear();
    };
    while (!reader.atEnd()) {
        reader.readNext();
        const auto attributes = reader.attributes();
        if (reader.isStartElement() && reader.name() == u"interface") {
            inInterface = attributes.value(QLatin1String("name")) == interface;
        } else if (reader.isEndElement() && reader.name() == u"interface") {
            inInterface = false;
        } else if (inInterface && reader.isStartElement() &&
                   (reader.name() == u"method" || reader.name() == u"signal")) {
            finish();
            member = reader.name().toString() + u' ' + attributes.value(QLatin1String("name")).toString();
        } else if (inInterface && reader.isStartElement() && reader.name() == u"arg") {
            (attributes.value(QLatin1String("direction")) == u"out" ? out : in) +=
                attributes.value(QLatin1String("type")).toString();
        }
    }
    finish();
    members.sort();
    return reader.hasError() ? QStringList{reader.errorString()} : members;
}

QByteArray introspection(const QString& service, const QString& path)
{
    const QDBusMessage reply = QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect")));
    return reply.arguments().isEmpty() ? QByteArray() : reply.arguments().constFirst().toString().toUtf8();
}

} // namespace VendelHost::Testing
