// A parsed launch URL: vendelplugin://<verb>[/<action identifier>].
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <optional>

namespace VendelSDK {

/// A launch URL, split into its verb and its action's identifier.
class VENDELSDK_EXPORT VendelPluginURL
{
public:
    /// The scheme of every launch URL.
    static constexpr auto pluginScheme = "vendelplugin";

    /// Parses a launch URL; nothing when the text is not a URL, has another scheme, or has no host.
    static std::optional<VendelPluginURL> parse(const QString& url);

    /// The scheme, as written.
    const QString scheme;
    /// The verb ("run", "edit", "configure"), exactly as written.
    const QString action;
    /// The one non-empty path segment, percent-decoded ("%2F" stays in it as "/"); none when there is none,
    /// when there are several, or when it decodes to a NUL or to text that is not UTF-8.
    std::optional<QString> actionID;

private:
    VendelPluginURL(QString verb, std::optional<QString> identifier);
};

} // namespace VendelSDK
