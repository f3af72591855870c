// An RFC 3986 URI reference split into the components that launch and command URLs use.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace VendelSDK {

class Uri
{
public:
    // Parses the text strictly (no normalisation, no case folding); nothing when it is not a URI.
    static std::optional<Uri> parse(const QString& text);

    // The scheme exactly as written; empty for a relative reference.
    const QString& scheme() const { return m_scheme; }
    // The host exactly as written (no percent-decoding); nothing when there is no authority or it is empty.
    const std::optional<QString>& host() const { return m_host; }
    // The path segments as written, empty ones included, still percent-encoded.
    const QList<QByteArray>& rawPathSegments() const { return m_rawPathSegments; }

private:
    QString m_scheme;
    std::optional<QString> m_host;
    QList<QByteArray> m_rawPathSegments;
};

} // namespace VendelSDK
