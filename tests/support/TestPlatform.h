// Installs test backends into every platform seam and hands them to the test.
#pragma once

#include "FakeApplicationServices.h"
#include "FakeScriptEngine.h"
#include "RecordingAlertPresenter.h"
#include "RecordingUrlOpener.h"

#include <VendelSDK/Platform.h>

namespace VendelSDK::Testing {

// Each construction replaces all backends, so every test function starts clean.
struct TestPlatform
{
    TestPlatform();
    ~TestPlatform();
    TestPlatform(const TestPlatform&) = delete;
    TestPlatform& operator=(const TestPlatform&) = delete;

    FakeScriptEngine* engine;
    RecordingAlertPresenter* alerts;
    FakeApplicationServices* services;
    RecordingUrlOpener* opener;
};

} // namespace VendelSDK::Testing
