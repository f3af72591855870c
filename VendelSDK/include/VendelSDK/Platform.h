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

class VENDELSDK_EXPORT Platform
{
public:
    Platform() = delete;

    // Each accessor makes the platform's default backend on first use when none was set.
    static ScriptEngine& scriptEngine();
    static AlertPresenter& alertPresenter();
    static ApplicationServices& applicationServices();
    static UrlOpener& urlOpener();
    static const Bundle& mainBundle();
    // What the SDK's waits are scheduled with and timed by; the event loop's timers by default.
    static Scheduler& scheduler();

    static void setScriptEngine(std::unique_ptr<ScriptEngine> engine);
    static void setAlertPresenter(std::unique_ptr<AlertPresenter> presenter);
    static void setApplicationServices(std::unique_ptr<ApplicationServices> services);
    static void setUrlOpener(std::unique_ptr<UrlOpener> opener);
    static void setMainBundle(Bundle bundle);
    // Work already scheduled stays with the scheduler it was given to, and goes with it.
    static void setScheduler(std::unique_ptr<Scheduler> scheduler);

    // Drops every backend; the next use makes the defaults again.
    static void reset();
};

} // namespace VendelSDK
