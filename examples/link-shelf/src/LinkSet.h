// A set of links: what one action hands to the host, and what every action adds (the plugin-wide default).
#pragma once

#include <VendelSDK/Resource.h>

#include <QJsonObject>
#include <QList>

#include <optional>

namespace LinkShelf {

struct LinkSet
{
    QList<VendelSDK::Resource> links;

    // {"links":[{"type":"website","name":"…","url":"…"},…]}
    QJsonObject toJson() const;
    // Nothing when "links" is missing or any entry is not a valid resource: a damaged set is not run in part.
    static std::optional<LinkSet> fromJson(const QJsonObject& object);

    // A run's resources: the action's own links, then the plugin-wide ones whose URL the action does not
    // already hand over.
    static QList<VendelSDK::Resource> merged(const LinkSet& action, const LinkSet& everyAction);

    // Whether the host could take the link: a valid absolute URL, as the resource's JSON form requires.
    static bool isValid(const VendelSDK::Resource& link);

    friend bool operator==(const LinkSet&, const LinkSet&) = default;
};

} // namespace LinkShelf
