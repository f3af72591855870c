// An alert presenter for tests: records each alert and dismisses it at once.
#pragma once

#include <VendelSDK/AlertPresenter.h>

#include <QList>

#include <functional>

namespace VendelSDK::Testing {

class RecordingAlertPresenter final : public AlertPresenter
{
public:
    int runModal(const Alert& alert) override
    {
        alerts.append(alert);
        if (onAlert) {
            onAlert(alert);
        }
        return answer;
    }

    QList<Alert> alerts;
    int answer = 0;
    // Called while the alert is "on screen", to observe what happened before it was dismissed.
    std::function<void(const Alert&)> onAlert;
};

} // namespace VendelSDK::Testing
