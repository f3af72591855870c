// Reads the committed D-Bus interface descriptions, so that tests can hold the plugin's calls to them.
#pragma once

#include <QHash>
#include <QString>

namespace VendelSDK::Testing {

// A method's signatures: its in-arguments' and its out-arguments', in order.
struct DescribedMethod
{
    QString in;
    QString out;
};

// The methods of one interface of a description in platform/linux/dbus/, by name; empty when the file
// cannot be read or does not describe that interface.
QHash<QString, DescribedMethod> describedMethods(const QString& file, const char* interface);

} // namespace VendelSDK::Testing
