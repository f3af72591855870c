// Tests the vendel-host command line as people and scripts use it: a real process on a temporary folder.
#include "DatabaseLock.h"
#include "HostProcess.h"
#include "HostStorage.h"
#include "OldDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace VendelHost;
using namespace VendelHost::Testing;

namespace {

const QString stub = QStringLiteral(VENDEL_TEST_PLUGIN_STUB);
const QString stubName = QStringLiteral("stub");

} // namespace

class HostCliTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_host = std::make_unique<HostProcess>(dataDirectory());
        qputenv("VENDEL_STUB_RECORD", recordPath().toUtf8());
        qunsetenv("VENDEL_STUB_EXIT");
    }

    void cleanup()
    {
        m_host.reset();
        m_directory.reset();
    }

    void helpNamesEveryCommand()
    {
        const auto result = m_host->run({QStringLiteral("--help")});
        QCOMPARE(result.exitCode, 0);
        for (const char* command : {"action new <plugin> [--title <text>] [--no-edit]",
                                    "action title <id> <text>",
                                    "action delete <id>",
                                    "actions [--json | --menu]",
                                    "run <id>",
                                    "run --title <text>",
                                    "edit <id>",
                                    "configure <plugin>",
                                    "config get",
                                    "config set",
                                    "plugins",
                                    "resources",
                                    "open",
                                    "serve",
                                    "window [--filter <text>] [-- <word>...]",
                                    "org.vendel.Actions1",
                                    "--json",
                                    "1 MiB",
                                    "VENDEL_HOST_DATA_DIR",
                                    "1 to 200 characters",
                                    "display name and its number",
                                    "| rofi -dmenu | cut -f2 | xargs -r vendel-host run --",
                                    "-- ends them",
                                    "earlier vendel-host"}) {
            QVERIFY2(result.out.contains(QLatin1String(command)), command);
        }
    }

    void versionIsProgramThenVersion()
    {
        const auto result = m_host->run({QStringLiteral("--version")});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(QRegularExpression(QStringLiteral("^vendel-host [0-9]+\\.[0-9]+\\.[0-9]+\n$"))
                     .match(result.out)
                     .hasMatch(),
                 qPrintable(result.out));
        QVERIFY(result.err.isEmpty());
    }

    void wrongCommandLinesAreUsageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, QStringList arguments, const char* expected) {
            QTest::newRow(name) << arguments << QString::fromLatin1(expected);
        };
        row("nothing", {}, "no command given");
        row("unknown", {QStringLiteral("frobnicate")}, "unknown command \"frobnicate\"");
        row("run without id", {QStringLiteral("run")}, "usage: vendel-host run <id>");
        row("run with two", {QStringLiteral("run"), QStringLiteral("a"), QStringLiteral("b")},
            "usage: vendel-host run");
        row("edit without id", {QStringLiteral("edit")}, "usage: vendel-host edit");
        row("configure without plugin", {QStringLiteral("configure")}, "usage: vendel-host configure");
        row("config alone", {QStringLiteral("config")}, "usage: vendel-host config");
        row("config get without id", {QStringLiteral("config"), QStringLiteral("get")},
            "usage: vendel-host config");
        row("config set without json", {QStringLiteral("config"), QStringLiteral("set"), QStringLiteral("x")},
            "usage: vendel-host config");
        row("config other", {QStringLiteral("config"), QStringLiteral("del"), QStringLiteral("x")},
            "usage: vendel-host config");
        row("action alone", {QStringLiteral("action")}, "usage: vendel-host action new");
        row("action new alone", {QStringLiteral("action"), QStringLiteral("new")},
            "usage: vendel-host action new");
        row("action old", {QStringLiteral("action"), QStringLiteral("old"), QStringLiteral("x")},
            "usage: vendel-host action new");
        row("action new bad option",
            {QStringLiteral("action"), QStringLiteral("new"), QStringLiteral("x"), QStringLiteral("--edit")},
            "usage: vendel-host action new");
        row("plugins with argument", {QStringLiteral("plugins"), QStringLiteral("x")},
            "usage: vendel-host plugins [--json]");
        row("actions with two",
            {QStringLiteral("actions"), QStringLiteral("--json"), QStringLiteral("--json")},
            "the option --json is given twice");
        row("actions as menu and JSON",
            {QStringLiteral("actions"), QStringLiteral("--json"), QStringLiteral("--menu")},
            "--json and --menu do not go together");
        row("action title without text",
            {QStringLiteral("action"), QStringLiteral("title"), QStringLiteral("x")},
            "usage: vendel-host action title <id> <text>");
        row("action delete without id", {QStringLiteral("action"), QStringLiteral("delete")},
            "usage: vendel-host action delete <id>");
        row("action new, title without text",
            {QStringLiteral("action"), QStringLiteral("new"), QStringLiteral("x"), QStringLiteral("--title")},
            "the option --title needs a value");
        row("run, title and id",
            {QStringLiteral("run"), QStringLiteral("--title"), QStringLiteral("a"), QStringLiteral("b")},
            "usage: vendel-host run <id> | run --title <text>");
        row("run, title without text", {QStringLiteral("run"), QStringLiteral("--title")},
            "the option --title needs a value");
        row("resources with other option", {QStringLiteral("resources"), QStringLiteral("--csv")},
            "usage: vendel-host resources [--json]");
        row("serve with argument", {QStringLiteral("serve"), QStringLiteral("x")},
            "usage: vendel-host serve");
        row("open without url", {QStringLiteral("open")}, "usage: vendel-host open");
        row("window, unknown option", {QStringLiteral("window"), QStringLiteral("--bogus")},
            "unknown option \"--bogus\"");
        row("window, filter without text", {QStringLiteral("window"), QStringLiteral("--filter")},
            "the option --filter needs a value");
        row("unknown option of run", {QStringLiteral("run"), QStringLiteral("--now"), QStringLiteral("x")},
            "unknown option \"--now\"");
        row("unknown option of config get",
            {QStringLiteral("config"), QStringLiteral("get"), QStringLiteral("-x"), QStringLiteral("x")},
            "unknown option \"-x\"");
        row("an option twice",
            {QStringLiteral("action"), QStringLiteral("new"), QStringLiteral("x"),
             QStringLiteral("--no-edit"), QStringLiteral("--no-edit")},
            "the option --no-edit is given twice");
    }

    void wrongCommandLinesAreUsageErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        const auto result = m_host->run(arguments);
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.err.contains(expected), qPrintable(result.err));
        QVERIFY(result.err.contains(QStringLiteral("vendel-host --help")));
        QVERIFY(result.out.isEmpty());
    }

    void aNewActionNeedsAnInstalledPlugin()
    {
        const auto result =
            m_host->run({QStringLiteral("action"), QStringLiteral("new"), QStringLiteral("nope")});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("There is no plugin \"nope\"")), qPrintable(result.err));
        QVERIFY(storage().actions().isEmpty());
    }

    void anOperandAfterTheEndOfOptionsIsNamedAsItIs_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected");
        QTest::newRow("action new") << QStringList{QStringLiteral("action"), QStringLiteral("new"),
                                                   QStringLiteral("--"), QStringLiteral("--no-edit")}
                                    << QStringLiteral("There is no plugin \"--no-edit\"");
        QTest::newRow("run") << QStringList{QStringLiteral("run"), QStringLiteral("--"), QStringLiteral("-x")}
                             << QStringLiteral("There is no action \"-x\"");
        QTest::newRow("config get") << QStringList{QStringLiteral("config"), QStringLiteral("get"),
                                                   QStringLiteral("--"), QStringLiteral("--json")}
                                    << QStringLiteral("There is no action \"--json\"");
        QTest::newRow("configure") << QStringList{QStringLiteral("configure"), QStringLiteral("--"),
                                                  QStringLiteral("--help")}
                                   << QStringLiteral("There is no plugin \"--help\"");
    }

    void anOperandAfterTheEndOfOptionsIsNamedAsItIs()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        installStub(stub);
        const auto result = m_host->run(arguments);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(expected), qPrintable(result.err));
        QVERIFY(storage().actions().isEmpty());
        QVERIFY(record().isEmpty());
    }

    void optionsMayComeBeforeTheOperands()
    {
        installStub(m_directory->filePath(QStringLiteral("gone")));
        const auto result = m_host->run(
            {QStringLiteral("action"), QStringLiteral("new"), QStringLiteral("--no-edit"), stubName});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        QCOMPARE(storage().actions().size(), 1);
    }

    void aNewActionIsPrintedAndOpenedInItsEditor()
    {
        installStub(stub);
        const auto result = m_host->run({QStringLiteral("action"), QStringLiteral("new"), stubName});
        QCOMPARE(result.exitCode, 0);
        const QString id = result.out.trimmed();
        QVERIFY2(QRegularExpression(QStringLiteral("^[0-9a-f-]{36}$")).match(id).hasMatch(),
                 qPrintable(result.out));
        QTRY_COMPARE(record(), QStringLiteral("vendelplugin://edit/%1\n").arg(id));
        const auto listed = m_host->run({QStringLiteral("actions")});
        QCOMPARE(listed.out, QStringLiteral("%1\tstub 1\tstub\t1\t\n").arg(id));
    }

    void aNewActionWithoutEditorLaunchesNothing()
    {
        // A plugin whose executable is gone would fail any launch, so success shows none was tried.
        installStub(m_directory->filePath(QStringLiteral("gone")));
        QCOMPARE(m_host->run({QStringLiteral("action"), QStringLiteral("new"), stubName}).exitCode, 1);
        const auto result = m_host->run(
            {QStringLiteral("action"), QStringLiteral("new"), stubName, QStringLiteral("--no-edit")});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(storage().actions().size(), 2);
    }

    void titlesAreKeptExactly_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("plain") << QStringLiteral("Road Trip");
        QTest::newRow("unicode") << QStringLiteral("Ünïcødé 🎵 Straße — 東京 مرحبا");
        QTest::newRow("combining marks") << QStringLiteral("Cafe\u0301");
        QTest::newRow("one character") << QStringLiteral("x");
        QTest::newRow("200 characters") << QString(200, u'a');
        // 200 characters that each take two UTF-16 units: characters are counted, not units.
        QTest::newRow("200 emoji") << QString(QStringLiteral("🎵")).repeated(200);
        QTest::newRow("dashes") << QStringLiteral("--no-edit");
        QTest::newRow("spaces inside and around") << QStringLiteral(" a  b ");
    }

    void titlesAreKeptExactly()
    {
        QFETCH(QString, title);
        installStub(stub);
        const auto created = m_host->run({QStringLiteral("action"), QStringLiteral("new"), stubName,
                                          QStringLiteral("--no-edit"), QStringLiteral("--title"), title});
        QVERIFY2(created.exitCode == 0, qPrintable(created.err));
        const QString id = created.out.trimmed();
        QCOMPARE(storage().action(id)->title(), title);
        const QString other = newAction();
        const auto titled = m_host->run(
            {QStringLiteral("action"), QStringLiteral("title"), QStringLiteral("--"), other, title});
        QVERIFY2(titled.exitCode == 0, qPrintable(titled.err));
        QCOMPARE(storage().action(other)->title(), title);
        const QJsonArray list =
            QJsonDocument::fromJson(
                m_host->run({QStringLiteral("actions"), QStringLiteral("--json")}).out.toUtf8())
                .array();
        QCOMPARE(list.at(0).toObject().value(QStringLiteral("title")).toString(), title);
        QCOMPARE(m_host->run({QStringLiteral("actions")}).out.section(u'\t', 1, 1), title);
    }

    void badTitlesAreRefusedAndNothingIsStored_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << QString() << QStringLiteral("the title is empty");
        QTest::newRow("201 characters")
            << QString(201, u'a') << QStringLiteral("the title has 201 characters");
        QTest::newRow("201 emoji") << QString(QStringLiteral("🎵")).repeated(201)
                                   << QStringLiteral("the title has 201 characters");
        QTest::newRow("tab") << QStringLiteral("a\tb")
                             << QStringLiteral("control character or line break (\\t)");
        QTest::newRow("line feed") << QStringLiteral("a\n") << QStringLiteral("(\\n) at character 2");
        QTest::newRow("carriage return") << QStringLiteral("\ra") << QStringLiteral("(\\r) at character 1");
        QTest::newRow("escape") << QStringLiteral("a\x1b[2J") << QStringLiteral("(\\x1b)");
        QTest::newRow("delete") << QStringLiteral("a\x7f") << QStringLiteral("(\\x7f)");
        QTest::newRow("next line") << QStringLiteral("a\u0085b") << QStringLiteral("(\\u0085)");
        QTest::newRow("line separator") << QStringLiteral("a\u2028b") << QStringLiteral("(\\u2028)");
        QTest::newRow("paragraph separator") << QStringLiteral("a\u2029b") << QStringLiteral("(\\u2029)");
        QTest::newRow("only spaces") << QStringLiteral("   ") << QStringLiteral("only white space");
    }

    void badTitlesAreRefusedAndNothingIsStored()
    {
        QFETCH(QString, title);
        QFETCH(QString, expected);
        const QString id = newAction();
        QVERIFY(storage().setTitle(id, QStringLiteral("Kept")));
        const auto created = m_host->run({QStringLiteral("action"), QStringLiteral("new"), stubName,
                                          QStringLiteral("--no-edit"), QStringLiteral("--title=") + title});
        QCOMPARE(created.exitCode, 2);
        QVERIFY2(created.err.contains(expected), qPrintable(created.err));
        QVERIFY(created.out.isEmpty());
        const auto titled = m_host->run({QStringLiteral("action"), QStringLiteral("title"), id, title});
        QCOMPARE(titled.exitCode, 2);
        QVERIFY2(titled.err.contains(expected), qPrintable(titled.err));
        QCOMPARE(storage().actions().size(), 1);
        QCOMPARE(storage().action(id)->title(), QStringLiteral("Kept"));
        QVERIFY(record().isEmpty());
    }

    void defaultTitlesNumberEachPluginsActionsAndNeverReuseANumber()
    {
        HostStorage(dataDirectory())
            .recordPlugin({stubName, stub, QStringLiteral("Stub Player"), QStringLiteral("stub-player")});
        const auto create = [this] {
            return m_host
                ->run(
                    {QStringLiteral("action"), QStringLiteral("new"), stubName, QStringLiteral("--no-edit")})
                .out.trimmed();
        };
        const QString first = create();
        const QString second = create();
        const QString third = create();
        QCOMPARE(m_host->run({QStringLiteral("action"), QStringLiteral("delete"), third}).exitCode, 0);
        QCOMPARE(m_host->run({QStringLiteral("action"), QStringLiteral("delete"), second}).exitCode, 0);
        const QString fourth = create();
        HostStorage(dataDirectory()).recordPlugin({QStringLiteral("other"), stub});
        const QString other = HostStorage(dataDirectory()).createAction(QStringLiteral("other"));
        QCOMPARE(m_host->run({QStringLiteral("actions")}).out,
                 QStringLiteral(
                     "%1\tStub Player 1\tstub\t1\t\n%2\tStub Player 4\tstub\t4\t\n%3\tother 1\tother\t1\t\n")
                     .arg(first, fourth, other));
        // A title of its own replaces the default one; the number stays.
        QCOMPARE(
            m_host->run({QStringLiteral("action"), QStringLiteral("title"), first, QStringLiteral("Focus")})
                .exitCode,
            0);
        QCOMPARE(m_host->run({QStringLiteral("actions")}).out.section(u'\n', 0, 0),
                 QStringLiteral("%1\tFocus\tstub\t1\t").arg(first));
    }

    void deletingRemovesOnlyThatAction()
    {
        const QString kept = newAction();
        const QString gone = newAction();
        storage().setConfig(gone, QStringLiteral("{\"a\":1}"));
        const auto deleted = m_host->run({QStringLiteral("action"), QStringLiteral("delete"), gone});
        QVERIFY2(deleted.exitCode == 0, qPrintable(deleted.err));
        QVERIFY(deleted.out.isEmpty());
        QVERIFY(!storage().action(gone));
        QVERIFY(storage().action(kept));
        const auto again = m_host->run({QStringLiteral("config"), QStringLiteral("get"), gone});
        QCOMPARE(again.exitCode, 1);
    }

    void deletingOrTitlingAnUnknownActionIsReported_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("delete") << QStringList{QStringLiteral("action"), QStringLiteral("delete"),
                                               QStringLiteral("nope")};
        QTest::newRow("title") << QStringList{QStringLiteral("action"), QStringLiteral("title"),
                                              QStringLiteral("nope"), QStringLiteral("x")};
    }

    void deletingOrTitlingAnUnknownActionIsReported()
    {
        QFETCH(QStringList, arguments);
        const QString kept = newAction();
        const auto result = m_host->run(arguments);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("There is no action \"nope\"")), qPrintable(result.err));
        QCOMPARE(storage().actions().size(), 1);
        QCOMPARE(storage().action(kept)->title(), QStringLiteral("stub 1"));
    }

    void theMenuListsTitleAndIdentifierSortedByTitle()
    {
        installStub(stub);
        HostStorage data(dataDirectory());
        QStringList ids;
        for (const char* title : {"Mix 10", "banana", "Mix 2", "Apple", "", "Äpfel"}) {
            ids.append(data.createAction(stubName, QString::fromUtf8(title)));
        }
        // As a dictionary sorts: accents and case second to letters, numbers by value.
        const auto result = m_host->run({QStringLiteral("actions"), QStringLiteral("--menu")});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out,
                 QStringLiteral("Äpfel\t%6\nApple\t%4\nbanana\t%2\nMix 2\t%3\nMix 10\t%1\nstub 5\t%5\n")
                     .arg(ids.at(0), ids.at(1), ids.at(2), ids.at(3), ids.at(4), ids.at(5)));
        QCOMPARE(HostProcess(m_directory->filePath(QStringLiteral("empty")))
                     .run({QStringLiteral("actions"), QStringLiteral("--menu")})
                     .out,
                 QString());
    }

    void runByTitleRunsTheOneActionWithExactlyThatTitle()
    {
        installStub(stub);
        HostStorage data(dataDirectory());
        const QString focus = data.createAction(stubName, QStringLiteral("Focus"));
        data.createAction(stubName, QStringLiteral("focus"));
        const QString plain = data.createAction(stubName);
        const auto result =
            m_host->run({QStringLiteral("run"), QStringLiteral("--title"), QStringLiteral("Focus")});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        QCOMPARE(record(), QStringLiteral("vendelplugin://run/%1\n").arg(focus));
        // A default title is a title too.
        QCOMPARE(m_host->run({QStringLiteral("run"), QStringLiteral("--title=stub 3")}).exitCode, 0);
        QCOMPARE(record(),
                 QStringLiteral("vendelplugin://run/%1\nvendelplugin://run/%2\n").arg(focus, plain));
    }

    void runByTitleRefusesAMissingOrAmbiguousTitle()
    {
        installStub(stub);
        HostStorage data(dataDirectory());
        const QString first = data.createAction(stubName, QStringLiteral("Twice"));
        const QString second = data.createAction(stubName, QStringLiteral("Twice"));
        const auto ambiguous =
            m_host->run({QStringLiteral("run"), QStringLiteral("--title"), QStringLiteral("Twice")});
        QCOMPARE(ambiguous.exitCode, 1);
        QVERIFY2(
            ambiguous.err.contains(
                QStringLiteral(
                    "2 actions are titled \"Twice\", so none was run; run one by its identifier: %1, %2.")
                    .arg(first, second)),
            qPrintable(ambiguous.err));
        const auto missing =
            m_host->run({QStringLiteral("run"), QStringLiteral("--title"), QStringLiteral("Twic")});
        QCOMPARE(missing.exitCode, 1);
        QVERIFY2(missing.err.contains(QStringLiteral("There is no action titled \"Twic\"")),
                 qPrintable(missing.err));
        QVERIFY(record().isEmpty());
    }

    // The line the README gives, run by a shell, with a menu program that answers as dmenu's protocol
    // says: the picked line on standard output, or nothing and status 1 when the user cancels.
    void theReadmesMenuLineRunsThePickedActionAndNothingWhenCancelled()
    {
        const QString line = readmeMenuLine();
        QVERIFY2(line.contains(QStringLiteral("vendel-host actions --menu | rofi -dmenu")), qPrintable(line));
        installStub(stub);
        HostStorage data(dataDirectory());
        data.createAction(stubName, QStringLiteral("Road Trip"));
        const QString focus = data.createAction(stubName, QStringLiteral("-Focus, \"quoted\" 'x' $HOME"));
        data.createAction(stubName, QStringLiteral("Sleep"));

        const QString bin = m_directory->filePath(QStringLiteral("bin"));
        QVERIFY(QDir().mkpath(bin));
        QVERIFY(QFile::link(HostProcess::executable(), bin + QStringLiteral("/vendel-host")));
        QFile menu(bin + QStringLiteral("/rofi"));
        QVERIFY(menu.open(QIODevice::WriteOnly));
        // Picks the line whose title is $PICK, as a user would; cancels when PICK is unset.
        menu.write("#!/bin/sh\n"
                   "[ \"$1\" = -dmenu ] || exit 3\n"
                   "lines=$(cat)\n"
                   "[ -n \"${PICK+set}\" ] || exit 1\n"
                   "printf '%s\\n' \"$lines\" | awk -F '\\t' -v pick=\"$PICK\" '$1 == pick'\n");
        menu.close();
        QVERIFY(menu.setPermissions(menu.permissions() | QFile::ExeOwner));

        const auto runLine = [&](const std::optional<QString>& pick) {
            QProcess shell;
            QProcessEnvironment environment = m_host->environment();
            environment.insert(QStringLiteral("PATH"),
                               bin + u':' + environment.value(QStringLiteral("PATH")));
            if (pick) {
                environment.insert(QStringLiteral("PICK"), *pick);
            }
            shell.setProcessEnvironment(environment);
            shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), line});
            return shell.waitForFinished(30000) && shell.exitStatus() == QProcess::NormalExit
                       ? shell.exitCode()
                       : -1;
        };
        QCOMPARE(runLine(std::nullopt), 0);
        QCOMPARE(record(), QString());
        QCOMPARE(runLine(QStringLiteral("-Focus, \"quoted\" 'x' $HOME")), 0);
        QCOMPARE(record(), QStringLiteral("vendelplugin://run/%1\n").arg(focus));
    }

    void anUnversionedDatabaseIsShownAsItIsThenMigratedByAWrite()
    {
        QVERIFY(Testing::writeUnversionedDatabase(
            dataDirectory(),
            {QStringLiteral("INSERT INTO plugins VALUES ('stub', '%1')").arg(stub),
             QStringLiteral("INSERT INTO actions VALUES ('a1', 'stub', '{\"x\":1}'), ('a2', 'stub', '')")}));
        const QString database = dataDirectory() + QStringLiteral("/host.sqlite");
        const QByteArray before = Testing::contentsOf(database);
        const QString listing = QStringLiteral("a1\tstub 1\tstub\t1\t{\"x\":1}\na2\tstub 2\tstub\t2\t\n");
        const auto read = m_host->run({QStringLiteral("actions")});
        QVERIFY2(read.exitCode == 0, qPrintable(read.err));
        QCOMPARE(read.out, listing);
        QCOMPARE(m_host->run({QStringLiteral("actions"), QStringLiteral("--menu")}).out,
                 QStringLiteral("stub 1\ta1\nstub 2\ta2\n"));
        QCOMPARE(m_host->run({QStringLiteral("run"), QStringLiteral("--title"), QStringLiteral("stub 2")})
                     .exitCode,
                 0);
        QCOMPARE(record(), QStringLiteral("vendelplugin://run/a2\n"));
        QCOMPARE(Testing::contentsOf(database), before);
        QCOMPARE(Testing::userVersion(database), 0);

        QCOMPARE(m_host
                     ->run({QStringLiteral("config"), QStringLiteral("set"), QStringLiteral("a2"),
                            QStringLiteral("[]")})
                     .exitCode,
                 0);
        QCOMPARE(Testing::userVersion(database), 1);
        QCOMPARE(m_host->run({QStringLiteral("actions")}).out,
                 QStringLiteral("a1\tstub 1\tstub\t1\t{\"x\":1}\na2\tstub 2\tstub\t2\t[]\n"));
        QCOMPARE(m_host
                     ->run({QStringLiteral("action"), QStringLiteral("new"), stubName,
                            QStringLiteral("--no-edit")})
                     .exitCode,
                 0);
        QCOMPARE(storage().actions().last().title(), QStringLiteral("stub 3"));
    }

    void aDatabaseOfANewerHostIsRefusedByEveryCommand()
    {
        const QString id = newAction();
        const QString database = dataDirectory() + QStringLiteral("/host.sqlite");
        QVERIFY(Testing::execute(database, {QStringLiteral("PRAGMA user_version = 7")}));
        const QByteArray before = Testing::contentsOf(database);
        for (const QStringList& arguments :
             {QStringList{QStringLiteral("actions")},
              QStringList{QStringLiteral("config"), QStringLiteral("set"), id, QStringLiteral("{}")},
              QStringList{QStringLiteral("action"), QStringLiteral("new"), stubName,
                          QStringLiteral("--no-edit")},
              QStringList{QStringLiteral("serve")}}) {
            const auto result = m_host->run(arguments);
            QCOMPARE(result.exitCode, 1);
            QVERIFY2(result.err.contains(
                         QStringLiteral("was written by a newer vendel-host (its tables are of version 7")),
                     qPrintable(result.err));
        }
        QCOMPARE(Testing::contentsOf(database), before);
        QCOMPARE(Testing::userVersion(database), 7);
    }

    void configIsSetAndReadBackExactly()
    {
        const QString id = newAction();
        const QString json =
            QStringLiteral("{\"action\":0,\"name\":\"Ünï \\\"mix\\\" \\\\\",\"shouldShuffle\":true}");
        QCOMPARE(m_host->run({QStringLiteral("config"), QStringLiteral("set"), id, json}).exitCode, 0);
        const auto result = m_host->run({QStringLiteral("config"), QStringLiteral("get"), id});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, json + u'\n');
        QCOMPARE(storage().action(id)->config, json);
    }

    void invalidJsonIsRefusedAndTheOldValueKept_data()
    {
        QTest::addColumn<QString>("json");
        QTest::newRow("unterminated") << QStringLiteral("{\"action\":");
        QTest::newRow("empty") << QString();
        QTest::newRow("trailing text") << QStringLiteral("{} {}");
        QTest::newRow("bare word") << QStringLiteral("pause");
        QTest::newRow("single quotes") << QStringLiteral("{'action':1}");
    }

    void invalidJsonIsRefusedAndTheOldValueKept()
    {
        QFETCH(QString, json);
        const QString id = newAction();
        QCOMPARE(
            m_host
                ->run({QStringLiteral("config"), QStringLiteral("set"), id, QStringLiteral("{\"action\":1}")})
                .exitCode,
            0);
        const auto result = m_host->run({QStringLiteral("config"), QStringLiteral("set"), id, json});
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.err.contains(QStringLiteral("not a valid JSON object or array")),
                 qPrintable(result.err));
        QCOMPARE(storage().action(id)->config, QStringLiteral("{\"action\":1}"));
    }

    void invalidUtf8IsRefusedAndNeverReplaced()
    {
        const QString id = newAction();
        storage().setConfig(id, QStringLiteral("{\"action\":1}"));
        // Arguments are texts to QProcess, so the shell appends the one invalid byte.
        const auto result =
            m_host->run({QStringLiteral("config"), QStringLiteral("set"), id},
                        {QStringLiteral("sh"), QStringLiteral("-c"),
                         QStringLiteral("exec \"$0\" \"$@\" \"$(printf '{\"name\":\"\\377\"}')\"")});
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.err.contains(QStringLiteral("argument 4 is not valid UTF-8")),
                 qPrintable(result.err));
        QCOMPARE(storage().action(id)->config, QStringLiteral("{\"action\":1}"));
    }

    void anUnknownActionIsReported_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("config get") << QStringList{QStringLiteral("config"), QStringLiteral("get"),
                                                   QStringLiteral("nope")};
        QTest::newRow("config set") << QStringList{QStringLiteral("config"), QStringLiteral("set"),
                                                   QStringLiteral("nope"), QStringLiteral("{}")};
        QTest::newRow("run") << QStringList{QStringLiteral("run"), QStringLiteral("nope")};
        QTest::newRow("edit") << QStringList{QStringLiteral("edit"), QStringLiteral("nope")};
    }

    void anUnknownActionIsReported()
    {
        QFETCH(QStringList, arguments);
        const auto result = m_host->run(arguments);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("There is no action \"nope\"")), qPrintable(result.err));
        QVERIFY(storage().actions().isEmpty());
        QVERIFY(record().isEmpty());
    }

    void runStartsThePluginWithTheRunUrlAndWaits()
    {
        const QString id = newAction();
        const auto result = m_host->run({QStringLiteral("run"), id});
        QCOMPARE(result.exitCode, 0);
        // The run was waited for, so what the plugin did is there the moment the command ends.
        QCOMPARE(record(), QStringLiteral("vendelplugin://run/%1\n").arg(id));
    }

    void aFailedRunIsReported()
    {
        const QString id = newAction();
        qputenv("VENDEL_STUB_EXIT", "4");
        const auto result = m_host->run({QStringLiteral("run"), id});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("exit status 4")), qPrintable(result.err));
    }

    void aRunWhosePluginIsGoneIsReported()
    {
        const QString id = newAction();
        installStub(m_directory->filePath(QStringLiteral("gone")));
        const auto result = m_host->run({QStringLiteral("run"), id});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("is missing; install the plugin again")),
                 qPrintable(result.err));
    }

    void editAndConfigureOpenThePlugin()
    {
        const QString id = newAction();
        QCOMPARE(m_host->run({QStringLiteral("edit"), id}).exitCode, 0);
        QTRY_COMPARE(record(), QStringLiteral("vendelplugin://edit/%1\n").arg(id));
        QCOMPARE(m_host->run({QStringLiteral("configure"), stubName}).exitCode, 0);
        QTRY_COMPARE(record(),
                     QStringLiteral("vendelplugin://edit/%1\nvendelplugin://configure/stub\n").arg(id));
        const auto unknown = m_host->run({QStringLiteral("configure"), QStringLiteral("nope")});
        QCOMPARE(unknown.exitCode, 1);
        QVERIFY2(unknown.err.contains(QStringLiteral("There is no plugin \"nope\"")),
                 qPrintable(unknown.err));
    }

    void openHandsALaunchUrlToItsPluginUnchanged()
    {
        const QString id = newAction();
        // A run is waited for, as by run; the query and fragment, which the plugin ignores, go with it.
        const QString run = QStringLiteral("vendelplugin://run/%1?from=Menu#Top").arg(id);
        QCOMPARE(m_host->run({QStringLiteral("open"), run}).exitCode, 0);
        QCOMPARE(record(), run + u'\n');
        const QString edit = QStringLiteral("vendelplugin://edit/%1").arg(id);
        QCOMPARE(m_host->run({QStringLiteral("open"), edit}).exitCode, 0);
        QTRY_COMPARE(record(), run + u'\n' + edit + u'\n');
        const QString configure = QStringLiteral("vendelplugin://configure/stub");
        QCOMPARE(m_host->run({QStringLiteral("open"), configure}).exitCode, 0);
        QTRY_COMPARE(record(), run + u'\n' + edit + u'\n' + configure + u'\n');
    }

    void openPassesCapitalsOnForThePluginToRefuse()
    {
        // The desktop found the host by the scheme in any case; the plugin compares it exactly, so the text
        // must reach it as written, never folded.
        const QString id = newAction();
        const QString url = QStringLiteral("VENDELPLUGIN://run/%1").arg(id);
        QCOMPARE(m_host->run({QStringLiteral("open"), url}).exitCode, 0);
        QCOMPARE(record(), url + u'\n');
    }

    void openRefusesLaunchUrlsItCannotRoute_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("error");
        QTest::newRow("no identifier") << QStringLiteral("vendelplugin://run")
                                       << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("two segments") << QStringLiteral("vendelplugin://edit/a/b")
                                      << QStringLiteral("names no action, so it belongs to no plugin");
        QTest::newRow("unknown action")
            << QStringLiteral("vendelplugin://run/nope")
            << QStringLiteral("names the action \"nope\", which this host does not know");
        QTest::newRow("configure without plugin")
            << QStringLiteral("vendelplugin://configure")
            << QStringLiteral("names no plugin: vendelplugin://configure/<plugin>");
        QTest::newRow("unknown plugin")
            << QStringLiteral("vendelplugin://configure/nope")
            << QStringLiteral("names the plugin \"nope\", which is not installed");
        QTest::newRow("run command") << QStringLiteral("vendelplugin://runCommand/abc")
                                     << QStringLiteral(
                                            "The host cannot route \"vendelplugin://runCommand/abc\"");
        QTest::newRow("verb in capitals") << QStringLiteral("vendelplugin://Run/ID")
                                          << QStringLiteral("\"Run\" is no launch it knows the plugin of");
        QTest::newRow("no verb") << QStringLiteral("vendelplugin:run/ID")
                                 << QStringLiteral("names no launch");
        QTest::newRow("not a URL") << QStringLiteral("vendelplugin://run/a b")
                                   << QStringLiteral("is not a URL (invalid at character 21)");
    }

    void openRefusesLaunchUrlsItCannotRoute()
    {
        QFETCH(QString, url);
        QFETCH(QString, error);
        const QString id = newAction();
        url.replace(QStringLiteral("ID"), id);
        const auto result = m_host->run({QStringLiteral("open"), url});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(error), qPrintable(result.err));
        QVERIFY(result.out.isEmpty());
        QCOMPARE(record(), QString());
    }

    void aFailedRunByUrlIsReported()
    {
        const QString id = newAction();
        qputenv("VENDEL_STUB_EXIT", "4");
        const auto result =
            m_host->run({QStringLiteral("open"), QStringLiteral("vendelplugin://run/%1").arg(id)});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("exit status 4")), qPrintable(result.err));
    }

    void pluginsAreListedByNameAndExecutable()
    {
        QCOMPARE(m_host->run({QStringLiteral("plugins")}).out, QString());
        installStub(stub);
        const auto result = m_host->run({QStringLiteral("plugins")});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, QStringLiteral("stub\tstub\tapplication-x-executable\t%1\n").arg(stub));
        HostStorage(dataDirectory())
            .recordPlugin({QStringLiteral("music"), QStringLiteral("/opt/music"),
                           QStringLiteral("Vendel Music"), QStringLiteral("vendel-music")});
        QCOMPARE(
            m_host->run({QStringLiteral("plugins")}).out,
            QStringLiteral(
                "music\tVendel Music\tvendel-music\t/opt/music\nstub\tstub\tapplication-x-executable\t%1\n")
                .arg(stub));
        const QJsonArray list =
            QJsonDocument::fromJson(
                m_host->run({QStringLiteral("plugins"), QStringLiteral("--json")}).out.toUtf8())
                .array();
        QCOMPARE(list.at(0).toObject(),
                 (QJsonObject{{QStringLiteral("name"), QStringLiteral("music")},
                              {QStringLiteral("displayName"), QStringLiteral("Vendel Music")},
                              {QStringLiteral("icon"), QStringLiteral("vendel-music")},
                              {QStringLiteral("path"), QStringLiteral("/opt/music")}}));
    }

    void forgedNamesStayInTheirRowAndColumn()
    {
        installStub(stub);
        HostStorage data(dataDirectory());
        const QString forgedName = QStringLiteral("evil\nstub\t/usr/bin/x\r\x01\x7f\u0085\u2028");
        data.recordPlugin({forgedName, QStringLiteral("/opt/evil")});
        const QString id = data.createAction(stubName);
        const QString evil = data.createAction(forgedName);
        // A raw line break between JSON tokens is valid JSON, so a configuration can hold one too.
        const QString config = QStringLiteral("{\"a\":\n1,\t\"b\":\"x\\ty\"}");
        QVERIFY(data.setConfig(id, config));
        data.addResources(
            {{QStringLiteral("file"), QStringLiteral("Docs\nfile\tFake"), QStringLiteral("file:///tmp")}});

        const auto plugins = m_host->run({QStringLiteral("plugins")});
        QCOMPARE(plugins.exitCode, 0);
        const QString shown = QStringLiteral("evil\\nstub\\t/usr/bin/x\\r\\x01\\x7f\\u0085\\u2028");
        QCOMPARE(plugins.out, QStringLiteral("%1\t%1\tapplication-x-executable\t/opt/evil\n"
                                             "stub\tstub\tapplication-x-executable\t%2\n")
                                  .arg(shown, stub));
        QCOMPARE(m_host->run({QStringLiteral("actions")}).out,
                 QStringLiteral("%1\tstub 1\tstub\t1\t{\"a\":\\n1,\\t\"b\":\"x\\ty\"}\n%2\t%3 1\t%3\t1\t\n")
                     .arg(id, evil, shown));
        // A menu line is one title and one identifier, whatever the plugin's name.
        QCOMPARE(m_host->run({QStringLiteral("actions"), QStringLiteral("--menu")}).out,
                 QStringLiteral("%1 1\t%2\nstub 1\t%3\n").arg(shown, evil, id));
        QCOMPARE(m_host->run({QStringLiteral("resources")}).out,
                 QStringLiteral("file\tDocs\\nfile\\tFake\tfile:///tmp\n"));

        // The JSON form gives each text back exactly.
        const auto parse = [](const QString& out) { return QJsonDocument::fromJson(out.toUtf8()).array(); };
        const QJsonArray pluginList =
            parse(m_host->run({QStringLiteral("plugins"), QStringLiteral("--json")}).out);
        QCOMPARE(pluginList.size(), 2);
        QCOMPARE(pluginList.at(0).toObject().value(QStringLiteral("name")).toString(), forgedName);
        QCOMPARE(pluginList.at(0).toObject().value(QStringLiteral("path")).toString(),
                 QStringLiteral("/opt/evil"));
        QCOMPARE(pluginList.at(1).toObject().value(QStringLiteral("name")).toString(), stubName);
        const QJsonArray actionList =
            parse(m_host->run({QStringLiteral("actions"), QStringLiteral("--json")}).out);
        QCOMPARE(actionList.size(), 2);
        QCOMPARE(actionList.at(1).toObject().value(QStringLiteral("title")).toString(),
                 forgedName + QStringLiteral(" 1"));
        QCOMPARE(actionList.at(0).toObject().value(QStringLiteral("number")), QJsonValue(1));
        QCOMPARE(actionList.at(0).toObject().value(QStringLiteral("id")).toString(), id);
        QCOMPARE(actionList.at(0).toObject().value(QStringLiteral("plugin")).toString(), stubName);
        QCOMPARE(actionList.at(0).toObject().value(QStringLiteral("config")).toString(), config);
        const QJsonArray resourceList =
            parse(m_host->run({QStringLiteral("resources"), QStringLiteral("--json")}).out);
        QCOMPARE(resourceList.size(), 1);
        QCOMPARE(resourceList.at(0).toObject().value(QStringLiteral("name")).toString(),
                 QStringLiteral("Docs\nfile\tFake"));
        QCOMPARE(resourceList.at(0).toObject().value(QStringLiteral("type")).toString(),
                 QStringLiteral("file"));
        QCOMPARE(resourceList.at(0).toObject().value(QStringLiteral("url")).toString(),
                 QStringLiteral("file:///tmp"));
        // Nothing listed is still an array.
        QCOMPARE(HostProcess(m_directory->filePath(QStringLiteral("empty")))
                     .run({QStringLiteral("actions"), QStringLiteral("--json")})
                     .out.trimmed()
                     .remove(u'\n')
                     .remove(u' '),
                 QStringLiteral("[]"));
    }

    void openAddsResourcesAndRefusesMalformedUrls()
    {
        const QString url =
            QStringLiteral("vendel://add-resources/"
                           "%5B%7B%22type%22:%22folder%22,%22name%22:%22Docs%22,%22url%22:%22file:%5C/%5C/"
                           "%5C/tmp%5C/docs%22%7D%5D");
        const auto added = m_host->run({QStringLiteral("open"), url});
        QCOMPARE(added.exitCode, 0);
        QCOMPARE(added.out, QStringLiteral("Added folder \"Docs\": file:///tmp/docs\n"));

        const auto malformed =
            m_host->run({QStringLiteral("open"), QStringLiteral("vendel://add-resources/%5B%7B")});
        QCOMPARE(malformed.exitCode, 1);
        QVERIFY2(malformed.err.contains(QStringLiteral("not JSON")), qPrintable(malformed.err));
        const auto unknown = m_host->run({QStringLiteral("open"), QStringLiteral("vendel://ping/x")});
        QCOMPARE(unknown.exitCode, 1);
        QVERIFY2(unknown.err.contains(QStringLiteral("Unknown command \"ping\"")), qPrintable(unknown.err));

        QCOMPARE(m_host->run({QStringLiteral("resources")}).out,
                 QStringLiteral("folder\tDocs\tfile:///tmp/docs\n"));
    }

    void openRefusesScriptUrlsAndStoresNothingOfTheList()
    {
        const QByteArray list = "[{\"type\":\"folder\",\"name\":\"Docs\",\"url\":\"file:///tmp/docs\"},"
                                "{\"type\":\"website\",\"name\":\"Site\",\"url\":\"JavaScript:alert(1)\"},"
                                "{\"type\":\"url\",\"name\":\"Page\",\"url\":\" DATA:text/html,x\"},"
                                "{\"type\":\"file\",\"name\":\"Old\",\"url\":\"vbScript:x\"}]";
        const auto result =
            m_host->run({QStringLiteral("open"), QStringLiteral("vendel://add-resources/") +
                                                     QString::fromLatin1(list.toPercentEncoding())});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(
                     QStringLiteral("Resource 2 (\"Site\"): \"JavaScript:alert(1)\" is a javascript: URL")),
                 qPrintable(result.err));
        QVERIFY2(result.err.contains(
                     QStringLiteral("Resource 3 (\"Page\"): \" DATA:text/html,x\" is a data: URL")),
                 qPrintable(result.err));
        QVERIFY2(
            result.err.contains(QStringLiteral("Resource 4 (\"Old\"): \"vbScript:x\" is a vbscript: URL")),
            qPrintable(result.err));
        QVERIFY(!result.err.contains(QStringLiteral("Docs")));
        QVERIFY(result.out.isEmpty());
        QCOMPARE(m_host->run({QStringLiteral("resources")}).out, QString());
    }

    void anUnusableDataFolderIsReported()
    {
        const QString file = m_directory->filePath(QStringLiteral("file"));
        QFile(file).open(QIODevice::WriteOnly);
        HostProcess host(file);
        for (const QStringList& arguments :
             {QStringList{QStringLiteral("actions")}, QStringList{QStringLiteral("serve")},
              QStringList{QStringLiteral("config"), QStringLiteral("set"), QStringLiteral("x"),
                          QStringLiteral("{}")}}) {
            const auto result = host.run(arguments);
            QCOMPARE(result.exitCode, 1);
            QVERIFY2(result.err.contains(QStringLiteral("Cannot use the data folder %1").arg(file)),
                     qPrintable(result.err));
        }
    }

    void anotherUserCannotReadTheData()
    {
        // Under the usual umask, files would be readable by all; the host's are not.
        const mode_t previousMask = ::umask(022);
        const auto added =
            m_host->run({QStringLiteral("open"), QStringLiteral("vendel://add-resources/%5B%5D")});
        ::umask(previousMask);
        QCOMPARE(added.exitCode, 0);
        // The temporary folder above is open to all, so only the host's own permissions stand in the way.
        QVERIFY(QFile::setPermissions(m_directory->path(), QFile::ReadOwner | QFile::WriteOwner |
                                                               QFile::ExeOwner | QFile::ReadOther |
                                                               QFile::ExeOther));
        const auto [host, prefix] = asNobody();
        if (prefix.isEmpty()) {
            QSKIP("Only root can become another user here.");
        }
        const auto listed = host->run({QStringLiteral("actions")}, prefix);
        QCOMPARE(listed.exitCode, 1);
        QVERIFY2(listed.err.contains(QStringLiteral("Cannot read the data folder %1").arg(dataDirectory())),
                 qPrintable(listed.err));
        QProcess reader;
        reader.start(prefix.constFirst(),
                     prefix.mid(1) + QStringList{QStringLiteral("cat"),
                                                 dataDirectory() + QStringLiteral("/host.sqlite")});
        QVERIFY(reader.waitForFinished());
        QVERIFY(reader.exitCode() != 0);
        QVERIFY(reader.readAllStandardOutput().isEmpty());
    }

    void configGetAnswersWhileAnotherProcessHoldsTheWriteLock()
    {
        const QString id = newAction();
        storage().setConfig(id, QStringLiteral("{\"action\":1}"));
        DatabaseLock lock(dataDirectory() + QStringLiteral("/host.sqlite"), DatabaseLock::Kind::Write);
        QVERIFY(lock.isHeld());
        const auto result = m_host->run({QStringLiteral("config"), QStringLiteral("get"), id});
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        QCOMPARE(result.out, QStringLiteral("{\"action\":1}\n"));
    }

    void readingCommandsWorkOnAFolderTheUserMayOnlyRead()
    {
        const QString id = newAction();
        storage().setConfig(id, QStringLiteral("{\"action\":1}"));
        QVERIFY(makeDataReadOnly());
        const auto [host, prefix] = asNobody();
        const auto restore = qScopeGuard([this] { makeDataWritable(); });

        const auto get = host->run({QStringLiteral("config"), QStringLiteral("get"), id}, prefix);
        QVERIFY2(get.exitCode == 0, qPrintable(get.err));
        QCOMPARE(get.out, QStringLiteral("{\"action\":1}\n"));
        for (const char* command : {"actions", "plugins", "resources"}) {
            const auto listed = host->run({QString::fromLatin1(command)}, prefix);
            QVERIFY2(listed.exitCode == 0, qPrintable(listed.err));
        }
        QCOMPARE(host->run({QStringLiteral("actions")}, prefix).out,
                 QStringLiteral("%1\tstub 1\tstub\t1\t{\"action\":1}\n").arg(id));
        // Reading left nothing behind in the folder.
        QCOMPARE(QDir(dataDirectory()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("host.sqlite")});
    }

    void anUnwritableDatabaseIsReportedAndLosesNothing()
    {
        const QString id = newAction();
        QCOMPARE(
            m_host
                ->run({QStringLiteral("config"), QStringLiteral("set"), id, QStringLiteral("{\"action\":1}")})
                .exitCode,
            0);
        const QString database = dataDirectory() + QStringLiteral("/host.sqlite");

        QVERIFY(makeDataReadOnly());
        const auto [host, prefix] = asNobody();
        const auto result = host->run(
            {QStringLiteral("config"), QStringLiteral("set"), id, QStringLiteral("{\"action\":0}")}, prefix);
        QVERIFY(makeDataWritable());

        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(database), qPrintable(result.err));
        QCOMPARE(storage().action(id)->config, QStringLiteral("{\"action\":1}"));
    }

