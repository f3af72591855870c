// Each command opens the database only when it needs it, and turns every failure into one line on stderr.
#include "HostCli.h"

#include "CommandArguments.h"
#include "CommandUrlHandler.h"
#include "DesktopSearch.h"
#include "HostError.h"
#include "HostInput.h"
#include "HostService.h"
#include "HostTranslations.h"
#include "LaunchUrlRouter.h"
#include "PluginLauncher.h"
#include "QuitOnSignal.h"
#include "WindowCommand.h"

#include <QCollator>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <QTimer>

using namespace std::chrono_literals;

namespace VendelHost {

namespace {

constexpr auto busCheckInterval = 1s;

// A command line that does not fit its command's shape: said on stderr with the shape, status 2.
struct UsageError
{
    QString message;
};

// The command's arguments, checked against its shape: its options and how many operands it takes (any
// number when negative, for the caller to check).
CommandArguments parse(const QStringList& arguments, const QString& shape, qsizetype operands,
                       const QStringList& flags = {}, const QStringList& valuedOptions = {})
{
    const QString usageLine = QStringLiteral("usage: vendel-host %1").arg(shape);
    try {
        CommandArguments parsed(arguments, flags, valuedOptions);
        if (operands >= 0 && parsed.operands().size() != operands) {
            throw UsageError{usageLine};
        }
        return parsed;
    } catch (const CommandArguments::Error& error) {
        throw UsageError{error.message + u'\n' + usageLine};
    }
}

// By title as people sort words: in the user's language, numbers by their value ("Mix 2" before "Mix 10").
// Qt compares code units under the C locale, which no person means; the root order serves them then.
// Equal titles keep the order the actions were made in.
void sortByTitle(QList<HostStorage::Action>& actions)
{
    QLocale locale;
    if (locale.language() == QLocale::C) {
        locale = QLocale(QLocale::English, QLocale::UnitedStates);
    }
    QCollator collator(locale);
    collator.setNumericMode(true);
    std::stable_sort(actions.begin(), actions.end(),
                     [&](const HostStorage::Action& left, const HostStorage::Action& right) {
                         return collator.compare(left.title(), right.title()) < 0;
                     });
}

} // namespace

QString HostCli::usage()
{
    return QStringLiteral(
        "Usage: vendel-host <command> [arguments]\n"
        "\n"
        "The reference host of Vendel plugins.\n"
        "\n"
        "Commands:\n"
        "  action new <plugin> [--title <text>] [--no-edit]\n"
        "                               Create an action for an installed plugin, print its identifier\n"
        "                               and open it in the plugin's editor (unless --no-edit)\n"
        "  action title <id> <text>     Give an action a title\n"
        "  action delete <id>           Delete an action and its configuration\n"
        "  actions [--json | --menu]    List the actions: identifier, title, plugin, number,\n"
        "                               configuration; --menu prints one title<TAB>identifier line each,\n"
        "                               sorted by title\n"
        "  run <id>                     Run an action and wait until its plugin has finished\n"
        "  run --title <text>           The same for the one action with exactly this title\n"
        "  edit <id>                    Open an action in its plugin's editor\n"
        "  configure <plugin>           Open a plugin's preferences\n"
        "  config get <id>              Print an action's configuration\n"
        "  config set <id> <json>       Replace an action's configuration with a JSON object or array\n"
        "                               (at most 1 MiB)\n"
        "  plugins [--json]             List the installed plugins: name, display name, icon, executable\n"
        "  resources [--json]           List the resources that plugins have added\n"
        "  open <vendel://command/...>  Carry out a command URL, such as vendel://add-resources/...\n"
        "  open <vendelplugin://...>    Start the plugin that a launch URL belongs to, with the URL as it\n"
        "                               is: the owner of the action of vendelplugin://run/<id> (and wait,\n"
        "                               as run does) or vendelplugin://edit/<id>, or the plugin that\n"
        "                               vendelplugin://configure/<plugin> names\n"
        "  window [--filter <text>] [-- <word>...]\n"
        "                               Show the actions in a window, where they are run, edited,\n"
        "                               renamed, deleted and made, and plugins' preferences opened;\n"
        "                               the filter and the words choose which are shown\n"
        "  serve                        Serve org.vendel.Host on the session bus until stopped: the\n"
        "                               plugins' org.vendel.Host1, and org.vendel.Actions1, whose launches\n"
        "                               never wait for a plugin\n"
        "  --help                       Show this help\n"
        "  --version                    Show the version\n"
        "\n"
        "A plugin is named by its executable's file name; plugins install themselves through the session\n"
        "bus when started without a launch URL. Its display name and icon are those of its desktop entry,\n"
        "<name>.desktop in the XDG data folders, when it installs; without one, its name and a generic\n"
        "icon. A launch starts the plugin's executable with the URL vendelplugin://run/<id>,\n"
        "vendelplugin://edit/<id> or vendelplugin://configure/<plugin> as its argument. Installed, the\n"
        "host is the desktop's handler of vendelplugin:// URLs, and hands each to its plugin.\n"
        "\n"
        "A title is 1 to 200 characters without control characters, tabs or line breaks. An action\n"
        "without one shows its plugin's display name and its number, given once per plugin and never\n"
        "again: \"Vendel Music 3\". To pick an action from a menu (rofi, wofi, fuzzel, bemenu, dmenu):\n"
        "  vendel-host actions --menu | rofi -dmenu | cut -f2 | xargs -r vendel-host run --\n"
        "\n"
        "Options may come before or after the other arguments; -- ends them, so that an identifier,\n"
        "title or name that begins with a dash is taken as it is.\n"
        "\n"
        "Lists are tab-separated, one row a line, with tabs, line breaks and other control characters\n"
        "shown escaped (\\t, \\n, \\x01); --json prints the exact texts as a JSON array of objects.\n"
        "\n"
        "Data folder: $VENDEL_HOST_DATA_DIR, else $XDG_DATA_HOME/vendel (~/.local/share/vendel); it is\n"
        "kept private to you. Commands that only read open the database read-only, so they work where\n"
        "the folder is read-only and never wait for a command that writes; they read a database of an\n"
        "earlier vendel-host as it is, and the first command that writes brings it up to date.\n"
        "Exit status: 0 done, 1 could not be done, 2 wrong command line.\n");
}

int HostCli::run(const QStringList& arguments)
{
    try {
        const int status = dispatch(arguments);
        m_out.flush();
        return status;
    } catch (const UsageError& error) {
        m_out.flush();
        return usageFailure(error.message);
    } catch (const HostError& error) {
        m_out.flush();
        m_err << "vendel-host: " << error.message() << Qt::endl;
        return failure;
    }
}

int HostCli::run(const QList<QByteArray>& arguments)
{
    QStringList texts;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder.decode(arguments.at(index));
        if (decoder.hasError()) {
            return usageFailure(
                QStringLiteral("argument %1 is not valid UTF-8; texts are kept exactly, so it is refused.")
                    .arg(index + 1));
        }
        texts.append(text);
    }
    return run(texts);
}

