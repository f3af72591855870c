// Shows alerts as modal message boxes in a windowed application.
#pragma once

#include <VendelSDK/AlertPresenter.h>

namespace VendelSDK {

class WidgetAlertPresenter final : public AlertPresenter
{
public:
    // Blocks in the message box's own event loop; returns the index of the button that was pressed.
    int runModal(const Alert& alert) override;
};

} // namespace VendelSDK
