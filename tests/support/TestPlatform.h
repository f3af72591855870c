// Installs test backends into every platform seam and hands them to the test.
#pragma once

#include "FakeScriptEngine.h"
#include "RecordingUrlOpener.h"

#include <VendelSDK/Platform.h>
#include <VendelSDK/Testing/ManualScheduler.h>
#include <VendelSDK/Testing/RecordingAlertPresenter.h>
#include <VendelSDK/Testing/TestApplicationServices.h>

namespace VendelSDK::Testing {

// Each construction replaces all backends, so every test function starts clean. Time is virtual: nothing that
// the SDK schedules runs until the test moves `scheduler` on.
struct TestPlatform
{
    TestPlatform();
    ~TestPlatform();
    TestPlatform(const TestPlatform&) = delete;
    TestPlatform& operator=(const TestPlatform&) = delete;

    FakeScriptEngine* engine;
    RecordingAlertPresenter* alerts;
    TestApplicationServices* services;
    RecordingUrlOpener* opener;
    ManualScheduler* scheduler;
};

} // namespace VendelSDK::Testing
