// Replaces the platform backends with test doubles, and restores the defaults afterwards.
#include "TestPlatform.h"

namespace VendelSDK::Testing {

TestPlatform::TestPlatform()
{
    auto engineOwner = std::make_unique<FakeScriptEngine>();
    auto alertsOwner = std::make_unique<RecordingAlertPresenter>();
    auto servicesOwner = std::make_unique<TestApplicationServices>();
    auto openerOwner = std::make_unique<RecordingUrlOpener>();
    auto schedulerOwner = std::make_unique<ManualScheduler>();
    engine = engineOwner.get();
    alerts = alertsOwner.get();
    services = servicesOwner.get();
    opener = openerOwner.get();
    scheduler = schedulerOwner.get();
    Platform::reset();
    Platform::setScriptEngine(std::move(engineOwner));
    Platform::setAlertPresenter(std::move(alertsOwner));
    Platform::setApplicationServices(std::move(servicesOwner));
    Platform::setUrlOpener(std::move(openerOwner));
    Platform::setScheduler(std::move(schedulerOwner));
    Platform::setMainBundle(Bundle(QStringLiteral("/opt/vendel/plugins/test-plugin"),
                                   QStringLiteral("org.vendel.test-plugin"), {}));
}

TestPlatform::~TestPlatform()
{
    Platform::reset();
}

} // namespace VendelSDK::Testing
