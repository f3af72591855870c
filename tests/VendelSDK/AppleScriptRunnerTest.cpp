// Tests how the runner maps the engine's three outcomes to a text, no value, or the SDK error 1.
#include <VendelSDK/AppleScriptRunner.h>
#include <VendelSDK/Error.h>

#include "TestPlatform.h"

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

const QString haventGotVendel = QStringLiteral(
    "It looks like you haven't got Vendel 2 app or you didn't allow to communicate the plugin (this app) "
    "via Apple Script");

} // namespace

class AppleScriptRunnerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resultTextIsReturnedUnchanged()
    {
        TestPlatform platform;
        platform.engine->answers = {QStringLiteral("  {\"a\":1}\n")};
        QCOMPARE(AppleScriptRunner::run(QStringLiteral("source")),
                 std::optional<QString>(QStringLiteral("  {\"a\":1}\n")));
        QCOMPARE(platform.engine->sources, QStringList{QStringLiteral("source")});
    }

    void emptyAnswerIsEmptyTextNotNoValue()
    {
        TestPlatform platform;
        platform.engine->answers = {QString()};
        const auto result = AppleScriptRunner::run(QStringLiteral("get"));
        QVERIFY(result.has_value());
        QVERIFY(result->isEmpty());
    }

    void commandWithoutResultReturnsNoValueWithoutThrowing()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptNoResult{}};
        std::optional<QString> result = QStringLiteral("sentinel");
        try {
            result = AppleScriptRunner::run(QStringLiteral("set"));
        } catch (const Error&) {
            QFAIL("no result must not be an error");
        }
        QVERIFY(!result.has_value());
    }

    void failedExecutionThrowsCodeOneWithTheFixedReason()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptErrorRecord{-600, QStringLiteral("Application isn't running."),
                                                      QStringLiteral("Application isn't running.")}};
        try {
            AppleScriptRunner::run(QStringLiteral("tell application \"Vendel\" to get config \"A\""));
            QFAIL("a failed script must throw");
        } catch (const Error& error) {
            QCOMPARE(error.domain(), QString::fromLatin1(sdkErrorDomain));
            QCOMPARE(error.code(), 1);
            QCOMPARE(error.localizedDescription(), QStringLiteral("Could not run script"));
            QCOMPARE(error.localizedFailureReason(), haventGotVendel);
        }
    }

    void unparsableSourceThrowsCodeOneNotAParseMessage()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptErrorRecord{-2741,
                                                      QStringLiteral("Expected end of line but found “&”."),
                                                      QStringLiteral("Expected end of line but found “&”.")}};
        try {
            AppleScriptRunner::run(QStringLiteral("tell application \"Vendel\" to & &"));
            QFAIL("a syntax error must throw");
        } catch (const Error& error) {
            QCOMPARE(error.code(), 1);
            QCOMPARE(error.localizedFailureReason(), haventGotVendel);
            QVERIFY(!error.localizedDescription().contains(QStringLiteral("Expected")));
        }
    }

    void engineWithoutAnyRecordFieldsStillThrowsCodeOne()
    {
        TestPlatform platform;
        platform.engine->answers = {ScriptErrorRecord{}};
        QVERIFY_THROWS_EXCEPTION(Error, AppleScriptRunner::run(QStringLiteral("x")));
    }

    void recordThatCannotBeReadStillThrowsCodeOne()
    {
        TestPlatform platform;
        ScriptErrorRecord unreadable;
        unreadable.keyedByText = false;
        platform.engine->answers = {unreadable};
        QVERIFY_THROWS_EXCEPTION(Error, AppleScriptRunner::run(QStringLiteral("x")));
    }
};

QTEST_GUILESS_MAIN(AppleScriptRunnerTest)
#include "AppleScriptRunnerTest.moc"
