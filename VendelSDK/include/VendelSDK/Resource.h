// One resource of the "add-resources" host command: a typed, named URL with its JSON form.
#pragma once

#include <VendelSDK/Export.h>

#include <QJsonObject>
#include <QString>

#include <optional>

namespace VendelSDK {

struct VENDELSDK_EXPORT Resource
{
    enum class ResourceType
    {
        file,
        folder,
        website,
        terminal,
        application,
        url
    };

    // The raw value of a type: the case's own name.
    static QString rawValue(ResourceType type);
    // The type whose raw value is exactly the text; nothing for any other text.
    static std::optional<ResourceType> typeFromRawValue(const QString& raw);

    ResourceType type = ResourceType::file;
    QString name;
    // An absolute URL text, valid by RFC 3986.
    QString url;

    QJsonObject toJson() const;
    // Nothing when a key is missing, a value has the wrong JSON type, the type is unknown or the URL invalid.
    static std::optional<Resource> fromJson(const QJsonObject& object);

    friend bool operator==(const Resource&, const Resource&) = default;
};

} // namespace VendelSDK
