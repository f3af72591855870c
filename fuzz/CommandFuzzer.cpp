// libFuzzer target: arbitrary text through host command URLs, path percent-encoding and resource JSON.
#include "FuzzRequire.h"
#include <VendelSDK/Command.h>
#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/Resource.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>

using namespace VendelSDK;

namespace {

// Keeps what send() opens instead of starting a real handler for every input.
class RecordingOpener final : public UrlOpener
{
public:
    void open(const QString& url) override { opened.append(url); }
    QStringList opened;
};

RecordingOpener* opener = nullptr;

const QByteArray pathAllowed =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/";

bool isUpperHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F');
}

void checkPercentEncoding(const QString& text)
{
    const QString encoded = Command::percentEncodedForPath(text);
    for (qsizetype i = 0; i < encoded.size(); ++i) {
        const QChar c = encoded.at(i);
        if (c == u'%') {
            require(i + 2 < encoded.size(), "an escape has two digits");
            require(isUpperHexDigit(encoded.at(i + 1)) && isUpperHexDigit(encoded.at(i + 2)),
                    "an escape is two upper-case hexadecimal digits");
            // Only bytes outside the set are escaped, so the host never sees a needless escape.
            const auto byte = char(QStringView(encoded).mid(i + 1, 2).toUInt(nullptr, 16));
            require(!pathAllowed.contains(byte), "an allowed byte is never escaped");
            i += 2;
        } else {
            require(c.unicode() < 0x80 && pathAllowed.contains(char(c.unicode())),
                    "only path-allowed characters stand unescaped");
        }
    }
    require(QByteArray::fromPercentEncoding(encoded.toLatin1()) == text.toUtf8(),
            "decoding gives back the UTF-8 of the text");
}

// Whether send() accepted the URL.
bool checkCommandUrl(const QString& name, const std::optional<QString>& data)
{
    const Command command(name, data);
    const QString expected = QStringLiteral("vendel://") + name + (data ? u'/' + *data : QString());
    require(command.urlText() == expected, "the URL text is the scheme, the name and the data as they stand");

    opener->opened.clear();
    try {
        command.send();
        require(opener->opened == QStringList{expected}, "a sent command is opened once with its URL");
        return true;
    } catch (const Error& error) {
        require(error.code() == 0, "an unusable URL is error 0");
        require(opener->opened.isEmpty(), "an unusable URL opens nothing");
        return false;
    }
}

std::optional<QList<Resource>> decodedResources(const QString& data)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromPercentEncoding(data.toLatin1()));
    if (!document.isArray()) {
        return std::nullopt;
    }
    QList<Resource> resources;
    for (const QJsonValue& value : document.array()) {
        const auto resource = Resource::fromJson(value.toObject());
        if (!resource) {
            return std::nullopt;
        }
        resources.append(*resource);
    }
    return resources;
}

void checkResourceObject(const QJsonObject& object)
{
    const auto resource = Resource::fromJson(object);
    if (!resource) {
        return;
    }
    require(Resource::rawValue(resource->type) == object.value(QStringLiteral("type")).toString(),
            "the type is the one whose raw value was given");
    require(resource->name == object.value(QStringLiteral("name")).toString(), "the name is kept");
    require(resource->url == object.value(QStringLiteral("url")).toString(), "the URL text is kept");
    require(Resource::fromJson(resource->toJson()) == resource, "encoding then decoding gives it back");

    const QList<Resource> list{*resource, *resource};
    const Command command(list);
    require(command.name() == u"add-resources", "the resource command is add-resources");
    require(command.data().has_value(), "a decodable resource always encodes");
    require(decodedResources(*command.data()) == list, "add-resources data decodes to the same list");
    require(checkCommandUrl(command.name(), command.data()), "add-resources always makes a usable URL");
}

void checkResourceJson(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (document.isObject()) {
        checkResourceObject(document.object());
    } else if (document.isArray()) {
        for (const QJsonValue& value : document.array()) {
            checkResourceObject(value.toObject());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    auto owner = std::make_unique<RecordingOpener>();
    opener = owner.get();
    Platform::setUrlOpener(std::move(owner));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);

    checkPercentEncoding(text);
    const bool sentAsName = checkCommandUrl(text, std::nullopt);
    require(!sentAsName || !text.contains(u' '), "a name with a space makes no URL");
    checkCommandUrl(QStringLiteral("open"), text);
    require(checkCommandUrl(QStringLiteral("open"), Command::percentEncodedForPath(text)),
            "percent-encoded data always makes a usable URL");
    checkResourceJson(bytes);

    // Any text as a resource name must survive the add-resources round trip.
    checkResourceObject(QJsonObject{{QStringLiteral("type"), QStringLiteral("folder")},
                                    {QStringLiteral("name"), text},
                                    {QStringLiteral("url"), QStringLiteral("file:///srv/music/")}});
    return 0;
}
