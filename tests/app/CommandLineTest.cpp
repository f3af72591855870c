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
        const auto line =
            CommandLine::parse({QStringLiteral("--frobnicate")}, CommandLine::Conventions::qtOnly);
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

    void qtOptionsArePassedOverWithTheirValues_data()
    {
        QTest::addColumn<QStringList>("arguments");
        const QString url = QStringLiteral("vendelplugin://run/A");
        QTest::newRow("-platform") << QStringList{QStringLiteral("-platform"), QStringLiteral("offscreen"),
                                                  url};
        QTest::newRow("--platform") << QStringList{QStringLiteral("--platform"), QStringLiteral("xcb"), url};
        QTest::newRow("-platform name:options")
            << QStringList{QStringLiteral("-platform"), QStringLiteral("xcb:nograb"), url};
        QTest::newRow("-style") << QStringList{url, QStringLiteral("-style"), QStringLiteral("fusion")};
        QTest::newRow("-style=") << QStringList{QStringLiteral("-style=fusion"), url};
        QTest::newRow("-stylesheet") << QStringList{QStringLiteral("-stylesheet"), QStringLiteral("a.qss"),
                                                    url};
        QTest::newRow("-reverse") << QStringList{QStringLiteral("-reverse"), url};
        QTest::newRow("-widgetcount") << QStringList{url, QStringLiteral("-widgetcount")};
        QTest::newRow("-session") << QStringList{QStringLiteral("-session"), QStringLiteral("1_2"), url};
        QTest::newRow("-qwindowtitle with spaces")
            << QStringList{QStringLiteral("-qwindowtitle"), QStringLiteral("A title"), url};
        QTest::newRow("-qwindowgeometry")
            << QStringList{QStringLiteral("-qwindowgeometry"), QStringLiteral("100x100+0+0"), url};
        QTest::newRow("-qwindowicon")
            << QStringList{QStringLiteral("-qwindowicon"), QStringLiteral("i.png"), url};
        QTest::newRow("-platformpluginpath")
            << QStringList{QStringLiteral("-platformpluginpath"), QStringLiteral("/p"), url};
        QTest::newRow("-platformtheme")
            << QStringList{QStringLiteral("-platformtheme"), QStringLiteral("gtk3"), url};
        QTest::newRow("-plugin") << QStringList{QStringLiteral("-plugin"), QStringLiteral("evdevtouch"), url};
        QTest::newRow("-qmljsdebugger=") << QStringList{QStringLiteral("-qmljsdebugger=port:3768"), url};
        QTest::newRow("-display") << QStringList{QStringLiteral("-display"), QStringLiteral(":1"), url};
        QTest::newRow("-geometry") << QStringList{QStringLiteral("-geometry"), QStringLiteral("640x480"),
                                                  url};
    }

    void qtOptionsArePassedOverWithTheirValues()
    {
        QFETCH(QStringList, arguments);
        for (const auto conventions :
             {CommandLine::Conventions::qtOnly, CommandLine::Conventions::qtAndMacOS}) {
            const auto line = CommandLine::parse(arguments, conventions);
            QCOMPARE(line.request, CommandLine::Request::launch);
            QCOMPARE(line.url, std::optional<QString>(QStringLiteral("vendelplugin://run/A")));
        }
    }

    void qtOptionWithoutItsValueIsAUsageError()
    {
        const auto line = CommandLine::parse({QStringLiteral("-style")}, CommandLine::Conventions::qtOnly);
        QCOMPARE(line.request, CommandLine::Request::usageError);
        QVERIFY(line.error.contains(QStringLiteral("-style")));
    }

    void qtOptionWithoutValueTakesNoValueAttached()
    {
        const auto line =
            CommandLine::parse({QStringLiteral("-reverse=yes")}, CommandLine::Conventions::qtOnly);
        QCOMPARE(line.request, CommandLine::Request::usageError);
    }

    void macOSArgumentsArePassedOver()
    {
        const auto line = CommandLine::parse(
            {QStringLiteral("-psn_0_12345"), QStringLiteral("-NSDocumentRevisionsDebugMode"),
             QStringLiteral("YES"), QStringLiteral("-AppleLanguages"), QStringLiteral("(de)"),
             QStringLiteral("-SUEnableAutomaticChecks"), QStringLiteral("NO"),
             QStringLiteral("vendelplugin://edit/B")},
            CommandLine::Conventions::qtAndMacOS);
        QCOMPARE(line.request, CommandLine::Request::launch);
        QCOMPARE(line.url, std::optional<QString>(QStringLiteral("vendelplugin://edit/B")));
    }

    void macOSUserDefaultsAreUnknownOptionsElsewhere_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::newRow("process serial number") << QStringLiteral("-psn_0_12345");
        QTest::newRow("user default") << QStringLiteral("-SUEnableAutomaticChecks");
        QTest::newRow("system default") << QStringLiteral("-NSDocumentRevisionsDebugMode");
    }

    void macOSUserDefaultsAreUnknownOptionsElsewhere()
    {
        QFETCH(QString, argument);
        const auto line =
            CommandLine::parse({argument, QStringLiteral("NO")}, CommandLine::Conventions::qtOnly);
        QCOMPARE(line.request, CommandLine::Request::usageError);
        QVERIFY(line.error.contains(argument));
    }

    void ourOwnOptionsWinOverUserDefaults()
    {
        QCOMPARE(CommandLine::parse({QStringLiteral("-h")}, CommandLine::Conventions::qtAndMacOS).request,
                 CommandLine::Request::help);
        QCOMPARE(
            CommandLine::parse({QStringLiteral("--version")}, CommandLine::Conventions::qtAndMacOS).request,
            CommandLine::Request::version);
    }

    void unknownDoubleDashOptionIsAUsageErrorOnMacOSToo()
    {
        const auto line =
            CommandLine::parse({QStringLiteral("--frobnicate")}, CommandLine::Conventions::qtAndMacOS);
        QCOMPARE(line.request, CommandLine::Request::usageError);
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
