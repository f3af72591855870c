// Parses URLs with uriparser, which keeps the scheme and host as written, unlike QUrl.
#include "UriReference.h"

#include "HostError.h"

#include <uriparser/Uri.h>

namespace VendelHost {

namespace {

QByteArray bytesOf(const UriTextRangeA& range)
{
    if (range.first == nullptr || range.afterLast == nullptr) {
        return {};
    }
    return QByteArray(range.first, range.afterLast - range.first);
}

bool isPresent(const UriTextRangeA& range)
{
    return range.first != nullptr;
}

} // namespace

UriReference UriReference::parse(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    UriUriA parsed;
    const char* errorPosition = nullptr;
    if (uriParseSingleUriExA(&parsed, bytes.constData(), bytes.constData() + bytes.size(), &errorPosition) !=
        URI_SUCCESS) {
        const qsizetype offset = errorPosition ? errorPosition - bytes.constData() : 0;
        throw HostError(
            QStringLiteral("\"%1\" is not a URL (invalid at character %2).").arg(text).arg(offset + 1));
    }
    UriReference reference;
    reference.scheme = bytesOf(parsed.scheme);
    reference.host = bytesOf(parsed.hostText);
    reference.hasUserInfo = isPresent(parsed.userInfo);
    reference.hasPort = isPresent(parsed.portText);
    reference.hasQuery = isPresent(parsed.query);
    reference.hasFragment = isPresent(parsed.fragment);
    for (const UriPathSegmentA* segment = parsed.pathHead; segment != nullptr; segment = segment->next) {
        reference.segments.append(bytesOf(segment->text));
    }
    uriFreeUriMembersA(&parsed);
    return reference;
}

} // namespace VendelHost
