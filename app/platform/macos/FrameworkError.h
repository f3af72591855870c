// An error that one of Apple's frameworks gave, turned into the error value that the whole system shows.
#pragma once

#include <VendelSDK/Error.h>

#include <QVariantMap>

#include <optional>

namespace MusicPlugin {

// What a Foundation error says about itself; the texts are the ones Foundation works out for it.
struct FrameworkErrorFacts
{
    QString domain;
    qint64 code = 0;
    QString localizedDescription;
    std::optional<QString> localizedFailureReason;
    // The error's own user information, with only the values a Foundation dictionary holds as texts,
    // numbers and Booleans.
    QVariantMap userInfo;
};

// The framework's domain and code, its user information, and the description and failure reason as
// Foundation words them, so that an alert shows what the framework meant.
VendelSDK::Error frameworkError(const FrameworkErrorFacts& facts);

} // namespace MusicPlugin
