// The one wrapper of uriparser: parses once, copies the components out and frees the parser's structure.
#include "Uri.h"

#include <uriparser/Uri.h>

namespace Vendel {

namespace {

// A component that uriparser found, possibly empty; nothing when the text has none.
std::optional<QByteArray> component(const UriTextRangeA& range)
{
    if (range.first == nullptr) {
        return std::nullopt;
    }
    return QByteArray(range.first, range.afterLast - range.first);
}

} // namespace

std::optional<Uri> Uri::parse(const QString& text, qsizetype* errorOffset)
{
    const QByteArray bytes = text.toUtf8();
    UriUriA parsed;
    const char* errorPosition = nullptr;
    if (uriParseSingleUriExA(&parsed, bytes.constData(), bytes.constData() + bytes.size(), &errorPosition) !=
        URI_SUCCESS) {
        if (errorOffset != nullptr) {
            *errorOffset = errorPosition != nullptr ? errorPosition - bytes.constData() : 0;
        }
        return std::nullopt;
    }

    // uriparser accepts ASCII only, so the texts below are the same in any ASCII-compatible encoding.
    Uri uri;
    uri.m_scheme = QString::fromUtf8(component(parsed.scheme).value_or(QByteArray()));
    if (const auto host = component(parsed.hostText); host && !host->isEmpty()) {
        uri.m_host = QString::fromUtf8(*host);
    }
    uri.m_userInfo = component(parsed.userInfo);
    uri.m_port = component(parsed.portText);
    uri.m_query = component(parsed.query);
    uri.m_fragment = component(parsed.fragment);
    for (const UriPathSegmentA* segment = parsed.pathHead; segment != nullptr; segment = segment->next) {
        uri.m_rawPathSegments.append(component(segment->text).value_or(QByteArray()));
    }
    uriFreeUriMembersA(&parsed);
    return uri;
}

} // namespace Vendel
