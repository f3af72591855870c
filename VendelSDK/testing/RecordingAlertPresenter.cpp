// Records alerts in place of showing them.
#include <VendelSDK/Testing/RecordingAlertPresenter.h>

#include <VendelSDK/Platform.h>

namespace VendelSDK::Testing {

RecordingAlertPresenter& RecordingAlertPresenter::install()
{
    auto presenter = std::make_unique<RecordingAlertPresenter>();
    RecordingAlertPresenter& installed = *presenter;
    Platform::setAlertPresenter(std::move(presenter));
    return installed;
}

int RecordingAlertPresenter::runModal(const Alert& alert)
{
    alerts.append(alert);
    if (onAlert) {
        onAlert(alert);
    }
    return answer;
}

} // namespace VendelSDK::Testing
