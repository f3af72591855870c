// The alert seam: shows one modal alert and returns only when it has been dismissed.
#pragma once

#include <VendelSDK/Alert.h>
#include <VendelSDK/Export.h>

namespace VendelSDK {

/// Shows modal alerts; the SDK shows every alert through Platform::alertPresenter(), so a test may record
/// them (VendelSDK::Testing::RecordingAlertPresenter).
class VENDELSDK_EXPORT AlertPresenter
{
public:
    virtual ~AlertPresenter() = default;

    /// Returns the index of the button that dismissed the alert (0 for the default button).
    virtual int runModal(const Alert& alert) = 0;
};

} // namespace VendelSDK
