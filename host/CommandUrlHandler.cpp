// Dispatches command URLs by name; a command the host does not know is reported, never guessed at.
#include "CommandUrlHandler.h"

#include "CommandUrl.h"
#include "HostError.h"
#include "HostResource.h"
#include "HostStorage.h"

namespace VendelHost {

QStringList CommandUrlHandler::handle(const QString& urlText)
{
    const CommandUrl url = CommandUrl::parse(urlText);
    if (url.name == QLatin1String(addResourcesCommand)) {
        if (!url.argument) {
            throw HostError(QStringLiteral("\"%1\" carries no resource list: it goes after a slash, as "
                                           "vendel://add-resources/<percent-encoded JSON>.")
                                .arg(urlText));
        }
        return addResources(*url.argument);
    }
    throw HostError(QStringLiteral("Unknown command \"%1\" in %2.").arg(url.name, urlText));
}

QStringList CommandUrlHandler::addResources(const QByteArray& list)
{
    const QList<HostResource> resources = HostResource::decodeList(list);
    m_storage.addResources(resources);
    if (resources.isEmpty()) {
        return {QStringLiteral("No resources to add.")};
    }
    QStringList lines;
    for (const HostResource& resource : resources) {
        lines.append(QStringLiteral("Added %1 \"%2\": %3").arg(resource.type, resource.name, resource.url));
    }
    return lines;
}

} // namespace VendelHost
