// The URL-opener seam: hands a URL to the system, which starts whatever handles its scheme.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <memory>

namespace VendelSDK {

/// Hands URLs to the system; Command::send() opens its URL through Platform::urlOpener().
class VENDELSDK_EXPORT UrlOpener
{
public:
    virtual ~UrlOpener() = default;

    /// The answer of the system, whether a handler accepted the URL, is not reported.
    virtual void open(const QString& url) = 0;
};

/// The opener of the platform this build targets; CMake picks the implementation.
VENDELSDK_EXPORT std::unique_ptr<UrlOpener> makePlatformUrlOpener();

} // namespace VendelSDK
