// Strict decoding of resource lists: exact type names, text values, absolute URLs.
#include "HostResource.h"

#include "HostError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <uriparser/Uri.h>

namespace VendelHost {

namespace {

bool isAbsoluteUrl(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    UriUriA parsed;
    const char* errorPosition = nullptr;
    if (uriParseSingleUriExA(&parsed, bytes.constData(), bytes.constData() + bytes.size(), &errorPosition) !=
        URI_SUCCESS) {
        return false;
    }
    const bool hasScheme = parsed.scheme.first != nullptr && parsed.scheme.afterLast != parsed.scheme.first;
    uriFreeUriMembersA(&parsed);
    return hasScheme;
}

QString entryError(qsizetype position, const QString& reason)
{
    return QStringLiteral("Resource %1: %2").arg(position + 1).arg(reason);
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
    const QJsonArray list = document.array();
    for (qsizetype position = 0; position < list.size(); ++position) {
        const QJsonValue entry = list.at(position);
        if (!entry.isObject()) {
            throw HostError(entryError(position, QStringLiteral("not a JSON object.")));
        }
        const QJsonObject object = entry.toObject();
        HostResource resource;
        for (const auto& [key, field] : {std::pair{QStringLiteral("type"), &resource.type},
                                         std::pair{QStringLiteral("name"), &resource.name},
                                         std::pair{QStringLiteral("url"), &resource.url}}) {
            const QJsonValue value = object.value(key);
            if (value.isUndefined()) {
                throw HostError(entryError(position, QStringLiteral("\"%1\" is missing.").arg(key)));
            }
            if (!value.isString()) {
                throw HostError(entryError(position, QStringLiteral("\"%1\" is not text.").arg(key)));
            }
            *field = value.toString();
        }
        if (!types.contains(resource.type)) {
            throw HostError(entryError(position, QStringLiteral("unknown type \"%1\" (expected one of %2).")
                                                     .arg(resource.type, types.join(QStringLiteral(", ")))));
        }
        if (!isAbsoluteUrl(resource.url)) {
            throw HostError(
                entryError(position, QStringLiteral("\"%1\" is not an absolute URL.").arg(resource.url)));
        }
        resources.append(resource);
    }
    return resources;
}

} // namespace VendelHost
