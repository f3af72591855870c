// One resource that a plugin hands the host with "add-resources", and the decoding of their JSON list.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace VendelHost {

struct HostResource
{
    // The kinds a plugin may send, as their JSON texts.
    static const QStringList types;

    QString type;
    QString name;
    // An absolute URL.
    QString url;

    // Decodes a JSON array of objects with "type", "name" and "url". Each URL is absolute and fits its
    // kind: a local file: URL for a file, folder or application; http: or https: with a host for a
    // website; a local file: or an ssh: URL for a terminal location; any URL for a plain URL. A script URL
    // (javascript:, data:, vbscript:) is refused whatever the kind. All or nothing: throws HostError naming
    // every refused entry, so a half-understood list is never stored.
    static QList<HostResource> decodeList(const QByteArray& json);

    friend bool operator==(const HostResource&, const HostResource&) = default;
};

} // namespace VendelHost
