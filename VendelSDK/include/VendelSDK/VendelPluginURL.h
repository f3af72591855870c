// A parsed launch URL: vendelplugin://<verb>[/<action identifier>].
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <optional>

namespace VendelSDK {

class VENDELSDK_EXPORT VendelPluginURL
{
public:
    static constexpr auto pluginScheme = "vendelplugin";

    // Parses a launch URL; nothing when the text is not a URL, has another scheme, or has no host.
    static std::optional<VendelPluginURL> parse(const QString& url);

    const QString scheme;
    const QString action;
    std::optional<QString> actionID;

private:
    VendelPluginURL(QString verb, std::optional<QString> identifier);
};

} // namespace VendelSDK
