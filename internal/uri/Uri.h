// An RFC 3986 URI reference split into the components that launch, command and resource URLs use.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace Vendel {

// Parsed by uriparser, which follows RFC 3986 and, unlike QUrl, keeps the scheme and the host as written.
// Every component is kept exactly as written: no normalisation, no case folding, no percent-decoding.
class Uri
{
public:
    // Parses the text strictly; nothing when it is not a URI reference. Then `errorOffset`, when given,
    // receives the byte offset in the text's UTF-8 form at which parsing failed.
    static std::optional<Uri> parse(const QString& text, qsizetype* errorOffset = nullptr);

    // The scheme; empty for a relative reference.
    const QString& scheme() const { return m_scheme; }
    // The host; nothing when there is no authority or its host is empty.
    const std::optional<QString>& host() const { return m_host; }
    // The other components; nothing when absent, an empty text when present but empty ("x://@h", "x://h?").
    const std::optional<QByteArray>& userInfo() const { return m_userInfo; }
    const std::optional<QByteArray>& port() const { return m_port; }
    const std::optional<QByteArray>& query() const { return m_query; }
    const std::optional<QByteArray>& fragment() const { return m_fragment; }
    // The path segments, empty ones included, still percent-encoded; none when there is no path.
    const QList<QByteArray>& rawPathSegments() const { return m_rawPathSegments; }

private:
    QString m_scheme;
    std::optional<QString> m_host;
    std::optional<QByteArray> m_userInfo;
    std::optional<QByteArray> m_port;
    std::optional<QByteArray> m_query;
    std::optional<QByteArray> m_fragment;
    QList<QByteArray> m_rawPathSegments;
};

} // namespace Vendel
