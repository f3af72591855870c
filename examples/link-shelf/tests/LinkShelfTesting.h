// What every test of the plugin starts from: the kit's host, clock, alerts and services, and the plugin's
// identity.
#pragma once

#include <VendelSDK/Bundle.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/Testing/ManualScheduler.h>
#include <VendelSDK/Testing/RecordingAlertPresenter.h>
#include <VendelSDK/Testing/ScriptedHost.h>
#include <VendelSDK/Testing/TestApplicationServices.h>

#include <QString>

#include <memory>

namespace LinkShelf::Testing {

inline const QString bundlePath = QStringLiteral("/usr/bin/vendel-link-shelf");

// A fresh platform for one test function; the host is checked and the platform dropped when it goes.
struct Fixture
{
    VendelSDK::Testing::TestApplicationServices& services =
        VendelSDK::Testing::TestApplicationServices::install();
    VendelSDK::Testing::ManualScheduler& scheduler = VendelSDK::Testing::ManualScheduler::install();
    VendelSDK::Testing::RecordingAlertPresenter& alerts =
        VendelSDK::Testing::RecordingAlertPresenter::install();
    std::unique_ptr<VendelSDK::Testing::ScriptedHost> host = makeHost();

    ~Fixture() { VendelSDK::Platform::reset(); }

private:
    static std::unique_ptr<VendelSDK::Testing::ScriptedHost> makeHost()
    {
        // The global configuration is kept under the plugin's identifier, which the build gives the plugin.
        VendelSDK::Platform::setMainBundle(VendelSDK::Bundle(
            bundlePath, QStringLiteral("org.example.LinkShelf"),
            {{QString::fromLatin1(VendelSDK::Bundle::nameKey), QStringLiteral("Link Shelf")},
             {QString::fromLatin1(VendelSDK::Bundle::shortVersionKey), QStringLiteral("1.0")}}));
        auto host = std::make_unique<VendelSDK::Testing::ScriptedHost>();
        host->install();
        return host;
    }
};

} // namespace LinkShelf::Testing
