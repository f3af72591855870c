// What the host accepts from clients and people (configuration texts, titles, bundle identifiers), and how it
// shows their texts.
#pragma once

#include <QString>

#include <optional>

namespace VendelHost {

class HostInput
{
public:
    // A configuration is a small record; anything near this size is a mistake or an attack, not settings.
    static constexpr qsizetype maxConfigBytes = 1024 * 1024;
    // As long as a domain name.
    static constexpr qsizetype maxBundleIdentifierLength = 255;
    // Long enough for any name a person gives, short enough for a menu line.
    static constexpr qsizetype maxTitleCharacters = 200;

    // Why the text is no configuration, or nothing when it is one: a JSON object or array of at most
    // maxConfigBytes in UTF-8. The empty text is one too: it clears the configuration.
    static std::optional<QString> configProblem(const QString& text);
    // A text as a person may read it, and a script split it: no control character, line or column
    // separator comes through as itself (\t, \n, \x01, \u2028). Backslashes stay as they are, so a JSON
    // text reads as written.
    static QString escaped(const QString& text);
    // Why the text is no title, or nothing when it is one: 1 to maxTitleCharacters characters (code
    // points), not all white space, with no control character (tabs and line breaks included) and no line
    // or paragraph separator, which would break a menu line or a table row.
    static std::optional<QString> titleProblem(const QString& text);
    // Reverse-DNS: two or more dot-separated labels of ASCII letters, digits and hyphens.
    static bool isBundleIdentifier(const QString& text);
};

} // namespace VendelHost