int HostCli::usageFailure(const QString& message)
{
    m_err << "vendel-host: " << message << "\nTry 'vendel-host --help'." << Qt::endl;
    return usageError;
}

int HostCli::dispatch(const QStringList& arguments)
{
    if (arguments.isEmpty()) {
        return usageFailure(QStringLiteral("no command given."));
    }
    const QString command = arguments.constFirst();
    const QStringList rest = arguments.mid(1);

    if (command == u"--help" || command == u"-h" || command == u"help") {
        m_out << usage();
        return success;
    }
    if (command == u"--version") {
        // "<program> <version>", as help2man and scripts expect.
        m_out << "vendel-host " << VENDEL_HOST_VERSION << "\n";
        return success;
    }
    if (command == u"action") {
        return action(rest);
    }
    if (command == u"config") {
        return config(rest);
    }
    if (command == u"actions") {
        return listActions(rest);
    }
    if (command == u"run") {
        return runAction(rest);
    }
    if (command == u"edit") {
        return editAction(parse(rest, QStringLiteral("edit <id>"), 1).operands().constFirst());
    }
    if (command == u"configure") {
        return configurePlugin(parse(rest, QStringLiteral("configure <plugin>"), 1).operands().constFirst());
    }
    if (command == u"plugins") {
        return listPlugins(rest);
    }
    if (command == u"resources") {
        return listResources(rest);
    }
    if (command == u"open") {
        const QString url =
            parse(rest, QStringLiteral("open <vendel-url | vendelplugin-url>"), 1).operands().constFirst();
        return LaunchUrlRouter::isLaunchUrl(url) ? openLaunchUrl(url) : openCommandUrl(url);
    }
    if (command == u"window") {
        const auto parsed = parse(rest, QStringLiteral("window [--filter <text>] [-- <word>...]"), -1, {},
                                  {QStringLiteral("--filter")});
        QStringList words = parsed.operands();
        if (const auto filter = parsed.value(QStringLiteral("--filter"))) {
            words.prepend(*filter);
        }
        WindowCommand::exec(words.join(u' '));
    }
    if (command == u"serve") {
        parse(rest, QStringLiteral("serve"), 0);
        return serve();
    }
    return usageFailure(QStringLiteral("unknown command \"%1\".").arg(command));
}

