// Tests the action record's default, its JSON form and its strict decoding, alone and through a provider.
#include "LocalConfig.h"

#include <VendelSDK/ConfigCoding.h>
#include <VendelSDK/LocalConfigProvider.h>

#include "TestPlatform.h"

#include <QJsonDocument>
#include <QTest>

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

std::optional<LocalConfig> decoded(const QString& text)
{
    return LocalConfig::fromJson(QJsonDocument::fromJson(text.toUtf8()).object());
}

} // namespace

class LocalConfigTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultRecordPlaysWithoutAPlaylistAndWithShuffleOff()
    {
        const LocalConfig record;
        QCOMPARE(record.action, LocalConfig::Action::play);
        QVERIFY(!record.name);
        QCOMPARE(record.shouldShuffle, false);
    }

    void actionIsMadeFromItsRawValueOnlyForZeroAndOne_data()
    {
        QTest::addColumn<qint64>("raw");
        QTest::addColumn<bool>("exists");
        QTest::addColumn<bool>("isPause");
        QTest::newRow("0") << qint64(0) << true << false;
        QTest::newRow("1") << qint64(1) << true << true;
        QTest::newRow("2") << qint64(2) << false << false;
        QTest::newRow("-1") << qint64(-1) << false << false;
    }

    void actionIsMadeFromItsRawValueOnlyForZeroAndOne()
    {
        QFETCH(qint64, raw);
        QFETCH(bool, exists);
        QFETCH(bool, isPause);
        const auto made = LocalConfig::actionFromRawValue(raw);
        QCOMPARE(made.has_value(), exists);
        if (exists) {
            QCOMPARE(*made, isPause ? LocalConfig::Action::pause : LocalConfig::Action::play);
            QCOMPARE(LocalConfig::rawValue(*made), raw);
        }
    }

    void defaultRecordEncodesToActionAndShouldShuffleOnly()
    {
        const QJsonObject object = LocalConfig().toJson();
        QCOMPARE(object.keys(), (QStringList{QStringLiteral("action"), QStringLiteral("shouldShuffle")}));
        QVERIFY(object.value(QStringLiteral("action")).isDouble());
        QCOMPARE(object.value(QStringLiteral("action")).toInteger(-1), 0);
        QCOMPARE(object.value(QStringLiteral("shouldShuffle")), QJsonValue(false));
        QCOMPARE(encodeConfig(LocalConfig()), QStringLiteral("{\"action\":0,\"shouldShuffle\":false}"));
    }

    void recordWithAPlaylistEncodesAllThreeKeys()
    {
        const LocalConfig record{LocalConfig::Action::play, QStringLiteral("Road Trip"), true};
        QCOMPARE(encodeConfig(record),
                 QStringLiteral("{\"action\":0,\"name\":\"Road Trip\",\"shouldShuffle\":true}"));
        const LocalConfig pause{LocalConfig::Action::pause, std::nullopt, false};
        QCOMPARE(encodeConfig(pause), QStringLiteral("{\"action\":1,\"shouldShuffle\":false}"));
    }

    void recordWithoutNameDecodesAsPlayWithShuffleOn()
    {
        const auto record = decoded(QStringLiteral("{\"action\":0,\"shouldShuffle\":true}"));
        QVERIFY(record);
        QCOMPARE(record->action, LocalConfig::Action::play);
        QVERIFY(!record->name);
        QCOMPARE(record->shouldShuffle, true);
    }

    void nullNameDecodesAsAbsent()
    {
        const auto record = decoded(QStringLiteral("{\"action\":0,\"name\":null,\"shouldShuffle\":false}"));
        QVERIFY(record);
        QVERIFY(!record->name);
        QCOMPARE(record->shouldShuffle, false);
    }

    void fullRecordDecodesInAnyKeyOrderAndIgnoresOtherKeys()
    {
        const auto record = decoded(
            QStringLiteral("{\"shouldShuffle\":true,\"volume\":3,\"name\":\"Road Trip\",\"action\":1}"));
        QVERIFY(record);
        QCOMPARE(*record, (LocalConfig{LocalConfig::Action::pause, QStringLiteral("Road Trip"), true}));
    }

    void emptyPlaylistNameIsAPresentNameAndIsKept()
    {
        const auto record = decoded(QStringLiteral("{\"action\":0,\"name\":\"\",\"shouldShuffle\":false}"));
        QVERIFY(record);
        QVERIFY(record->name);
        QCOMPARE(*record->name, QString());
        const QString text = encodeConfig(*record);
        QCOMPARE(text, QStringLiteral("{\"action\":0,\"name\":\"\",\"shouldShuffle\":false}"));
        QCOMPARE(decodeConfig(text, LocalConfig{LocalConfig::Action::pause, std::nullopt, true}), *record);
    }

    void invalidRecordsFailToDecode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("no shouldShuffle") << QStringLiteral("{\"action\":1}");
        QTest::newRow("action is text")
            << QStringLiteral("{\"action\":\"play\",\"name\":\"x\",\"shouldShuffle\":true}");
        QTest::newRow("no such action")
            << QStringLiteral("{\"action\":5,\"name\":\"x\",\"shouldShuffle\":true}");
        QTest::newRow("negative action") << QStringLiteral("{\"action\":-1,\"shouldShuffle\":true}");
        QTest::newRow("fractional action") << QStringLiteral("{\"action\":0.5,\"shouldShuffle\":true}");
        QTest::newRow("Boolean action") << QStringLiteral("{\"action\":true,\"shouldShuffle\":true}");
        QTest::newRow("null action") << QStringLiteral("{\"action\":null,\"shouldShuffle\":true}");
        QTest::newRow("no action") << QStringLiteral("{\"name\":\"x\",\"shouldShuffle\":true}");
        QTest::newRow("name is a number")
            << QStringLiteral("{\"action\":0,\"name\":3,\"shouldShuffle\":true}");
        QTest::newRow("name is a list")
            << QStringLiteral("{\"action\":0,\"name\":[],\"shouldShuffle\":true}");
        QTest::newRow("shouldShuffle is text") << QStringLiteral("{\"action\":0,\"shouldShuffle\":\"yes\"}");
        QTest::newRow("shouldShuffle is a number") << QStringLiteral("{\"action\":0,\"shouldShuffle\":1}");
        QTest::newRow("shouldShuffle is null") << QStringLiteral("{\"action\":0,\"shouldShuffle\":null}");
    }

    void invalidRecordsFailToDecode()
    {
        QFETCH(QString, text);
        QVERIFY(!decoded(text));
    }

    void storedRecordThatFailsToDecodeReadsAsTheProvidersDefault_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("no shouldShuffle") << QStringLiteral("{\"action\":1}");
        QTest::newRow("action is text")
            << QStringLiteral("{\"action\":\"play\",\"name\":\"x\",\"shouldShuffle\":true}");
        QTest::newRow("no such action")
            << QStringLiteral("{\"action\":5,\"name\":\"x\",\"shouldShuffle\":true}");
    }

    void storedRecordThatFailsToDecodeReadsAsTheProvidersDefault()
    {
        QFETCH(QString, stored);
        TestPlatform platform;
        platform.engine->answers = {stored};
        const auto provider = LocalConfigProvider<LocalConfig>::create(QStringLiteral("A-1"), LocalConfig{});
        QVERIFY(provider);
        QCOMPARE(provider->config, LocalConfig{});
        QVERIFY(platform.alerts->alerts.isEmpty());
        platform.services->terminateNow();
    }

    void storedRecordIsReadThroughTheProvider()
    {
        TestPlatform platform;
        platform.engine->answers = {
            QStringLiteral("{\"action\":0,\"name\":\"Road Trip\",\"shouldShuffle\":true}")};
        const auto provider = LocalConfigProvider<LocalConfig>::create(QStringLiteral("A-1"), LocalConfig{});
        QVERIFY(provider);
        QCOMPARE(provider->config,
                 (LocalConfig{LocalConfig::Action::play, QStringLiteral("Road Trip"), true}));
        platform.services->terminateNow();
        QCOMPARE(
            platform.engine->sources.last(),
            QStringLiteral("    tell application \"Vendel\" to set config "
                           "\"{\\\"action\\\":0,\\\"name\\\":\\\"Road Trip\\\",\\\"shouldShuffle\\\":true}\" "
                           "action \"A-1\""));
    }
};

QTEST_GUILESS_MAIN(LocalConfigTest)
#include "LocalConfigTest.moc"