private:
    static QString readmeMenuLine()
    {
        QFile readme(QStringLiteral(VENDEL_SOURCE_DIR "/README.md"));
        if (!readme.open(QIODevice::ReadOnly)) {
            return {};
        }
        for (const QString& line : QString::fromUtf8(readme.readAll()).split(u'\n')) {
            if (line.contains(QStringLiteral("--menu |"))) {
                return line.trimmed();
            }
        }
        return {};
    }

    QString dataDirectory() const { return m_directory->filePath(QStringLiteral("data")); }
    QString recordPath() const { return m_directory->filePath(QStringLiteral("record")); }

    QString record() const
    {
        QFile file(recordPath());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    // Opened for each look, so that no connection of the test's is open while the host runs.
    HostStorage storage() const { return HostStorage(dataDirectory()); }

    // The data as others may see it: folders to look into, nothing to write.
    bool makeDataReadOnly() const
    {
        const QFile::Permissions look =
            QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
        return QFile::setPermissions(m_directory->path(), look | QFile::WriteOwner) &&
               QFile::setPermissions(dataDirectory(), look) &&
               QFile::setPermissions(dataDirectory() + QStringLiteral("/host.sqlite"),
                                     QFile::ReadOwner | QFile::ReadOther);
    }

    bool makeDataWritable() const
    {
        return QFile::setPermissions(dataDirectory(),
                                     QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
               QFile::setPermissions(dataDirectory() + QStringLiteral("/host.sqlite"),
                                     QFile::ReadOwner | QFile::WriteOwner);
    }

    // A host for a user other than the owner of the data: root reads and writes whatever the permissions
    // say, so as root the commands run as nobody instead, from a copy of the executable that nobody can
    // reach. The prefix goes before each command line.
    std::pair<std::unique_ptr<HostProcess>, QStringList> asNobody() const
    {
        auto host = std::make_unique<HostProcess>(dataDirectory());
        QStringList prefix;
        if (::geteuid() == 0) {
            prefix = {QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
                      QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups")};
            const QString copy = m_directory->filePath(QStringLiteral("vendel-host"));
            if (!QFileInfo::exists(copy)) {
                QFile::copy(HostProcess::executable(), copy);
            }
            host->setExecutable(copy);
        }
        return {std::move(host), prefix};
    }

    void installStub(const QString& path) { HostStorage(dataDirectory()).recordPlugin({stubName, path}); }

    QString newAction()
    {
        installStub(stub);
        return HostStorage(dataDirectory()).createAction(stubName);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<HostProcess> m_host;
};

QTEST_GUILESS_MAIN(HostCliTest)
#include "HostCliTest.moc"
