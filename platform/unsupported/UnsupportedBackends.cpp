// Backends of a platform without a port: nothing can be executed or opened.
#include "UnavailableScriptEngine.h"
#include <VendelSDK/UrlOpener.h>

#include <cstdio>

namespace VendelSDK {

namespace {

class UnavailableUrlOpener final : public UrlOpener
{
public:
    void open(const QString& url) override
    {
        std::fprintf(stderr, "Opening URLs is not available on this platform: %s\n",
                     url.toUtf8().constData());
    }
};

} // namespace

std::unique_ptr<ScriptEngine> makePlatformScriptEngine()
{
    return std::make_unique<UnavailableScriptEngine>();
}

std::unique_ptr<UrlOpener> makePlatformUrlOpener()
{
    return std::make_unique<UnavailableUrlOpener>();
}

} // namespace VendelSDK
