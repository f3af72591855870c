// Configuration types for the provider tests: a plain record, and one that can never be encoded.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QTest>

#include <optional>
#include <stdexcept>

struct SampleConfig
{
    QString text;
    qint64 count = 0;

    QJsonObject toJson() const { return {{QStringLiteral("count"), count}, {QStringLiteral("text"), text}}; }

    static std::optional<SampleConfig> fromJson(const QJsonObject& object)
    {
        const QJsonValue textValue = object.value(QStringLiteral("text"));
        const QJsonValue countValue = object.value(QStringLiteral("count"));
        if (!textValue.isString() || !countValue.isDouble()) {
            return std::nullopt;
        }
        return SampleConfig{textValue.toString(), countValue.toInteger()};
    }

    friend bool operator==(const SampleConfig&, const SampleConfig&) = default;
};

inline char* toString(const SampleConfig& config)
{
    return QTest::toString(QStringLiteral("SampleConfig(%1, %2)").arg(config.text).arg(config.count));
}

struct UnencodableConfig
{
    QJsonObject toJson() const { throw std::runtime_error("this value has no JSON form"); }
    static std::optional<UnencodableConfig> fromJson(const QJsonObject&) { return UnencodableConfig{}; }
};
