// The macOS backends of the core seams: AppleScript, the workspace's URL opening, and the main bundle.
#include "AppleScriptEngine.h"
#include "FoundationConversions.h"

#include <VendelSDK/Bundle.h>
#include <VendelSDK/UrlOpener.h>

#import <AppKit/AppKit.h>

namespace VendelSDK {

namespace {

class WorkspaceUrlOpener final : public UrlOpener
{
public:
    void open(const QString& url) override
    {
        @autoreleasepool {
            // Whether an application took the URL is not reported, as everywhere.
            NSURL* target = [NSURL URLWithString:toNSString(url)];
            if (target != nil) {
                [[NSWorkspace sharedWorkspace] openURL:target];
            }
        }
    }
};

} // namespace

std::unique_ptr<ScriptEngine> makePlatformScriptEngine()
{
    return std::make_unique<AppleScriptEngine>();
}

std::unique_ptr<UrlOpener> makePlatformUrlOpener()
{
    return std::make_unique<WorkspaceUrlOpener>();
}

// The host knows an installed plugin by its bundle's path; the identity and the About panel's keys come
// from the bundle's information list, or, for an executable outside a bundle (a test), from its build.
Bundle makePlatformMainBundle()
{
    @autoreleasepool {
        NSBundle* bundle = [NSBundle mainBundle];
        return Bundle(toQString(bundle.bundlePath), toQString(bundle.bundleIdentifier),
                      toQVariantMap(bundle.infoDictionary))
            .withBuiltIdentity();
    }
}

} // namespace VendelSDK
