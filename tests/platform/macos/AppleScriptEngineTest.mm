// Tests the AppleScript engine against the system's own script runner.
#include "AppleScriptEngine.h"

#include <QTest>

using namespace VendelSDK;

class AppleScriptEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scriptResultIsItsText()
    {
        QCOMPARE(AppleScriptEngine().execute(QStringLiteral("return \"x\"")),
                 ScriptOutcome(QStringLiteral("x")));
    }

    void emptyTextIsATextNotNoResult()
    {
        QCOMPARE(AppleScriptEngine().execute(QStringLiteral("return \"\"")), ScriptOutcome(QString()));
    }

    void syntaxErrorFailsWithTheSystemsRecord()
    {
        const ScriptOutcome outcome = AppleScriptEngine().execute(QStringLiteral("return \""));
        const auto* record = std::get_if<ScriptErrorRecord>(&outcome);
        QVERIFY(record != nullptr);
        QVERIFY(record->number.has_value());
        QVERIFY(record->message.has_value() && !record->message->isEmpty());
    }

    void unknownApplicationFails()
    {
        const ScriptOutcome outcome =
            AppleScriptEngine().execute(QStringLiteral("tell application \"No Such Vendel App\" to quit"));
        QVERIFY(std::holds_alternative<ScriptErrorRecord>(outcome));
    }
};

QTEST_GUILESS_MAIN(AppleScriptEngineTest)
#include "AppleScriptEngineTest.moc"
