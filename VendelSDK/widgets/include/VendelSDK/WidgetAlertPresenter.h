// Shows alerts as modal message boxes in a windowed application.
#pragma once

#include <VendelSDK/AlertPresenter.h>
#include <VendelSDK/WidgetsExport.h>

namespace VendelSDK {

/// Shows each alert as a modal message box; the presenter of a windowed plugin.
class VENDELSDK_WIDGETS_EXPORT WidgetAlertPresenter final : public AlertPresenter
{
public:
    /// Blocks in the message box's own event loop; returns the index of the button that was pressed.
    int runModal(const Alert& alert) override;
};

} // namespace VendelSDK
