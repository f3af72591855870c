// The plugin's command line: a launch URL, or an option that asks for help or the version.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace MusicPlugin {

class CommandLine
{
public:
    enum class Request
    {
        // Launch, with the launch URL when there is one.
        launch,
        help,
        version,
        // A mistake on the command line; `error` says which. Nothing is launched.
        usageError,
    };

    Request request = Request::launch;
    std::optional<QString> url;
    QString error;

    // Reads the arguments after the program name. A launch URL never starts with "-", so an argument that
    // does is an option. The arguments macOS adds itself ("-psn_…", and "-NS…" or "-Apple…" with a value)
    // are passed over.
    static CommandLine parse(const QStringList& arguments);

    static QString usage(const QString& program);
    static QString help(const QString& program);
    // "<program> <version>", as help2man and scripts expect.
    static QString version(const QString& program, const QString& shortVersion, const QString& build);

    // Exit status of a usage error.
    static constexpr int usageErrorStatus = 2;
};

} // namespace MusicPlugin
