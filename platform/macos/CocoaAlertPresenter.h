// Alerts as native alert panels: an error's own panel, or the texts and buttons in order.
#pragma once

#include <VendelSDK/AlertPresenter.h>

namespace VendelSDK {

class CocoaAlertPresenter final : public AlertPresenter
{
public:
    int runModal(const Alert& alert) override;
};

} // namespace VendelSDK
