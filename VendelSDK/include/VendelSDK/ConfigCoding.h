// The JSON text of a configuration value, as the host stores it.
#pragma once

#include <VendelSDK/VendelActionConfig.h>

#include <QJsonDocument>
#include <QJsonParseError>
#include <QString>

namespace VendelSDK {

/// Compact JSON; the empty text when the value cannot be encoded. The empty text is then written to the
/// host as it is, which reads back as the default value.
template <VendelActionConfig T> QString encodeConfig(const T& value)
{
    try {
        return QString::fromUtf8(QJsonDocument(value.toJson()).toJson(QJsonDocument::Compact));
    } catch (...) {
        return QString();
    }
}

/// The value that the text holds, or a copy of the fallback when it holds none; never reports why, since
/// a new action, a damaged text and an older format all mean "start from the default".
template <VendelActionConfig T> T decodeConfig(const QString& text, const T& fallback)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        return fallback;
    }
    try {
        if (std::optional<T> value = T::fromJson(document.object())) {
            return std::move(*value);
        }
    } catch (...) {
        // A decoder that throws has failed like one that returns nothing.
    }
    return fallback;
}

} // namespace VendelSDK
