// A URL split into its components by uriparser, as written: no case folding, no decoding, no normalisation.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace VendelHost {

struct UriReference
{
    QByteArray scheme;
    QByteArray host;
    bool hasUserInfo = false;
    bool hasPort = false;
    bool hasQuery = false;
    bool hasFragment = false;
    // The path's segments, still percent-encoded, empty ones included.
    QList<QByteArray> segments;

    // Throws HostError, naming the first character that is wrong, when the text is no URL.
    static UriReference parse(const QString& text);
};

} // namespace VendelHost
