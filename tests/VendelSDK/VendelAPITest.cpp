// Tests the host commands byte for byte, the escaping of configuration texts, and reading answers.
#include <VendelSDK/Error.h>
#include <VendelSDK/VendelAPI.h>

#include "ErrorCode.h"
#include "TestPlatform.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

class VendelAPITest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachOperationSendsItsExactCommand_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<QString>("command");
        QTest::newRow("getGlobalConfig")
            << 1
            << QStringLiteral(
                   "    tell application \"Vendel\" to get global config \"org.vendel.test-plugin\"");
        QTest::newRow("setGlobalConfig")
            << 2
            << QStringLiteral("    tell application \"Vendel\" to set global config "
                              "\"{\\\"k\\\":1}\" action bundle id "
                              "\"org.vendel.test-plugin\"");
        QTest::newRow("getConfig") << 3
                                   << QStringLiteral("    tell application \"Vendel\" to get config \"A-1\"");
        QTest::newRow("setConfig")
            << 4
            << QStringLiteral(
                   "    tell application \"Vendel\" to set config \"{\\\"k\\\":1}\" action \"A-1\"");
        QTest::newRow("getPluginFolderPath")
            << 5 << QStringLiteral("    tell application \"Vendel\" to get plugin folder path");
        QTest::newRow("getPathOfPlugin")
            << 6
            << QStringLiteral("    tell application \"Vendel\" to get path of plugin \"org.vendel.other\"");
        QTest::newRow("isPluginInstalled")
            << 7
            << QStringLiteral("    tell application \"Vendel\" to get is plugin "
                              "installed at path \"/opt/vendel/plugins/test-plugin\"");
        QTest::newRow("installPlugin")
            << 8 << QStringLiteral("    tell application \"Vendel\" to install plugin");
    }

    void eachOperationSendsItsExactCommand()
    {
        QFETCH(int, operation);
        QFETCH(QString, command);
        TestPlatform platform;
        platform.engine->fallback = QStringLiteral("true");
        VendelAPI api;
        const QString config = QStringLiteral("{\"k\":1}");
        switch (operation) {
        case 1:
            api.getGlobalConfig();
            break;
        case 2:
            api.setGlobalConfig(config);
            break;
        case 3:
            api.getConfig(QStringLiteral("A-1"));
            break;
        case 4:
            api.setConfig(config, QStringLiteral("A-1"));
            break;
        case 5:
            api.getPluginFolderPath();
            break;
        case 6:
            api.getPathOfPlugin(QStringLiteral("org.vendel.other"));
            break;
        case 7:
            api.isPluginInstalled(QStringLiteral("/opt/vendel/plugins/test-plugin"));
            break;
        case 8:
            api.installPlugin();
            break;
        }
        QCOMPARE(platform.engine->sources, QStringList{command});
        QCOMPARE(platform.engine->sources.constFirst().toUtf8(), command.toUtf8());
    }

    void quoteInConfigurationIsSentAsBackslashQuote()
    {
        TestPlatform platform;
        VendelAPI().setConfig(QStringLiteral("{\"name\":\"My \\\"Best\\\"\"}"), QStringLiteral("A"));
        // JSON {"name":"My \"Best\""}: each \ doubled, then each " preceded by a backslash.
        QCOMPARE(platform.engine->sources.constFirst(),
                 QStringLiteral("    tell application \"Vendel\" to set config "
                                "\"{\\\"name\\\":\\\"My \\\\\\\"Best\\\\\\\"\\\"}\" action \"A\""));
    }

    void backslashQuoteBecomesTwoBackslashesThenBackslashQuote()
    {
        QCOMPARE(VendelAPI::escaped(QStringLiteral("\\\"")), QStringLiteral("\\\\\\\""));
        QCOMPARE(VendelAPI::escaped(QStringLiteral("\\\"")).size(), 4);
        QCOMPARE(VendelAPI::escaped(QStringLiteral("a\\b")), QStringLiteral("a\\\\b"));
        QCOMPARE(VendelAPI::escaped(QStringLiteral("plain")), QStringLiteral("plain"));
    }

    void escapingGivesWhatTheTwoReplacementsInTurnGiveOnRandomTexts()
    {
        // Mostly backslashes and quotes, in runs and alone, among ASCII, other scripts, surrogate pairs and
        // stray surrogate halves; a fixed seed keeps a failure reproducible.
        const QString alphabet =
            QStringLiteral("\\\"\\\"a \n{}:é\u2028\U0001F3B5") + QChar(0xD800) + QChar(0xDC00);
        QRandomGenerator random(20261123);
        for (int round = 0; round < 2000; ++round) {
            QString text;
            const int length = int(random.bounded(round < 1000 ? 16 : 400));
            for (int i = 0; i < length; ++i) {
                text.append(alphabet.at(random.bounded(int(alphabet.size()))));
            }
            QString twoSteps = text;
            twoSteps.replace(u'\\', QStringLiteral("\\\\"));
            twoSteps.replace(u'"', QStringLiteral("\\\""));
            const QString escaped = VendelAPI::escaped(text);
            QVERIFY2(escaped == twoSteps, qPrintable(QStringLiteral("round %1: %2").arg(round).arg(text)));
            QCOMPARE(escaped.toUtf8(), twoSteps.toUtf8());
        }
    }

    void escapingEmptyAndUnescapedTextsGivesThemBack()
    {
        QCOMPARE(VendelAPI::escaped(QString()), QString());
        QCOMPARE(VendelAPI::escaped(QStringLiteral("{}")), QStringLiteral("{}"));
        QCOMPARE(VendelAPI::escaped(QString(5, u'"')), QStringLiteral("\\\"\\\"\\\"\\\"\\\""));
    }

    void globalConfigEscapesOnlyTheConfiguration()
    {
        TestPlatform platform;
        VendelAPI().setGlobalConfig(QStringLiteral("\\"));
        QCOMPARE(
            platform.engine->sources.constFirst(),
            QStringLiteral("    tell application \"Vendel\" to set global config \"\\\\\" action bundle id "
                           "\"org.vendel.test-plugin\""));
    }

    void emptyConfigAnswerIsReturnedAsEmptyText()
    {
        TestPlatform platform;
        platform.engine->answers = {QString()};
        const QString config = VendelAPI().getConfig(QStringLiteral("new"));
        QVERIFY(config.isEmpty());
        QCOMPARE(platform.engine->sources.size(), 1);
    }

    void readingCommandsWithoutAnswerThrowCodeTwo()
    {
        TestPlatform platform;
        platform.engine->fallback = ScriptNoResult{};
        VendelAPI api;
        QCOMPARE(errorCodeOf([&] { api.getConfig(QStringLiteral("A")); }), 2);
        QCOMPARE(errorCodeOf([&] { api.getGlobalConfig(); }), 2);
        QCOMPARE(errorCodeOf([&] { api.getPluginFolderPath(); }), 2);
        QCOMPARE(errorCodeOf([&] { api.isPluginInstalled(QStringLiteral("/p")); }), 2);
        try {
            api.getConfig(QStringLiteral("A"));
        } catch (const Error& error) {
            QCOMPARE(error.localizedDescription(), QStringLiteral("Could not read data from script output"));
            QCOMPARE(error.localizedFailureReason(), QString());
        }
    }

    void installedOnlyWhenAnswerIsExactlyTrue()
    {
        TestPlatform platform;
        VendelAPI api;
        const QStringList falseAnswers{QString(),
                                       QStringLiteral("false"),
                                       QStringLiteral("True"),
                                       QStringLiteral("TRUE"),
                                       QStringLiteral(" true"),
                                       QStringLiteral("true\n"),
                                       QStringLiteral("yes")};
        for (const QString& answer : falseAnswers) {
            platform.engine->answers = {answer};
            QVERIFY2(!api.isPluginInstalled(QStringLiteral("/p")), qPrintable(answer));
        }
        platform.engine->answers = {QStringLiteral("true")};
        QVERIFY(api.isPluginInstalled(QStringLiteral("/p")));
    }

    void pathOfPluginWithoutAnswerIsNoValue()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptNoResult{}, QStringLiteral("/plugins/x")};
        VendelAPI api;
        QCOMPARE(api.getPathOfPlugin(QStringLiteral("x")), std::nullopt);
        QCOMPARE(api.getPathOfPlugin(QStringLiteral("x")),
                 std::optional<QString>(QStringLiteral("/plugins/x")));
    }

    void writingCommandsIgnoreWhateverComesBack()
    {
        TestPlatform platform;
        platform.engine->answers = {QStringLiteral("ignored"), ScriptNoResult{}, QStringLiteral("x")};
        VendelAPI api;
        api.setConfig(QStringLiteral("{}"), QStringLiteral("A"));
        api.setGlobalConfig(QStringLiteral("{}"));
        api.installPlugin();
        QCOMPARE(platform.engine->sources.size(), 3);
    }

    void everyOperationPassesOnFailedScriptAsCodeOne()
    {
        TestPlatform platform;
        platform.engine->fallback = ScriptErrorRecord{-600, QStringLiteral("not running"), std::nullopt};
        VendelAPI api;
        QCOMPARE(errorCodeOf([&] { api.getGlobalConfig(); }), 1);
        QCOMPARE(errorCodeOf([&] { api.setGlobalConfig(QStringLiteral("{}")); }), 1);
        QCOMPARE(errorCodeOf([&] { api.getConfig(QStringLiteral("A")); }), 1);
        QCOMPARE(errorCodeOf([&] { api.setConfig(QStringLiteral("{}"), QStringLiteral("A")); }), 1);
        QCOMPARE(errorCodeOf([&] { api.getPluginFolderPath(); }), 1);
        QCOMPARE(errorCodeOf([&] { api.getPathOfPlugin(QStringLiteral("p")); }), 1);
        QCOMPARE(errorCodeOf([&] { api.isPluginInstalled(QStringLiteral("/p")); }), 1);
        QCOMPARE(errorCodeOf([&] { api.installPlugin(); }), 1);
    }

    void hostileIdentifiersRunNoScriptAndThrowCodeOne_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::newRow("injection") << QStringLiteral("x\" & (do shell script \"id\") & \"");
        QTest::newRow("quote") << QStringLiteral("a\"b");
        QTest::newRow("backslash") << QStringLiteral("a\\b");
        QTest::newRow("newline") << QStringLiteral("a\nb");
        QTest::newRow("carriage return") << QStringLiteral("a\rb");
        QTest::newRow("nul") << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("b"));
        QTest::newRow("delete") << QStringLiteral("a\u007fb");
        QTest::newRow("line separator") << QStringLiteral("a\u2028b");
    }

    void hostileIdentifiersRunNoScriptAndThrowCodeOne()
    {
        QFETCH(QString, identifier);
        TestPlatform platform;
        platform.engine->fallback = QStringLiteral("true");
        VendelAPI api;
        QCOMPARE(errorCodeOf([&] { api.getConfig(identifier); }), 1);
        QCOMPARE(errorCodeOf([&] { api.setConfig(QStringLiteral("{}"), identifier); }), 1);
        QCOMPARE(errorCodeOf([&] { api.getPathOfPlugin(identifier); }), 1);
        QCOMPARE(errorCodeOf([&] { api.isPluginInstalled(identifier); }), 1);
        QVERIFY(platform.engine->sources.isEmpty());
    }

    void hostileBundleIdentifierRunsNoScript()
    {
        TestPlatform platform;
        Platform::setMainBundle(Bundle(QStringLiteral("/p"), QStringLiteral("org.x\" & \"y"), {}));
        VendelAPI api;
        QCOMPARE(errorCodeOf([&] { api.getGlobalConfig(); }), 1);
        QCOMPARE(errorCodeOf([&] { api.setGlobalConfig(QStringLiteral("{}")); }), 1);
        QVERIFY(platform.engine->sources.isEmpty());
    }

    void harmlessUnusualIdentifiersAreSentAsTheyStand()
    {
        TestPlatform platform;
        platform.engine->fallback = QStringLiteral("{}");
        VendelAPI().getConfig(QStringLiteral("Road Trip/é & 'x'"));
        QCOMPARE(platform.engine->sources.constFirst(),
                 QStringLiteral("    tell application \"Vendel\" to get config \"Road Trip/é & 'x'\""));
    }

    void pluginWithoutBundleIdentifierStopsOnGlobalConfig()
    {
        QProcess probe;
        probe.start(QStringLiteral(VENDEL_API_PROBE), {});
        QVERIFY(probe.waitForFinished(30000));
        QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
        const QString standardError = QString::fromUtf8(probe.readAllStandardError());
        QVERIFY2(standardError.contains(
                     QStringLiteral("Fatal error: The plugin application has no bundle identifier.")),
                 qPrintable(standardError));
    }

    void operationsAreOverridable()
    {
        struct CannedAPI : VendelAPI
        {
            QString getConfig(const QString&) override { return QStringLiteral("canned"); }
        };
        TestPlatform platform;
        CannedAPI canned;
        VendelAPI& api = canned;
        QCOMPARE(api.getConfig(QStringLiteral("A")), QStringLiteral("canned"));
        QVERIFY(platform.engine->sources.isEmpty());
    }
};

QTEST_GUILESS_MAIN(VendelAPITest)
#include "VendelAPITest.moc"
