// A vendel:// command URL split into its command name and its argument.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace VendelHost {

struct CommandUrl
{
    static constexpr auto scheme = "vendel";

    // The host part, exactly as written.
    QString name;
    // The whole path after the first slash, percent-decoded; nothing when the URL has no path.
    std::optional<QByteArray> argument;

    // Throws HostError when the text is no URL, not of the vendel scheme, names no command, or has a
    // user, a port, a query or a fragment, which no command takes.
    static CommandUrl parse(const QString& text);
};

} // namespace VendelHost
