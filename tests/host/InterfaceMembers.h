// The methods and signals of one D-Bus interface as introspection XML describes them, for holding a live
// service to a committed description.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace VendelHost::Testing {

// "method Name(in)(out)" and "signal Name(args)" lines by argument types, sorted; annotations and the names
// of arguments left aside. The parser's error alone when the XML is not well formed.
QStringList interfaceMembers(const QByteArray& xml, const QString& interface);
// The live introspection of an object on the session bus.
QByteArray introspection(const QString& service, const QString& path);

} // namespace VendelHost::Testing
