// Parses command URLs as written: the scheme and the command are compared exactly.
#include "CommandUrl.h"

#include "HostError.h"
#include "UriReference.h"

namespace VendelHost {

CommandUrl CommandUrl::parse(const QString& text)
{
    const UriReference parsed = UriReference::parse(text);
    if (parsed.scheme != CommandUrl::scheme) {
        throw HostError(QStringLiteral("\"%1\" is not a vendel:// command URL.").arg(text));
    }
    if (parsed.host.isEmpty()) {
        throw HostError(QStringLiteral("\"%1\" names no command.").arg(text));
    }
    // The command is the whole authority: a user or a port would be dropped unseen, so it is refused.
    if (parsed.hasUserInfo || parsed.hasPort) {
        throw HostError(QStringLiteral("\"%1\" has a user or a port, which no command takes.").arg(text));
    }
    if (parsed.hasQuery || parsed.hasFragment) {
        throw HostError(
            QStringLiteral("\"%1\" has a query or a fragment, which no command takes.").arg(text));
    }

    CommandUrl url;
    url.name = QString::fromUtf8(parsed.host);
    if (!parsed.segments.isEmpty()) {
        // The argument may itself hold slashes, so the segments are joined again before decoding.
        url.argument = QByteArray::fromPercentEncoding(parsed.segments.join('/'));
    }
    return url;
}

} // namespace VendelHost
