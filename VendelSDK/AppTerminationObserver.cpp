// Delivers the will-terminate hook to the observer's closure on the main thread.
#include <VendelSDK/AppTerminationObserver.h>

#include <VendelSDK/Platform.h>

namespace VendelSDK {

AppTerminationObserver::AppTerminationObserver(std::function<void()> run) : onRun(std::move(run))
{
    // The observer is the context object: the connection ends with it, and a hook announced from another
    // thread is queued to the observer's (main) thread.
    connect(&Platform::applicationServices(), &ApplicationServices::willTerminate, this, [this] {
        // A copy, so that the closure may replace or clear onRun, and so release its owner, while it runs.
        const std::function<void()> closure = onRun;
        if (closure) {
            closure();
        }
    });
}

} // namespace VendelSDK
