// Each command opens the database only when it needs it, and turns every failure into one line on stderr.
#include "HostCli.h"

#include "CommandArguments.h"
#include "CommandUrlHandler.h"
#include "HostError.h"
#include "HostInput.h"
#include "HostService.h"
#include "PluginLauncher.h"
#include "QuitOnSignal.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <QTimer>

using namespace std::chrono_literals;

namespace VendelHost {

namespace {

// A run plays or pauses and quits at once; one that takes this long is stuck, not slow.
constexpr auto runTimeout = 60s;
constexpr auto busCheckInterval = 1s;

// A command line that does not fit its command's shape: said on stderr with the shape, status 2.
struct UsageError
{
    QString message;
};

// The command's arguments, checked against its shape: its options and how many operands it takes.
CommandArguments parse(const QStringList& arguments, const QString& shape, qsizetype operands,
                       const QStringList& flags = {}, const QStringList& valuedOptions = {})
{
    const QString usageLine = QStringLiteral("usage: vendel-host %1").arg(shape);
    try {
        CommandArguments parsed(arguments, flags, valuedOptions);
        if (parsed.operands().size() != operands) {
            throw UsageError{usageLine};
        }
        return parsed;
    } catch (const CommandArguments::Error& error) {
        throw UsageError{error.message + u'\n' + usageLine};
    }
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
        "  action new <plugin> [--no-edit]  Create an action for an installed plugin, print its identifier\n"
        "                                   and open it in the plugin's editor (unless --no-edit)\n"
        "  actions [--json]                 List the actions: identifier, plugin, configuration\n"
        "  run <id>                         Run an action and wait until its plugin has finished\n"
        "  edit <id>                        Open an action in its plugin's editor\n"
        "  configure <plugin>               Open a plugin's preferences\n"
        "  config get <id>                  Print an action's configuration\n"
        "  config set <id> <json>           Replace an action's configuration with a JSON object or array\n"
        "                                   (at most 1 MiB)\n"
        "  plugins [--json]                 List the installed plugins: name, executable\n"
        "  resources [--json]               List the resources that plugins have added\n"
        "  open <vendel://command/...>      Carry out a command URL, such as vendel://add-resources/...\n"
        "  serve                            Serve org.vendel.Host on the session bus until stopped\n"
        "  --help                           Show this help\n"
        "  --version                        Show the version\n"
        "\n"
        "A plugin is named by its executable's file name; plugins install themselves through the session\n"
        "bus when started without a launch URL. A launch starts the plugin's executable with the URL\n"
        "vendelplugin://run/<id>, vendelplugin://edit/<id> or vendelplugin://configure as its argument.\n"
        "\n"
        "Lists are tab-separated, one row a line, with tabs, line breaks and other control characters\n"
        "shown escaped (\\t, \\n, \\x01); --json prints the exact texts as a JSON array of objects.\n"
        "\n"
        "Data folder: $VENDEL_HOST_DATA_DIR, else $XDG_DATA_HOME/vendel (~/.local/share/vendel); it is\n"
        "kept private to you. Commands that only read open the database read-only, so they work where\n"
        "the folder is read-only and never wait for a command that writes.\n"
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
        return runAction(parse(rest, QStringLiteral("run <id>"), 1).operands().constFirst());
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
        return openCommandUrl(parse(rest, QStringLiteral("open <vendel-url>"), 1).operands().constFirst());
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
        const auto parsed = parse(arguments.mid(1), QStringLiteral("action new <plugin> [--no-edit]"), 1,
                                  {QStringLiteral("--no-edit")});
        storage(HostStorage::Access::ReadWrite);
        const HostStorage::Plugin plugin = installedPlugin(parsed.operands().constFirst());
        const QString id = storage().createAction(plugin.name);
        m_out << id << Qt::endl;
        if (!parsed.has(QStringLiteral("--no-edit"))) {
            PluginLauncher::startDetached(plugin.path, PluginLauncher::editUrl(id));
        }
        return success;
    }
    throw UsageError{QStringLiteral("usage: vendel-host action new <plugin> [--no-edit]")};
}

int HostCli::listActions(const QStringList& arguments)
{
    return list(arguments, QStringLiteral("actions"),
                {QStringLiteral("id"), QStringLiteral("plugin"), QStringLiteral("config")},
                [](HostStorage& storage) {
                    QList<QStringList> rows;
                    for (const HostStorage::Action& action : storage.actions()) {
                        rows.append({action.id, action.plugin, action.config});
                    }
                    return rows;
                });
}

int HostCli::runAction(const QString& id)
{
    const HostStorage::Action action = existingAction(id);
    PluginLauncher::runAndWait(installedPlugin(action.plugin).path, PluginLauncher::runUrl(id), runTimeout);
    return success;
}

int HostCli::editAction(const QString& id)
{
    const HostStorage::Action action = existingAction(id);
    PluginLauncher::startDetached(installedPlugin(action.plugin).path, PluginLauncher::editUrl(id));
    return success;
}

int HostCli::configurePlugin(const QString& name)
{
    PluginLauncher::startDetached(installedPlugin(name).path, PluginLauncher::configureUrl());
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
    return list(arguments, QStringLiteral("plugins"), {QStringLiteral("name"), QStringLiteral("path")},
                [](HostStorage& storage) {
                    QList<QStringList> rows;
                    for (const HostStorage::Plugin& plugin : storage.plugins()) {
                        rows.append({plugin.name, plugin.path});
                    }
                    return rows;
                });
}

int HostCli::listResources(const QStringList& arguments)
{
    return list(arguments, QStringLiteral("resources"),
                {QStringLiteral("type"), QStringLiteral("name"), QStringLiteral("url")},
                [](HostStorage& storage) {
                    QList<QStringList> rows;
                    for (const HostResource& resource : storage.resources()) {
                        rows.append({resource.type, resource.name, resource.url});
                    }
                    return rows;
                });
}

int HostCli::list(const QStringList& arguments, const QString& command, const QStringList& keys,
                  const std::function<QList<QStringList>(HostStorage&)>& rows)
{
    const bool json =
        parse(arguments, QStringLiteral("%1 [--json]").arg(command), 0, {QStringLiteral("--json")})
            .has(QStringLiteral("--json"));
    const QList<QStringList> table = rows(storage());
    if (json) {
        QJsonArray array;
        for (const QStringList& row : table) {
            QJsonObject object;
            for (qsizetype column = 0; column < keys.size(); ++column) {
                object.insert(keys.at(column), row.at(column));
            }
            array.append(object);
        }
        m_out << QJsonDocument(array).toJson(QJsonDocument::Indented);
        return success;
    }
    for (const QStringList& row : table) {
        QStringList cells;
        for (const QString& cell : row) {
            cells.append(HostInput::escaped(cell));
        }
        m_out << cells.join(u'\t') << '\n';
    }
    return success;
}

int HostCli::openCommandUrl(const QString& url)
{
    const QStringList lines = CommandUrlHandler(storage(HostStorage::Access::ReadWrite)).handle(url);
    for (const QString& line : lines) {
        m_out << HostInput::escaped(line) << '\n';
    }
    return success;
}

int HostCli::serve()
{
    // Signals are caught before the name is claimed: whoever sees the name may already send one.
    QuitOnSignal quitOnSignal;
    HostService service(storage(HostStorage::Access::ReadWrite));
    QDBusConnection bus = QDBusConnection::sessionBus();
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
