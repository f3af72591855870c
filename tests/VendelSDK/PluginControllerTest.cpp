// Tests dispatch of launch URLs to handlers, the performed-action flag and the fatal defaults.
#include <VendelSDK/PluginController.h>

#include <QProcess>
#include <QTest>

using namespace VendelSDK;

namespace {

struct Calls
{
    QStringList runs;
    QStringList edits;
    int configures = 0;
    QList<std::optional<QString>> runCommands;
};

void assignRecordingHandlers(PluginController& controller, Calls& calls)
{
    controller.onRun = [&calls](const QString& id) { calls.runs.append(id); };
    controller.onEdit = [&calls](const QString& id) { calls.edits.append(id); };
    controller.onConfigure = [&calls] { ++calls.configures; };
    controller.onRunCommand = [&calls](const std::optional<QString>& id) { calls.runCommands.append(id); };
}

} // namespace

class PluginControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runUrlCallsRunHandlerWithIdentifier()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://run/ABC")));
        QCOMPARE(calls.runs, QStringList{QStringLiteral("ABC")});
        QVERIFY(calls.edits.isEmpty());
        QVERIFY(controller.didPerformAction);
    }

    void editUrlCallsEditHandlerWithIdentifier()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://edit/X%20Y")));
        QCOMPARE(calls.edits, QStringList{QStringLiteral("X Y")});
        QVERIFY(calls.runs.isEmpty());
        QVERIFY(controller.didPerformAction);
    }

    void configureIgnoresAnyIdentifier()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://configure/anything")));
        QCOMPARE(calls.configures, 1);
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://configure")));
        QCOMPARE(calls.configures, 2);
        QVERIFY(controller.didPerformAction);
    }

    void runCommandReceivesAbsentOrPresentIdentifier()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://runCommand")));
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://runCommand/abc")));
        QCOMPARE(calls.runCommands.size(), 2);
        QVERIFY(!calls.runCommands.at(0).has_value());
        QCOMPARE(calls.runCommands.at(1), std::optional<QString>(QStringLiteral("abc")));
    }

    void capitalisedVerbRunsNoHandlerAndKeepsFlag()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        QVERIFY(!controller.handle(QStringLiteral("vendelplugin://Run/X")));
        QVERIFY(!controller.didPerformAction);
        controller.didPerformAction = true;
        QVERIFY(!controller.handle(QStringLiteral("vendelplugin://Run/X")));
        QVERIFY(controller.didPerformAction);
        QVERIFY(calls.runs.isEmpty());
    }

    void unknownVerbRunsNoHandlerAndKeepsFlag()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        controller.didPerformAction = true;
        QVERIFY(!controller.handle(QStringLiteral("vendelplugin://delete/X")));
        QVERIFY(controller.didPerformAction);
        QVERIFY(calls.runs.isEmpty() && calls.edits.isEmpty() && calls.configures == 0);
    }

    void runOrEditWithoutIdentifierClearsFlag()
    {
        for (const auto text : {u"vendelplugin://run", u"vendelplugin://edit/a/b"}) {
            PluginController controller;
            Calls calls;
            assignRecordingHandlers(controller, calls);
            controller.didPerformAction = true;
            QVERIFY(!controller.handle(QString::fromUtf16(text)));
            QVERIFY(!controller.didPerformAction);
            QVERIFY(calls.runs.isEmpty() && calls.edits.isEmpty());
        }
    }

    void eventWithoutUrlTextIsIgnored()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        controller.didPerformAction = true;
        QVERIFY(!controller.handle(std::nullopt));
        QVERIFY(!controller.handle(QString()));
        QVERIFY(!controller.handle(QStringLiteral("not a url at all")));
        QVERIFY(!controller.handle(QStringLiteral("https://run/X")));
        QVERIFY(controller.didPerformAction);
        QVERIFY(calls.runs.isEmpty());
    }

    void flagStaysSetAfterLaterIgnoredEvents()
    {
        PluginController controller;
        Calls calls;
        assignRecordingHandlers(controller, calls);
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://edit/A")));
        QVERIFY(!controller.handle(QStringLiteral("garbage")));
        QVERIFY(controller.didPerformAction);
    }

    void handlerMayReplaceItselfWhileRunning()
    {
        PluginController controller;
        int first = 0;
        int second = 0;
        controller.onRun = [&](const QString&) {
            ++first;
            controller.onRun = [&](const QString&) { ++second; };
        };
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://run/A")));
        QVERIFY(controller.handle(QStringLiteral("vendelplugin://run/A")));
        QCOMPARE(first, 1);
        QCOMPARE(second, 1);
    }

    void unassignedHandlersStopWithTheirMessageAndLine_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("report");
        QTest::newRow("run") << QStringLiteral("vendelplugin://run/A")
                             << QStringLiteral("Fatal error: Run action not implemented yet.: file "
                                               "VendelSDK/PluginController, line 26");
        QTest::newRow("edit") << QStringLiteral("vendelplugin://edit/A")
                              << QStringLiteral("Fatal error: Edit action not implemented yet.: file "
                                                "VendelSDK/PluginController, line 30");
        QTest::newRow("configure") << QStringLiteral("vendelplugin://configure")
                                   << QStringLiteral(
                                          "Fatal error: Edit Global Configuration action not "
                                          "implemented yet.: file VendelSDK/PluginController, line 34");
        QTest::newRow("runCommand") << QStringLiteral("vendelplugin://runCommand")
                                    << QStringLiteral(
                                           "Fatal error: Edit Global Configuration action not "
                                           "implemented yet.: file VendelSDK/PluginController, line 38");
    }

    void unassignedHandlersStopWithTheirMessageAndLine()
    {
        QFETCH(QString, url);
        QFETCH(QString, report);
        QProcess probe;
        probe.start(QStringLiteral(PLUGIN_CONTROLLER_PROBE), {url});
        QVERIFY(probe.waitForFinished(30000));
        QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
        const QString standardError = QString::fromUtf8(probe.readAllStandardError());
        QVERIFY2(standardError.contains(report), qPrintable(standardError));
    }

    void runCommandDefaultWritesAPendingChangeOnceThenStops()
    {
        QProcess probe;
        probe.start(QStringLiteral(PLUGIN_CONTROLLER_PROBE),
                    {QStringLiteral("vendelplugin://runCommand/x"), QStringLiteral("pending-write")});
        QVERIFY(probe.waitForFinished(30000));
        QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
        const QString standardError = QString::fromUtf8(probe.readAllStandardError());
        const QString write = QStringLiteral("script:     tell application \"Vendel\" to set config "
                                             "\"{\\\"count\\\":77,\\\"text\\\":\\\"\\\"}\" "
                                             "action \"P-1\"\n");
        const auto written = standardError.indexOf(write);
        const auto report = standardError.indexOf(
            QStringLiteral("Fatal error: Edit Global Configuration action not implemented yet.: file "
                           "VendelSDK/PluginController, line 38"));
        QVERIFY2(written >= 0, qPrintable(standardError));
        QVERIFY2(report > written, qPrintable(standardError));
        QCOMPARE(standardError.count(QStringLiteral("set config")), 1);
    }

    void ignoredEventDoesNotReachFatalDefault()
    {
        QProcess probe;
        probe.start(QStringLiteral(PLUGIN_CONTROLLER_PROBE), {QStringLiteral("vendelplugin://run")});
        QVERIFY(probe.waitForFinished(30000));
        QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
        QCOMPARE(probe.exitCode(), 3);
    }
};

QTEST_GUILESS_MAIN(PluginControllerTest)
#include "PluginControllerTest.moc"
