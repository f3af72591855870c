// libFuzzer target: any text as a host command URL, and any bytes as an "add-resources" list.
#include "FuzzRequire.h"

#include "CommandUrl.h"
#include "HostError.h"
#include "HostResource.h"

#include <QString>

#include <cstddef>
#include <cstdint>

using namespace VendelHost;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));

    // A URL is parsed or refused with a message; what parses names a command and came from vendel://.
    const QString text = QString::fromUtf8(bytes);
    try {
        const CommandUrl url = CommandUrl::parse(text);
        require(!url.name.isEmpty(), "a parsed URL names a command");
        require(text.startsWith(QLatin1String(CommandUrl::scheme) + u':'), "a parsed URL is a vendel: URL");
        if (url.argument) {
            // The argument is the path decoded: it is never longer than the text it came from.
            require(url.argument->size() <= text.toUtf8().size(), "decoding never lengthens");
        }
    } catch (const HostError& error) {
        require(!error.message().isEmpty(), "a refused URL says why");
    }

    // A list is all or nothing: every entry kept is complete, of a known kind, with an absolute URL.
    try {
        const QList<HostResource> resources = HostResource::decodeList(bytes);
        for (const HostResource& resource : resources) {
            require(HostResource::types.contains(resource.type), "a kept resource is of a known kind");
            require(resource.url.contains(u':'), "a kept resource's URL has a scheme");
        }
    } catch (const HostError& error) {
        require(!error.message().isEmpty(), "a refused list says why");
    }

    // The same list as a command URL's argument, percent-encoded, reads back as the same bytes.
    const QString wrapped =
        QStringLiteral("vendel://add-resources/") + QString::fromLatin1(bytes.toPercentEncoding());
    try {
        const CommandUrl url = CommandUrl::parse(wrapped);
        require(url.argument && *url.argument == bytes, "an encoded list arrives unchanged");
    } catch (const HostError&) {
        require(false, "an encoded list always makes a valid URL");
    }
    return 0;
}
