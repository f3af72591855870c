// The JSON form leans on the SDK's resource coding, so the host reads the links as the plugin wrote them.
#include "LinkSet.h"

#include <QJsonArray>
#include <QSet>

namespace LinkShelf {

namespace {

const auto linksKey = QStringLiteral("links");

} // namespace

QJsonObject LinkSet::toJson() const
{
    QJsonArray array;
    for (const VendelSDK::Resource& link : links) {
        array.append(link.toJson());
    }
    return {{linksKey, array}};
}

std::optional<LinkSet> LinkSet::fromJson(const QJsonObject& object)
{
    const QJsonValue value = object.value(linksKey);
    if (!value.isArray()) {
        return std::nullopt;
    }
    LinkSet set;
    for (const QJsonValue& entry : value.toArray()) {
        std::optional<VendelSDK::Resource> link =
            entry.isObject() ? VendelSDK::Resource::fromJson(entry.toObject()) : std::nullopt;
        if (!link) {
            return std::nullopt;
        }
        set.links.append(std::move(*link));
    }
    return set;
}

QList<VendelSDK::Resource> LinkSet::merged(const LinkSet& action, const LinkSet& everyAction)
{
    QList<VendelSDK::Resource> resources = action.links;
    QSet<QString> urls;
    for (const VendelSDK::Resource& link : action.links) {
        urls.insert(link.url);
    }
    for (const VendelSDK::Resource& link : everyAction.links) {
        if (!urls.contains(link.url)) {
            urls.insert(link.url);
            resources.append(link);
        }
    }
    return resources;
}

bool LinkSet::isValid(const VendelSDK::Resource& link)
{
    return VendelSDK::Resource::fromJson(link.toJson()).has_value();
}

} // namespace LinkShelf
