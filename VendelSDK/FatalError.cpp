// Prints the fatal report and aborts, so that a core dump or debugger sees the faulty state.
#include <VendelSDK/FatalError.h>

#include <cstdio>
#include <cstdlib>

namespace VendelSDK {

void fatalError(const QString& message, const char* file, int line)
{
    std::fprintf(stderr, "Fatal error: %s: file %s, line %d\n", message.toUtf8().constData(), file, line);
    std::fflush(stderr);
    std::abort();
}

} // namespace VendelSDK
