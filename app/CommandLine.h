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

    // Which arguments the system around the plugin may add to its own: Qt's application object reads its
    // documented options on every platform; macOS also passes "-psn_…", and reads any "-Key value" pair as
    // a user default for the application.
    enum class Conventions
    {
        qtOnly,
        qtAndMacOS,
    };

    // Reads the arguments after the program name. A launch URL never starts with "-", so an argument that
    // does is an option: one of ours, one that the system consumes (passed over, with its value), or a
    // mistake.
    static CommandLine parse(const QStringList& arguments, Conventions conventions);
    // The same with the conventions of the platform the plugin runs on.
    static CommandLine parse(const QStringList& arguments);

    static QString usage(const QString& program);
    static QString help(const QString& program);
    // "<program> <version>", as help2man and scripts expect.
    static QString version(const QString& program, const QString& shortVersion, const QString& build);

    // Exit status of a usage error.
    static constexpr int usageErrorStatus = 2;
};

} // namespace MusicPlugin
