// Parses command URLs with uriparser, which keeps the scheme and host as written, unlike QUrl.
#include "CommandUrl.h"

#include "HostError.h"

#include <QList>

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

CommandUrl CommandUrl::parse(const QString& text)
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

    const QByteArray writtenScheme = bytesOf(parsed.scheme);
    const QByteArray host = bytesOf(parsed.hostText);
    const bool hasUserInfo = isPresent(parsed.userInfo);
    const bool hasPort = isPresent(parsed.portText);
    const bool hasQuery = isPresent(parsed.query);
    const bool hasFragment = isPresent(parsed.fragment);
    QList<QByteArray> segments;
    for (const UriPathSegmentA* segment = parsed.pathHead; segment != nullptr; segment = segment->next) {
        segments.append(bytesOf(segment->text));
    }
    uriFreeUriMembersA(&parsed);

    if (writtenScheme != CommandUrl::scheme) {
        throw HostError(QStringLiteral("\"%1\" is not a vendel:// command URL.").arg(text));
    }
    if (host.isEmpty()) {
        throw HostError(QStringLiteral("\"%1\" names no command.").arg(text));
    }
    // The command is the whole authority: a user or a port would be dropped unseen, so it is refused.
    if (hasUserInfo || hasPort) {
        throw HostError(QStringLiteral("\"%1\" has a user or a port, which no command takes.").arg(text));
    }
    if (hasQuery || hasFragment) {
        throw HostError(
            QStringLiteral("\"%1\" has a query or a fragment, which no command takes.").arg(text));
    }

    CommandUrl url;
    url.name = QString::fromUtf8(host);
    if (!segments.isEmpty()) {
        // The argument may itself hold slashes, so the segments are joined again before decoding.
        url.argument = QByteArray::fromPercentEncoding(segments.join('/'));
    }
    return url;
}

} // namespace VendelHost
