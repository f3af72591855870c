// Wraps uriparser, which matches RFC 3986 and, unlike QUrl, leaves scheme and host case alone.
#include "Uri.h"

#include <uriparser/Uri.h>

namespace VendelSDK {

namespace {

QByteArray bytesOf(const UriTextRangeA& range)
{
    if (range.first == nullptr || range.afterLast == nullptr) {
        return {};
    }
    return QByteArray(range.first, range.afterLast - range.first);
}

} // namespace

std::optional<Uri> Uri::parse(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    UriUriA parsed;
    const char* errorPosition = nullptr;
    if (uriParseSingleUriExA(&parsed, bytes.constData(), bytes.constData() + bytes.size(), &errorPosition) !=
        URI_SUCCESS) {
        return std::nullopt;
    }

    Uri uri;
    uri.m_scheme = QString::fromLatin1(bytesOf(parsed.scheme));
    if (parsed.hostText.first != nullptr && parsed.hostText.afterLast != parsed.hostText.first) {
        uri.m_host = QString::fromLatin1(bytesOf(parsed.hostText));
    }
    for (const UriPathSegmentA* segment = parsed.pathHead; segment != nullptr; segment = segment->next) {
        uri.m_rawPathSegments.append(bytesOf(segment->text));
    }
    uriFreeUriMembersA(&parsed);
    return uri;
}

} // namespace VendelSDK
