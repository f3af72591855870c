// Tests what an AppleScript execution's report means: failure, a result text, or no result.
#include "AppleScriptOutcome.h"

#include <QTest>

using namespace VendelSDK;

namespace {

QVariantMap errorInfo(const QVariant& number, const QVariant& message, const QVariant& brief)
{
    QVariantMap info;
    if (number.isValid()) {
        info.insert(QString::fromLatin1(appleScriptErrorNumberKey), number);
    }
    if (message.isValid()) {
        info.insert(QString::fromLatin1(appleScriptErrorMessageKey), message);
    }
    if (brief.isValid()) {
        info.insert(QString::fromLatin1(appleScriptErrorBriefMessageKey), brief);
    }
    return info;
}

// The entries of a dictionary keyed by text, as Foundation reports them.
DictionaryEntries entries(const QVariantMap& map)
{
    DictionaryEntries result;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        result.append({entry.key(), entry.value()});
    }
    return result;
}

} // namespace

class AppleScriptOutcomeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sourceWithoutScriptObjectGivesNoResult()
    {
        QCOMPARE(appleScriptOutcome({false, std::nullopt, std::nullopt}), ScriptOutcome(ScriptNoResult{}));
    }

    void filledErrorDictionaryFailsWhateverCameBack()
    {
        const QVariantMap info =
            errorInfo(qlonglong(-1743), QStringLiteral("Not authorised to send Apple events to Music."),
                      QStringLiteral("Not authorised."));
        const ScriptErrorRecord expected{-1743,
                                         QStringLiteral("Not authorised to send Apple events to Music."),
                                         QStringLiteral("Not authorised.")};
        QCOMPARE(appleScriptOutcome({true, entries(info), std::nullopt}), ScriptOutcome(expected));
        QCOMPARE(appleScriptOutcome({true, entries(info), QStringLiteral("a result")}),
                 ScriptOutcome(expected));
    }

    void emptyErrorDictionaryStillFails()
    {
        QCOMPARE(appleScriptOutcome({true, DictionaryEntries{}, std::nullopt}),
                 ScriptOutcome(ScriptErrorRecord{}));
    }

    void errorDictionaryWithAKeyThatIsNotTextIsAFailureThatCannotBeRead()
    {
        DictionaryEntries info =
            entries(errorInfo(qlonglong(-1728), QStringLiteral("Can’t get playlist."), {}));
        info.append({std::nullopt, qlonglong(1)});
        ScriptErrorRecord unreadable;
        unreadable.keyedByText = false;
        QCOMPARE(appleScriptOutcome({true, info, std::nullopt}), ScriptOutcome(unreadable));
        QCOMPARE(appleScriptOutcome({true, info, QStringLiteral("a result")}), ScriptOutcome(unreadable));
    }

    void keyThatIsNotTextMakesNoDictionaryKeyedByText()
    {
        const DictionaryEntries info{{QStringLiteral("NSAppleScriptErrorNumber"), qlonglong(-600)},
                                     {std::nullopt, QStringLiteral("a value")}};
        QCOMPARE(textKeyedMap(info), std::nullopt);
        // Read for what it holds, the same dictionary keeps its entries keyed by text.
        QCOMPARE(textKeyedEntries(info),
                 (QVariantMap{{QStringLiteral("NSAppleScriptErrorNumber"), qlonglong(-600)}}));
    }

    void valuesOfOtherKindsAreLeftOutOfADictionaryKeyedByText()
    {
        const DictionaryEntries info{{QStringLiteral("NSAppleScriptErrorRange"), QVariant()},
                                     {QStringLiteral("NSAppleScriptErrorMessage"), QStringLiteral("m")}};
        QCOMPARE(textKeyedMap(info),
                 std::optional<QVariantMap>(
                     QVariantMap{{QStringLiteral("NSAppleScriptErrorMessage"), QStringLiteral("m")}}));
    }

    void resultTextIsReturnedUnchangedEvenWhenEmpty()
    {
        QCOMPARE(appleScriptOutcome({true, std::nullopt, QStringLiteral(" x \n")}),
                 ScriptOutcome(QStringLiteral(" x \n")));
        QCOMPARE(appleScriptOutcome({true, std::nullopt, QString()}), ScriptOutcome(QString()));
    }

    void resultWithoutTextIsNoResult()
    {
        QCOMPARE(appleScriptOutcome({true, std::nullopt, std::nullopt}), ScriptOutcome(ScriptNoResult{}));
    }

    void integerNumbersAreTaken()
    {
        QCOMPARE(appleScriptErrorRecord(errorInfo(int(-2741), {}, {})).number, std::optional<qint64>(-2741));
        QCOMPARE(appleScriptErrorRecord(errorInfo(qlonglong(-600), {}, {})).number,
                 std::optional<qint64>(-600));
        QCOMPARE(appleScriptErrorRecord(errorInfo(qulonglong(42), {}, {})).number, std::optional<qint64>(42));
        // A floating-point number that is exactly an integer bridges to one.
        QCOMPARE(appleScriptErrorRecord(errorInfo(-1728.0, {}, {})).number, std::optional<qint64>(-1728));
    }

    void numbersThatAreNoIntegerAreLeftOut()
    {
        QCOMPARE(appleScriptErrorRecord(errorInfo(-1.5, {}, {})).number, std::nullopt);
        QCOMPARE(appleScriptErrorRecord(errorInfo(std::numeric_limits<double>::quiet_NaN(), {}, {})).number,
                 std::nullopt);
        QCOMPARE(appleScriptErrorRecord(errorInfo(1e300, {}, {})).number, std::nullopt);
        QCOMPARE(appleScriptErrorRecord(errorInfo(9223372036854775808.0, {}, {})).number, std::nullopt);
        QCOMPARE(appleScriptErrorRecord(errorInfo(qulonglong(1) << 63, {}, {})).number, std::nullopt);
        QCOMPARE(appleScriptErrorRecord(errorInfo(QStringLiteral("-1743"), {}, {})).number, std::nullopt);
        QCOMPARE(appleScriptErrorRecord(errorInfo({}, QStringLiteral("m"), {})).number, std::nullopt);
    }

    void textsAreTakenOnlyWhenText()
    {
        const auto record = appleScriptErrorRecord(errorInfo({}, QStringLiteral("A message"), qlonglong(7)));
        QCOMPARE(record.message, std::optional<QString>(QStringLiteral("A message")));
        QCOMPARE(record.briefMessage, std::nullopt);
        const auto brief = appleScriptErrorRecord(errorInfo({}, {}, QStringLiteral("Brief")));
        QCOMPARE(brief.message, std::nullopt);
        QCOMPARE(brief.briefMessage, std::optional<QString>(QStringLiteral("Brief")));
    }
};

QTEST_GUILESS_MAIN(AppleScriptOutcomeTest)
#include "AppleScriptOutcomeTest.moc"
