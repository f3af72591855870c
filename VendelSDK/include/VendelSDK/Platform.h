// The one place where the platform backends are chosen at start-up and replaced in tests.
#pragma once

#include <VendelSDK/AlertPresenter.h>
#include <VendelSDK/ApplicationServices.h>
#include <VendelSDK/Bundle.h>
#include <VendelSDK/Export.h>
#include <VendelSDK/Scheduler.h>
#include <VendelSDK/ScriptEngine.h>
#include <VendelSDK/UrlOpener.h>

#include <memory>

namespace VendelSDK {

/// The backends of the SDK's seams, one of each per process. Set a backend before the code that uses it runs:
/// tests install theirs (VendelSDK::Testing) and call reset() after. Each accessor makes the platform's
/// default backend on first use when none was set.
class VENDELSDK_EXPORT Platform
{
public:
    Platform() = delete;

    /// What runs the scripts that reach the host.
    static ScriptEngine& scriptEngine();
    /// What shows every alert.
    static AlertPresenter& alertPresenter();
    /// The running application's launch, termination and windows.
    static ApplicationServices& applicationServices();
    /// What opens command URLs.
    static UrlOpener& urlOpener();
    /// The running plugin's identity.
    static const Bundle& mainBundle();
    /// What the SDK's waits are scheduled with and timed by; the event loop's timers by default.
    static Scheduler& scheduler();

    /// Replaces the backend of the same name; the replaced one is destroyed.
    static void setScriptEngine(std::unique_ptr<ScriptEngine> engine);
    /// Replaces the backend of the same name; the replaced one is destroyed.
    static void setAlertPresenter(std::unique_ptr<AlertPresenter> presenter);
    /// Replaces the backend of the same name; the replaced one is destroyed.
    static void setApplicationServices(std::unique_ptr<ApplicationServices> services);
    /// Replaces the backend of the same name; the replaced one is destroyed.
    static void setUrlOpener(std::unique_ptr<UrlOpener> opener);
    /// Replaces the running plugin's identity.
    static void setMainBundle(Bundle bundle);
    /// Work already scheduled stays with the scheduler it was given to, and goes with it.
    static void setScheduler(std::unique_ptr<Scheduler> scheduler);

    /// Drops every backend; the next use makes the defaults again.
    static void reset();
};

} // namespace VendelSDK
