// Holds the chosen backends; defaults are made lazily so that a test can replace any of them first.
#include <VendelSDK/Platform.h>

#include <VendelSDK/QtApplicationServices.h>
#include <VendelSDK/QtScheduler.h>
#include <VendelSDK/StderrAlertPresenter.h>

#include <optional>

namespace VendelSDK {

namespace {

struct Backends
{
    std::unique_ptr<ScriptEngine> scriptEngine;
    std::unique_ptr<AlertPresenter> alertPresenter;
    std::unique_ptr<ApplicationServices> applicationServices;
    std::unique_ptr<UrlOpener> urlOpener;
    std::optional<Bundle> mainBundle;
    std::unique_ptr<Scheduler> scheduler;
};

Backends& backends()
{
    static Backends instance;
    return instance;
}

} // namespace

ScriptEngine& Platform::scriptEngine()
{
    auto& slot = backends().scriptEngine;
    if (!slot) {
        slot = makePlatformScriptEngine();
    }
    return *slot;
}

AlertPresenter& Platform::alertPresenter()
{
    auto& slot = backends().alertPresenter;
    if (!slot) {
        slot = std::make_unique<StderrAlertPresenter>();
    }
    return *slot;
}

ApplicationServices& Platform::applicationServices()
{
    auto& slot = backends().applicationServices;
    if (!slot) {
        slot = std::make_unique<QtApplicationServices>();
    }
    return *slot;
}

UrlOpener& Platform::urlOpener()
{
    auto& slot = backends().urlOpener;
    if (!slot) {
        slot = makePlatformUrlOpener();
    }
    return *slot;
}

const Bundle& Platform::mainBundle()
{
    auto& slot = backends().mainBundle;
    if (!slot) {
        slot = makePlatformMainBundle();
    }
    return *slot;
}

Scheduler& Platform::scheduler()
{
    auto& slot = backends().scheduler;
    if (!slot) {
        slot = std::make_unique<QtScheduler>();
    }
    return *slot;
}

void Platform::setScriptEngine(std::unique_ptr<ScriptEngine> engine)
{
    backends().scriptEngine = std::move(engine);
}

void Platform::setAlertPresenter(std::unique_ptr<AlertPresenter> presenter)
{
    backends().alertPresenter = std::move(presenter);
}

void Platform::setApplicationServices(std::unique_ptr<ApplicationServices> services)
{
    backends().applicationServices = std::move(services);
}

void Platform::setUrlOpener(std::unique_ptr<UrlOpener> opener)
{
    backends().urlOpener = std::move(opener);
}

void Platform::setMainBundle(Bundle bundle)
{
    backends().mainBundle = std::move(bundle);
}

void Platform::setScheduler(std::unique_ptr<Scheduler> scheduler)
{
    backends().scheduler = std::move(scheduler);
}

void Platform::reset()
{
    backends() = Backends{};
}

} // namespace VendelSDK
