// An alert presenter for tests: records each alert and dismisses it at once with a chosen button.
#pragma once

#include <VendelSDK/AlertPresenter.h>

#include <QList>

#include <functional>

namespace VendelSDK::Testing {

/// Records every alert instead of showing it, and answers as the test chose, so that code that shows a
/// modal alert runs on without anyone to dismiss it.
class RecordingAlertPresenter final : public AlertPresenter
{
public:
    /// Makes a presenter, hands it to Platform::setAlertPresenter() and returns it; it stays owned by the
    /// platform, and is valid until the platform's presenter is replaced or reset.
    static RecordingAlertPresenter& install();

    /// Records the alert, calls onAlert with it, and returns answer.
    int runModal(const Alert& alert) override;

    /// Every alert shown, in order.
    QList<Alert> alerts;
    /// The index of the button that "dismisses" each alert; 0 is the default button.
    int answer = 0;
    /// Called while the alert is "on screen", to observe what happened before it was dismissed.
    std::function<void(const Alert&)> onAlert;
};

} // namespace VendelSDK::Testing
