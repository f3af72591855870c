// The help text here is also the source of the manual page, which the build makes from it. The command line
// speaks English, as that page does: it answers before the application object and its catalogues exist.
#include "CommandLine.h"

#include <QOperatingSystemVersion>

#include <array>

namespace MusicPlugin {

namespace {

// The options that Qt's application objects document (QCoreApplication, QGuiApplication with its X11
// additions, QApplication); Qt reads each with one dash or two. The application object consumes them, so
// the plugin only has to step over them and their values.
struct QtOption
{
    const char16_t* name;
    bool takesValue;
};

constexpr std::array qtOptions{
    QtOption{u"platform", true},      QtOption{u"platformpluginpath", true},
    QtOption{u"platformtheme", true}, QtOption{u"plugin", true},
    QtOption{u"qmljsdebugger", true}, QtOption{u"qwindowgeometry", true},
    QtOption{u"qwindowicon", true},   QtOption{u"qwindowtitle", true},
    QtOption{u"reverse", false},      QtOption{u"session", true},
    QtOption{u"display", true},       QtOption{u"geometry", true},
    QtOption{u"style", true},         QtOption{u"stylesheet", true},
    QtOption{u"widgetcount", false},
};

enum class SystemArgument
{
    none,
    alone,
    withValue,
};

// Whether Qt or the system consumes `argument`, and whether the next argument is its value.
SystemArgument systemArgument(const QString& argument, CommandLine::Conventions conventions)
{
    QStringView name(argument);
    name = name.mid(name.startsWith(u"--") ? 2 : 1);
    const qsizetype equals = name.indexOf(u'=');
    const bool valueAttached = equals >= 0;
    if (valueAttached) {
        name = name.left(equals);
    }
    // Qt reads its options first, whatever the platform: "-reverse" stands alone on macOS too.
    for (const QtOption& option : qtOptions) {
        if (name == QStringView(option.name)) {
            if (valueAttached) {
                return option.takesValue ? SystemArgument::alone : SystemArgument::none;
            }
            return option.takesValue ? SystemArgument::withValue : SystemArgument::alone;
        }
    }
    if (conventions == CommandLine::Conventions::qtAndMacOS) {
        // The process serial number the system passes to an application it started.
        if (argument.startsWith(u"-psn_")) {
            return SystemArgument::alone;
        }
        // "-Key value" sets the user default Key for this run, whatever the key.
        if (argument.size() > 1 && argument.at(1).isLetter()) {
            return SystemArgument::withValue;
        }
    }
    return SystemArgument::none;
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments)
{
    const bool macOS = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::MacOS;
    return parse(arguments, macOS ? Conventions::qtAndMacOS : Conventions::qtOnly);
}

CommandLine CommandLine::parse(const QStringList& arguments, Conventions conventions)
{
    CommandLine line;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument == u"--help" || argument == u"-h") {
            line.request = Request::help;
            return line;
        }
        if (argument == u"--version") {
            line.request = Request::version;
            return line;
        }
        if (argument.startsWith(u'-')) {
            switch (systemArgument(argument, conventions)) {
            case SystemArgument::alone:
                continue;
            case SystemArgument::withValue:
                if (i + 1 == arguments.size()) {
                    line.request = Request::usageError;
                    line.error = QStringLiteral("option “%1” needs a value").arg(argument);
                    return line;
                }
                ++i;
                continue;
            case SystemArgument::none:
                break;
            }
            line.request = Request::usageError;
            line.error = QStringLiteral("unknown option “%1”").arg(argument);
            return line;
        }
        if (line.url) {
            line.request = Request::usageError;
            line.error = QStringLiteral("one launch URL at most");
            return line;
        }
        line.url = argument;
    }
    return line;
}

QString CommandLine::usage(const QString& program)
{
    return QStringLiteral("Usage: %1 [vendelplugin://<verb>[/<action identifier>]]\n").arg(program);
}

QString CommandLine::help(const QString& program)
{
    return usage(program) +
           QStringLiteral(
               "\n"
               "The music plugin of the Vendel launcher: an action plays a playlist, with shuffle\n"
               "on or off, or pauses playback. Vendel starts the plugin with a launch URL:\n"
               "\n"
               "  vendelplugin://run/<id>    run the action: play or pause, then quit\n"
               "  vendelplugin://edit/<id>   open the action's editor\n"
               "  vendelplugin://configure   open the preferences\n"
               "\n"
               "Started without a URL, the plugin installs itself into Vendel, or says that it\n"
               "must be run by Vendel. One instance runs at a time: a later launch hands its URL\n"
               "to the running one.\n"
               "\n"
               "Options:\n"
               "  -h, --help     show this help and exit\n"
               "      --version  show the version and exit\n"
               "\n"
               "Qt's standard options, such as -platform <name>, -style <style> and -reverse, are\n"
               "passed to Qt; on macOS, so are the system's own arguments.\n"
               "\n"
               "Environment:\n"
               "  VENDEL_MUSIC         \"mpd\" or \"mpris\": which player \"Music\" is (default: MPD when\n"
               "                       it can be reached, else an MPRIS player)\n"
               "  VENDEL_MUSIC_PLAYER  the MPRIS player to use\n"
               "  MPD_HOST, MPD_PORT   where MPD is\n"
               "\n"
               "Exit status: 0 done, 1 after an alert without a display, 2 wrong command line.\n");
}

QString CommandLine::version(const QString& program, const QString& shortVersion, const QString& build)
{
    return QStringLiteral("%1 %2 (build %3)\n").arg(program, shortVersion, build);
}

} // namespace MusicPlugin
