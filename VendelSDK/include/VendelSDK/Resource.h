// One resource of the "add-resources" host command: a typed, named URL with its JSON form.
#pragma once

#include <VendelSDK/Export.h>

#include <QJsonObject>
#include <QString>

#include <optional>

namespace VendelSDK {

/// A resource that the plugin hands to the host (Command(const QList<Resource>&)): its type, name and URL.
struct VENDELSDK_EXPORT Resource
{
    /// What the URL points at, which decides how the host opens it.
    enum class ResourceType
    {
        file,
        folder,
        website,
        terminal,
        application,
        url
    };

    /// The raw value of a type: the case's own name.
    static QString rawValue(ResourceType type);
    /// The type whose raw value is exactly the text; nothing for any other text.
    static std::optional<ResourceType> typeFromRawValue(const QString& raw);

    /// What the URL points at.
    ResourceType type = ResourceType::file;
    /// The name that the host shows.
    QString name;
    /// An absolute URL text, valid by RFC 3986.
    QString url;

    /// The JSON form: "type", "name" and "url".
    QJsonObject toJson() const;
    /// The resource of a JSON form; nothing when a key is missing, a value has the wrong JSON type, the type
    /// is unknown or the URL invalid.
    static std::optional<Resource> fromJson(const QJsonObject& object);

    /// Equal when type, name and URL are.
    friend bool operator==(const Resource&, const Resource&) = default;
};

} // namespace VendelSDK
