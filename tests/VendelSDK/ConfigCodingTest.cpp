// Tests the configuration text: compact JSON out, the empty text for a value that cannot be encoded, and a
// silent fallback for any text that holds no valid value.
#include <VendelSDK/ConfigCoding.h>

#include "SampleConfig.h"

#include <QTest>

using namespace VendelSDK;

class ConfigCodingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void encodeConfigWritesCompactJson()
    {
        const SampleConfig config{QStringLiteral("Road Trip"), 3};
        QCOMPARE(encodeConfig(config), QStringLiteral("{\"count\":3,\"text\":\"Road Trip\"}"));
    }

    void encodeConfigEscapesQuotesAndBackslashesAsJson()
    {
        const SampleConfig config{QStringLiteral("a \"b\" \\c"), 0};
        QCOMPARE(encodeConfig(config), QStringLiteral("{\"count\":0,\"text\":\"a \\\"b\\\" \\\\c\"}"));
    }

    void encodeConfigGivesTheEmptyTextWhenEncodingFails()
    {
        QCOMPARE(encodeConfig(UnencodableConfig{}), QString());
    }

    void decodeConfigReadsAValidText()
    {
        const SampleConfig fallback{QStringLiteral("fallback"), -1};
        QCOMPARE(decodeConfig(QStringLiteral("{\"text\":\"é \\\"q\\\" \\\\\",\"count\":42,\"extra\":true}"),
                              fallback),
                 (SampleConfig{QStringLiteral("é \"q\" \\"), 42}));
    }

    void decodeConfigRoundTripsWhatEncodeConfigWrote()
    {
        const SampleConfig config{QStringLiteral("\"quoted\" and \\back\\slashed\\"), 7};
        QCOMPARE(decodeConfig(encodeConfig(config), SampleConfig{}), config);
    }

    void decodeConfigFallsBackSilentlyOnAnyFailure_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("not JSON") << QStringLiteral("not json");
        QTest::newRow("truncated") << QStringLiteral("{\"text\":\"a\",\"count\":");
        QTest::newRow("array") << QStringLiteral("[1,2]");
        QTest::newRow("scalar") << QStringLiteral("42");
        QTest::newRow("other shape") << QStringLiteral("{\"title\":\"a\"}");
        QTest::newRow("wrong type") << QStringLiteral("{\"text\":5,\"count\":1}");
    }

    void decodeConfigFallsBackSilentlyOnAnyFailure()
    {
        QFETCH(QString, text);
        const SampleConfig fallback{QStringLiteral("fallback"), -1};
        QCOMPARE(decodeConfig(text, fallback), fallback);
    }
};

QTEST_GUILESS_MAIN(ConfigCodingTest)
#include "ConfigCodingTest.moc"
