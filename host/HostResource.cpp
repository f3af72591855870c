// Strict decoding of resource lists: exact type names, text values, absolute URLs that fit their kind,
// and never a script URL.
#include "HostResource.h"

#include "HostError.h"
#include "HostInput.h"
#include "Uri.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace VendelHost {

namespace {

// The parts of an absolute URL that the kinds are told apart by. Scheme and host are compared without
// regard to case, as URLs define them.
struct UrlParts
{
    QString scheme;
    QString host;
    bool hasPath = false;
};

std::optional<UrlParts> absoluteUrl(const QString& text)
{
    const auto parsed = Vendel::Uri::parse(text);
    if (!parsed || parsed->scheme().isEmpty()) {
        return std::nullopt;
    }
    return UrlParts{parsed->scheme().toLower(), parsed->host().value_or(QString()).toLower(),
                    !parsed->rawPathSegments().isEmpty()};
}

// The scheme that a browser or desktop would find in the text, read as leniently as they do: white space,
// control and format characters before it are skipped, and tabs and line breaks inside it dropped. Any
// other character ends it. Only the refusal of script URLs uses this; storage keeps the exact text.
QString lenientScheme(const QString& text)
{
    QString scheme;
    bool started = false;
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        if (code == u'\t' || code == u'\n' || code == u'\r') {
            continue;
        }
        if (!started &&
            (code <= 0x20 || character.isSpace() || character.category() == QChar::Other_Control ||
             character.category() == QChar::Other_Format)) {
            continue;
        }
        started = true;
        if (code == u':') {
            return scheme.toLower();
        }
        const bool letter = (code >= u'a' && code <= u'z') || (code >= u'A' && code <= u'Z');
        const bool other = (code >= u'0' && code <= u'9') || code == u'+' || code == u'-' || code == u'.';
        if (!letter && !(other && !scheme.isEmpty())) {
            return {};
        }
        scheme += character;
    }
    return {};
}

// URLs that run code where they are opened, which no resource of any kind may be.
const QStringList scriptSchemes{QStringLiteral("javascript"), QStringLiteral("data"),
                                QStringLiteral("vbscript")};

bool isLocalFile(const UrlParts& url)
{
    return url.scheme == u"file" && (url.host.isEmpty() || url.host == u"localhost") && url.hasPath;
}

bool isWebSite(const UrlParts& url)
{
    return (url.scheme == u"http" || url.scheme == u"https") && !url.host.isEmpty();
}

bool isRemoteShell(const UrlParts& url)
{
    return url.scheme == u"ssh" && !url.host.isEmpty();
}

// Why the URL does not fit the kind, or nothing when it does.
std::optional<QString> kindProblem(const QString& type, const UrlParts& url)
{
    if (type == u"website") {
        return isWebSite(url)
                   ? std::nullopt
                   : std::optional<QString>(QStringLiteral("a website needs an http: or https: URL "
                                                           "with a host"));
    }
    if (type == u"terminal") {
        return isLocalFile(url) || isRemoteShell(url)
                   ? std::nullopt
                   : std::optional<QString>(QStringLiteral(
                         "a terminal location needs a local file: URL or an ssh: URL with a host"));
    }
    if (type == u"url") {
        return std::nullopt;
    }
    return isLocalFile(url)
               ? std::nullopt
               : std::optional<QString>(QStringLiteral("a %1 needs a local file: URL").arg(type));
}

// Names the entry by its position, and by its name once that is known.
QString entryError(qsizetype position, const QString& reason, const QString& name = {})
{
    if (name.isNull()) {
        return QStringLiteral("Resource %1: %2").arg(position + 1).arg(reason);
    }
    return QStringLiteral("Resource %1 (\"%2\"): %3").arg(position + 1).arg(HostInput::escaped(name), reason);
}

} // namespace

const QStringList HostResource::types{QStringLiteral("file"),        QStringLiteral("folder"),
                                      QStringLiteral("website"),     QStringLiteral("terminal"),
                                      QStringLiteral("application"), QStringLiteral("url")};

QList<HostResource> HostResource::decodeList(const QByteArray& json)
{
    // The JSON parser reads "\/" as "/", so both spellings of a slash come out the same.
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        throw HostError(QStringLiteral("The resource list is not JSON: %1 at offset %2.")
                            .arg(parseError.errorString())
                            .arg(parseError.offset));
    }
    if (!document.isArray()) {
        throw HostError(QStringLiteral("The resource list is not a JSON array."));
    }

    QList<HostResource> resources;
    QStringList problems;
    const QJsonArray list = document.array();
    for (qsizetype position = 0; position < list.size(); ++position) {
        const QJsonValue entry = list.at(position);
        if (!entry.isObject()) {
            problems.append(entryError(position, QStringLiteral("not a JSON object.")));
            continue;
        }
        const QJsonObject object = entry.toObject();
        HostResource resource;
        QString fieldProblem;
        for (const auto& [key, field] : {std::pair{QStringLiteral("type"), &resource.type},
                                         std::pair{QStringLiteral("name"), &resource.name},
                                         std::pair{QStringLiteral("url"), &resource.url}}) {
            const QJsonValue value = object.value(key);
            if (value.isUndefined()) {
                fieldProblem = QStringLiteral("\"%1\" is missing.").arg(key);
                break;
            }
            if (!value.isString()) {
                fieldProblem = QStringLiteral("\"%1\" is not text.").arg(key);
                break;
            }
            *field = value.toString();
        }
        const QString name = object.value(QStringLiteral("name")).isString() ? resource.name : QString();
        if (!fieldProblem.isEmpty()) {
            problems.append(entryError(position, fieldProblem, name));
            continue;
        }
        const QString url = HostInput::escaped(resource.url);
        const QString scheme = lenientScheme(resource.url);
        if (scriptSchemes.contains(scheme)) {
            problems.append(entryError(
                position,
                QStringLiteral("\"%1\" is a %2: URL, which runs a script; the host never keeps one.")
                    .arg(url, scheme),
                name));
            continue;
        }
        if (!types.contains(resource.type)) {
            problems.append(
                entryError(position,
                           QStringLiteral("unknown type \"%1\" (expected one of %2).")
                               .arg(HostInput::escaped(resource.type), types.join(QStringLiteral(", "))),
                           name));
            continue;
        }
        const auto parts = absoluteUrl(resource.url);
        if (!parts) {
            problems.append(
                entryError(position, QStringLiteral("\"%1\" is not an absolute URL.").arg(url), name));
            continue;
        }
        if (const auto problem = kindProblem(resource.type, *parts)) {
            problems.append(entryError(position, QStringLiteral("%1, not \"%2\".").arg(*problem, url), name));
            continue;
        }
        resources.append(resource);
    }
    if (!problems.isEmpty()) {
        problems.append(problems.size() == 1 ? QStringLiteral("It was refused, so nothing was added.")
                                             : QStringLiteral("They were refused, so nothing was added."));
        throw HostError(problems.join(u'\n'));
    }
    return resources;
}

} // namespace VendelHost
