// Resource JSON: the keys "type", "name" and "url"; decoding is strict.
#include <VendelSDK/Resource.h>

#include "Uri.h"

#include <array>

namespace VendelSDK {

namespace {

constexpr std::array rawValues{"file", "folder", "website", "terminal", "application", "url"};

} // namespace

QString Resource::rawValue(ResourceType type)
{
    return QString::fromLatin1(rawValues.at(std::size_t(type)));
}

std::optional<Resource::ResourceType> Resource::typeFromRawValue(const QString& raw)
{
    for (std::size_t position = 0; position < rawValues.size(); ++position) {
        if (raw == QLatin1String(rawValues.at(position))) {
            return ResourceType(position);
        }
    }
    return std::nullopt;
}

QJsonObject Resource::toJson() const
{
    return {{QStringLiteral("type"), rawValue(type)},
            {QStringLiteral("name"), name},
            {QStringLiteral("url"), url}};
}

std::optional<Resource> Resource::fromJson(const QJsonObject& object)
{
    const auto type = object.value(QStringLiteral("type"));
    const auto name = object.value(QStringLiteral("name"));
    const auto url = object.value(QStringLiteral("url"));
    if (!type.isString() || !name.isString() || !url.isString()) {
        return std::nullopt;
    }
    const auto resourceType = typeFromRawValue(type.toString());
    const auto uri = Vendel::Uri::parse(url.toString());
    // A URL value must be absolute: a reference without a scheme names nothing the host can open.
    if (!resourceType || !uri || uri->scheme().isEmpty()) {
        return std::nullopt;
    }
    return Resource{*resourceType, name.toString(), url.toString()};
}

} // namespace VendelSDK