HostStorage& HostCli::storage(HostStorage::Access access)
{
    if (!m_storage || (access == HostStorage::Access::ReadWrite && m_storageAccess != access)) {
        m_storage.reset();
        m_storage = std::make_unique<HostStorage>(
            HostStorage::defaultDataDirectory(), access,
            [this](const QString& notice) { m_err << "vendel-host: " << notice << Qt::endl; });
        m_storageAccess = access;
    }
    return *m_storage;
}

HostStorage::Action HostCli::existingAction(const QString& id)
{
    auto action = storage().action(id);
    if (!action) {
        throw HostError(
            QStringLiteral("There is no action \"%1\"; 'vendel-host actions' lists them.").arg(id));
    }
    return *action;
}

HostStorage::Plugin HostCli::installedPlugin(const QString& name)
{
    auto plugin = storage().plugin(name);
    if (!plugin) {
        throw HostError(
            QStringLiteral("There is no plugin \"%1\"; 'vendel-host plugins' lists them.").arg(name));
    }
    return *plugin;
}

int HostCli::action(const QStringList& arguments)
{
    const QString subcommand = arguments.value(0);
    if (subcommand == u"new") {
        const auto parsed =
            parse(arguments.mid(1), QStringLiteral("action new <plugin> [--title <text>] [--no-edit]"), 1,
                  {QStringLiteral("--no-edit")}, {QStringLiteral("--title")});
        const QString title = parsed.value(QStringLiteral("--title")).value_or(QString());
        if (parsed.value(QStringLiteral("--title"))) {
            checkTitle(title);
        }
        storage(HostStorage::Access::ReadWrite);
        const HostStorage::Plugin plugin = installedPlugin(parsed.operands().constFirst());
        const QString id = storage().createAction(plugin.name, title);
        m_out << id << Qt::endl;
        if (!parsed.has(QStringLiteral("--no-edit"))) {
            PluginLauncher::startDetached(plugin.path, PluginLauncher::editUrl(id));
        }
        return success;
    }
    if (subcommand == u"title") {
        const auto parsed = parse(arguments.mid(1), QStringLiteral("action title <id> <text>"), 2);
        checkTitle(parsed.operands().at(1));
        storage(HostStorage::Access::ReadWrite);
        if (!storage().setTitle(parsed.operands().at(0), parsed.operands().at(1))) {
            existingAction(parsed.operands().at(0));
        }
        return success;
    }
    if (subcommand == u"delete") {
        const auto parsed = parse(arguments.mid(1), QStringLiteral("action delete <id>"), 1);
        storage(HostStorage::Access::ReadWrite);
        if (!storage().deleteAction(parsed.operands().constFirst())) {
            existingAction(parsed.operands().constFirst());
        }
        return success;
    }
    throw UsageError{QStringLiteral("usage: vendel-host action new <plugin> [--title <text>] [--no-edit] | "
                                    "action title <id> <text> | action delete <id>")};
}

void HostCli::checkTitle(const QString& title)
{
    if (const auto problem = HostInput::titleProblem(title)) {
        throw UsageError{*problem};
    }
}

