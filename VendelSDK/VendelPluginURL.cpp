// Parses launch URLs; scheme and verb are compared exactly, so no case folding may happen here.
#include <VendelSDK/VendelPluginURL.h>

#include "Uri.h"

namespace VendelSDK {

namespace {

// The identifier is the one non-empty path segment. Each segment is split before decoding, so
// "%2F" stays inside the identifier as "/". A segment that decodes to a NUL or to text that is not
// UTF-8 names no action the host can know, so it yields no identifier at all.
std::optional<QString> identifierFrom(const QList<QByteArray>& rawSegments)
{
    std::optional<QString> identifier;
    for (const QByteArray& raw : rawSegments) {
        if (raw.isEmpty()) {
            continue;
        }
        if (identifier.has_value()) {
            return std::nullopt;
        }
        const QByteArray decoded = QByteArray::fromPercentEncoding(raw);
        if (decoded.contains('\0')) {
            return std::nullopt;
        }
        const QString text = QString::fromUtf8(decoded);
        if (text.toUtf8() != decoded) {
            return std::nullopt;
        }
        identifier = text;
    }
    return identifier;
}

} // namespace

VendelPluginURL::VendelPluginURL(QString verb, std::optional<QString> identifier)
    : scheme(QString::fromLatin1(pluginScheme)), action(std::move(verb)), actionID(std::move(identifier))
{}

std::optional<VendelPluginURL> VendelPluginURL::parse(const QString& url)
{
    const auto uri = Vendel::Uri::parse(url);
    if (!uri || uri->scheme() != QLatin1String(pluginScheme) || !uri->host()) {
        return std::nullopt;
    }
    return VendelPluginURL(*uri->host(), identifierFrom(uri->rawPathSegments()));
}

} // namespace VendelSDK
