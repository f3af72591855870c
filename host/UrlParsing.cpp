// Parses the URLs the host is given, with the shared uriparser wrapper, and says where a bad one goes wrong.
#include "UrlParsing.h"

#include "HostError.h"

namespace VendelHost {

Vendel::Uri parseUrl(const QString& text)
{
    qsizetype offset = 0;
    std::optional<Vendel::Uri> parsed = Vendel::Uri::parse(text, &offset);
    if (!parsed) {
        throw HostError(
            QStringLiteral("\"%1\" is not a URL (invalid at character %2).").arg(text).arg(offset + 1));
    }
    return *std::move(parsed);
}

} // namespace VendelHost