int HostCli::listActions(const QStringList& arguments)
{
    const QString shape = QStringLiteral("actions [--json | --menu]");
    const auto parsed = parse(arguments, shape, 0, {QStringLiteral("--json"), QStringLiteral("--menu")});
    if (parsed.has(QStringLiteral("--menu"))) {
        if (parsed.has(QStringLiteral("--json"))) {
            throw UsageError{QStringLiteral("--json and --menu do not go together.\nusage: vendel-host ") +
                             shape};
        }
        QList<HostStorage::Action> actions = storage().actions();
        sortByTitle(actions);
        for (const HostStorage::Action& action : actions) {
            m_out << HostInput::escaped(action.title()) << '\t' << HostInput::escaped(action.id) << '\n';
        }
        return success;
    }
    QList<Row> rows;
    for (const HostStorage::Action& action : storage().actions()) {
        rows.append({action.id, action.title(), action.plugin, action.number, action.config});
    }
    print(rows,
          {QStringLiteral("id"), QStringLiteral("title"), QStringLiteral("plugin"), QStringLiteral("number"),
           QStringLiteral("config")},
          parsed.has(QStringLiteral("--json")));
    return success;
}

int HostCli::runAction(const QStringList& arguments)
{
    const QString shape = QStringLiteral("run <id> | run --title <text>");
    const auto parsed = parse(arguments, shape, -1, {}, {QStringLiteral("--title")});
    if (parsed.operands().size() != (parsed.value(QStringLiteral("--title")) ? 0 : 1)) {
        throw UsageError{QStringLiteral("usage: vendel-host ") + shape};
    }
    const HostStorage::Action action = parsed.value(QStringLiteral("--title"))
                                           ? actionTitled(*parsed.value(QStringLiteral("--title")))
                                           : existingAction(parsed.operands().constFirst());
    PluginLauncher::runAndWait(installedPlugin(action.plugin).path, PluginLauncher::runUrl(action.id),
                               PluginLauncher::runTimeLimit);
    return success;
}

HostStorage::Action HostCli::actionTitled(const QString& title)
{
    QList<HostStorage::Action> found;
    for (const HostStorage::Action& action : storage().actions()) {
        if (action.title() == title) {
            found.append(action);
        }
    }
    if (found.isEmpty()) {
        throw HostError(QStringLiteral("There is no action titled \"%1\"; 'vendel-host actions' lists them.")
                            .arg(HostInput::escaped(title)));
    }
    if (found.size() > 1) {
        QStringList ids;
        for (const HostStorage::Action& action : found) {
            ids.append(action.id);
        }
        throw HostError(
            QStringLiteral("%1 actions are titled \"%2\", so none was run; run one by its identifier: "
                           "%3.")
                .arg(found.size())
                .arg(HostInput::escaped(title), ids.join(QStringLiteral(", "))));
    }
    return found.constFirst();
}

int HostCli::editAction(const QString& id)
{
    const HostStorage::Action action = existingAction(id);
    PluginLauncher::startDetached(installedPlugin(action.plugin).path, PluginLauncher::editUrl(id));
    return success;
}

int HostCli::configurePlugin(const QString& name)
{
    PluginLauncher::startDetached(installedPlugin(name).path, PluginLauncher::configureUrl(name));
    return success;
}

int HostCli::config(const QStringList& arguments)
{
    const QString subcommand = arguments.value(0);
    if (subcommand == u"get") {
        const auto parsed = parse(arguments.mid(1), QStringLiteral("config get <id>"), 1);
        m_out << existingAction(parsed.operands().constFirst()).config << Qt::endl;
        return success;
    }
    if (subcommand == u"set") {
        const auto parsed = parse(arguments.mid(1), QStringLiteral("config set <id> <json>"), 2);
        const QString& id = parsed.operands().at(0);
        const QString& json = parsed.operands().at(1);
        // An empty text from a person is more likely an unset shell variable than a wish to clear.
        const auto problem = json.isEmpty() ? std::optional<QString>(QStringLiteral(
                                                  "the configuration is not a valid JSON object or array: "
                                                  "it is empty."))
                                            : HostInput::configProblem(json);
        if (problem) {
            return usageFailure(*problem);
        }
        storage(HostStorage::Access::ReadWrite);
        existingAction(id);
        // The text is kept as given, not re-encoded, so the plugin reads back exactly what was set.
        storage().setConfig(id, json);
        return success;
    }
    throw UsageError{QStringLiteral("usage: vendel-host config get <id> | config set <id> <json>")};
}

