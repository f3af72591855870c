// Parses command URLs with the uriparser wrapper, which keeps the scheme and host as written, unlike QUrl.
#include "CommandUrl.h"

#include "HostError.h"
#include "UrlParsing.h"

namespace VendelHost {

CommandUrl CommandUrl::parse(const QString& text)
{
    const Vendel::Uri parsed = parseUrl(text);

    if (parsed.scheme() != QLatin1String(CommandUrl::scheme)) {
        throw HostError(QStringLiteral("\"%1\" is not a vendel:// command URL.").arg(text));
    }
    const QString host = parsed.host().value_or(QString());
    if (host.isEmpty()) {
        throw HostError(QStringLiteral("\"%1\" names no command.").arg(text));
    }
    // The command is the whole authority: a user or a port would be dropped unseen, so it is refused.
    if (parsed.userInfo() || parsed.port()) {
        throw HostError(QStringLiteral("\"%1\" has a user or a port, which no command takes.").arg(text));
    }
    if (parsed.query() || parsed.fragment()) {
        throw HostError(
            QStringLiteral("\"%1\" has a query or a fragment, which no command takes.").arg(text));
    }

    CommandUrl url;
    url.name = host;
    if (const QList<QByteArray>& segments = parsed.rawPathSegments(); !segments.isEmpty()) {
        // The argument may itself hold slashes, so the segments are joined again before decoding.
        url.argument = QByteArray::fromPercentEncoding(segments.join('/'));
    }
    return url;
}

} // namespace VendelHost
