// The help text here is also the source of the manual page, which the build makes from it. The command line
// speaks English, as that page does: it answers before the application object and its catalogues exist.
#include "CommandLine.h"

namespace MusicPlugin {

namespace {

bool isSystemArgumentWithValue(const QString& argument)
{
    return argument.startsWith(u"-NS") || argument.startsWith(u"-Apple");
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments)
{
    CommandLine line;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument.startsWith(u"-psn_")) {
            continue;
        }
        if (isSystemArgumentWithValue(argument)) {
            ++i;
            continue;
        }
        if (argument == u"--help" || argument == u"-h") {
            line.request = Request::help;
            return line;
        }
        if (argument == u"--version") {
            line.request = Request::version;
            return line;
        }
        if (argument.startsWith(u'-')) {
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
