// The SDK error code that an operation throws, for tests that check which failure it reports.
#pragma once

#include <VendelSDK/Error.h>

#include <functional>

namespace VendelSDK::Testing {

// The code of the SDK error thrown, or -1 when the operation returned normally.
inline qint64 errorCodeOf(const std::function<void()>& operation)
{
    try {
        operation();
    } catch (const Error& error) {
        return error.code();
    }
    return -1;
}

} // namespace VendelSDK::Testing
