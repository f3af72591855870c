// Tests the plugin's command line: the launch URL, help, version, the system's own arguments and mistakes.
#include "CommandLine.h"

#include <QTest>

using namespace MusicPlugin;

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noArgumentIsALaunchWithoutUrl()
    {
        const auto line = CommandLine::parse({});
        QCOMPARE(line.request, CommandLine::Request::launch);
        QCOMPARE(line.url, std::nullopt);
    }

    void launchUrlIsTakenAsItStands()
    {
        const auto line = CommandLine::parse({QStringLiteral("VENDELPLUGIN://Run/X")});
        QCOMPARE(line.request, CommandLine::Request::launch);
        QCOMPARE(line.url, std::optional<QString>(QStringLiteral("VENDELPLUGIN://Run/X")));
    }

    void helpAndVersionAreAskedFor()
    {
        QCOMPARE(CommandLine::parse({QStringLiteral("--help")}).request, CommandLine::Request::help);
        QCOMPARE(CommandLine::parse({QStringLiteral("-h")}).request, CommandLine::Request::help);
        QCOMPARE(CommandLine::parse({QStringLiteral("--version")}).request, CommandLine::Request::version);
    }

    void unknownOptionIsAUsageErrorNamingIt()
    {
        const auto line = CommandLine::parse({QStringLiteral("--frobnicate")});
        QCOMPARE(line.request, CommandLine::Request::usageError);
        QVERIFY(line.error.contains(QStringLiteral("--frobnicate")));
        QCOMPARE(CommandLine::parse({QStringLiteral("-")}).request, CommandLine::Request::usageError);
    }

    void secondUrlIsAUsageError()
    {
        const auto line = CommandLine::parse(
            {QStringLiteral("vendelplugin://run/A"), QStringLiteral("vendelplugin://run/B")});
        QCOMPARE(line.request, CommandLine::Request::usageError);
    }

    void systemArgumentsArePassedOver()
    {
        const auto line = CommandLine::parse(
            {QStringLiteral("-psn_0_12345"), QStringLiteral("-NSDocumentRevisionsDebugMode"),
             QStringLiteral("YES"), QStringLiteral("-AppleLanguages"), QStringLiteral("(de)")});
        QCOMPARE(line.request, CommandLine::Request::launch);
        QCOMPARE(line.url, std::nullopt);
    }

    void helpNamesTheLaunchUrlsAndOptions()
    {
        const QString help = CommandLine::help(QStringLiteral("vendel-music-plugin"));
        QVERIFY(help.startsWith(QStringLiteral("Usage: vendel-music-plugin ")));
        for (const char* part : {"vendelplugin://run/<id>", "vendelplugin://edit/<id>",
                                 "vendelplugin://configure", "--help", "--version"}) {
            QVERIFY2(help.contains(QLatin1String(part)), part);
        }
    }

    void versionIsProgramThenVersion()
    {
        QCOMPARE(CommandLine::version(QStringLiteral("vendel-music-plugin"), QStringLiteral("1.2"),
                                      QStringLiteral("34")),
                 QStringLiteral("vendel-music-plugin 1.2 (build 34)\n"));
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