int HostCli::listPlugins(const QStringList& arguments)
{
    const auto parsed = parse(arguments, QStringLiteral("plugins [--json]"), 0, {QStringLiteral("--json")});
    QList<Row> rows;
    for (const HostStorage::Plugin& plugin : storage().plugins()) {
        rows.append({plugin.name, plugin.displayName(), plugin.icon(), plugin.path});
    }
    print(rows,
          {QStringLiteral("name"), QStringLiteral("displayName"), QStringLiteral("icon"),
           QStringLiteral("path")},
          parsed.has(QStringLiteral("--json")));
    return success;
}

int HostCli::listResources(const QStringList& arguments)
{
    const auto parsed = parse(arguments, QStringLiteral("resources [--json]"), 0, {QStringLiteral("--json")});
    QList<Row> rows;
    for (const HostResource& resource : storage().resources()) {
        rows.append({resource.type, resource.name, resource.url});
    }
    print(rows, {QStringLiteral("type"), QStringLiteral("name"), QStringLiteral("url")},
          parsed.has(QStringLiteral("--json")));
    return success;
}

void HostCli::print(const QList<Row>& rows, const QStringList& keys, bool json)
{
    if (json) {
        QJsonArray array;
        for (const Row& row : rows) {
            QJsonObject object;
            for (qsizetype column = 0; column < keys.size(); ++column) {
                object.insert(keys.at(column), QJsonValue::fromVariant(row.at(column)));
            }
            array.append(object);
        }
        m_out << QJsonDocument(array).toJson(QJsonDocument::Indented);
        return;
    }
    for (const Row& row : rows) {
        QStringList cells;
        for (const QVariant& cell : row) {
            cells.append(HostInput::escaped(cell.toString()));
        }
        m_out << cells.join(u'\t') << '\n';
    }
}

int HostCli::openCommandUrl(const QString& url)
{
    const QStringList lines = CommandUrlHandler(storage(HostStorage::Access::ReadWrite)).handle(url);
    for (const QString& line : lines) {
        m_out << HostInput::escaped(line) << '\n';
    }
    return success;
}

int HostCli::openLaunchUrl(const QString& url)
{
    const LaunchUrlRouter::Route route = LaunchUrlRouter(storage()).route(url);
    if (route.verb == LaunchUrlRouter::Verb::run) {
        PluginLauncher::runAndWait(route.executable, route.url, PluginLauncher::runTimeLimit);
    } else {
        PluginLauncher::startDetached(route.executable, route.url);
    }
    return success;
}

int HostCli::serve()
{
    // Signals are caught before the name is claimed: whoever sees the name may already send one.
    QuitOnSignal quitOnSignal;
    // What the served host says to people (KRunner's action, the desktop's notifications) is in their
    // language.
    HostTranslations::install();
    HostService service(storage(HostStorage::Access::ReadWrite));
    // A launch's failure goes to its caller in a signal, and to the service's log for whoever looks later.
    QObject::connect(
        &service, &HostService::LaunchEnded, &service,
        [this](qulonglong, const QString&, const QString&, const QString&, int, const QString& problem) {
            if (!problem.isEmpty()) {
                m_err << "vendel-host: " << problem << Qt::endl;
            }
        });
    QDBusConnection bus = QDBusConnection::sessionBus();
    // KRunner and GNOME Shell find the actions at their own paths on the host's name, so they are there
    // first.
    DesktopSearch search(service.storage(), service.launches(), bus,
                         [this](const QString& text) { m_err << "vendel-host: " << text << Qt::endl; });
    search.registerOn(bus);
    service.serveOn(bus);
    // Nobody can reach a host whose bus has gone, as at the end of a session; it ends with it.
    QTimer busWatch;
    busWatch.callOnTimeout([&] {
        if (!bus.isConnected()) {
            m_err << "vendel-host: the session bus has gone away." << Qt::endl;
            QCoreApplication::quit();
        }
    });
    busWatch.start(busCheckInterval);
    return QCoreApplication::exec();
}

} // namespace VendelHost
