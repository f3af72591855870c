// What a native alert panel shows for an alert, and which button the user's answer names.
#pragma once

#include <VendelSDK/Alert.h>

#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace VendelSDK {

// An error as the panel is built from it: the panel takes its texts and buttons from the error itself.
struct CocoaAlertError
{
    QString domain;
    qint64 code = 0;
    // Only the entries a Foundation dictionary can hold: texts, integers, floating-point numbers and
    // Booleans.
    QVariantMap userInfo;

    friend bool operator==(const CocoaAlertError&, const CocoaAlertError&) = default;
};

struct CocoaAlertContent
{
    // Present for an alert made from an error; the texts and buttons below are then not used.
    std::optional<CocoaAlertError> error;
    QString messageText;
    QString informativeText;
    // Added in order; none leaves the panel its single default button.
    QStringList buttons;

    friend bool operator==(const CocoaAlertContent&, const CocoaAlertContent&) = default;
};

// The panel's first button answers with this response; each later button with the next number.
inline constexpr long firstButtonModalResponse = 1000;

CocoaAlertContent cocoaAlertContent(const Alert& alert);

// The index of the pressed button among the alert's buttons; 0, the default button, for any answer that
// names none of them.
int pressedButtonIndex(long modalResponse, qsizetype buttonCount);

} // namespace VendelSDK
