// Stops the process for a programming error, naming the message and where it was raised.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

namespace VendelSDK {

/// Prints "Fatal error: <message>: file <file>, line <line>" to standard error and aborts.
[[noreturn]] VENDELSDK_EXPORT void fatalError(const QString& message, const char* file, int line);

} // namespace VendelSDK
