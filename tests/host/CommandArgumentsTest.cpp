// Tests how one command's arguments split into options and operands, and what is refused.
#include "CommandArguments.h"

#include <QTest>

using namespace VendelHost;

class CommandArgumentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void optionsMayComeAnywhereBeforeTheEnd()
    {
        const CommandArguments parsed({QStringLiteral("--json"), QStringLiteral("a"),
                                       QStringLiteral("--title"), QStringLiteral("T"), QStringLiteral("b")},
                                      {QStringLiteral("--json")}, {QStringLiteral("--title")});
        QVERIFY(parsed.has(QStringLiteral("--json")));
        QCOMPARE(parsed.value(QStringLiteral("--title")), std::optional<QString>(QStringLiteral("T")));
        QCOMPARE(parsed.operands(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    }

    void everythingAfterTheEndOfOptionsIsAnOperand()
    {
        const CommandArguments parsed({QStringLiteral("x"), QStringLiteral("--"), QStringLiteral("--no-edit"),
                                       QStringLiteral("--"), QStringLiteral("-")},
                                      {QStringLiteral("--no-edit")});
        QVERIFY(!parsed.has(QStringLiteral("--no-edit")));
        QCOMPARE(parsed.operands(), (QStringList{QStringLiteral("x"), QStringLiteral("--no-edit"),
                                                 QStringLiteral("--"), QStringLiteral("-")}));
    }

    void aValueMayFollowAnEqualsSignOrBeginWithADash()
    {
        const CommandArguments joined({QStringLiteral("--title=a=b")}, {}, {QStringLiteral("--title")});
        QCOMPARE(joined.value(QStringLiteral("--title")), std::optional<QString>(QStringLiteral("a=b")));
        const CommandArguments empty({QStringLiteral("--title=")}, {}, {QStringLiteral("--title")});
        QCOMPARE(empty.value(QStringLiteral("--title")), std::optional<QString>(QString()));
        const CommandArguments dashed({QStringLiteral("--title"), QStringLiteral("--json")},
                                      {QStringLiteral("--json")}, {QStringLiteral("--title")});
        QCOMPARE(dashed.value(QStringLiteral("--title")), std::optional<QString>(QStringLiteral("--json")));
        QVERIFY(!dashed.has(QStringLiteral("--json")));
        QCOMPARE(dashed.value(QStringLiteral("--other")), std::nullopt);
    }

    void wrongOptionsAreRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected");
        QTest::newRow("unknown") << QStringList{QStringLiteral("--edit")}
                                 << QStringLiteral("unknown option \"--edit\"");
        QTest::newRow("unknown short") << QStringList{QStringLiteral("-x"), QStringLiteral("a")}
                                       << QStringLiteral("unknown option \"-x\"");
        QTest::newRow("abbreviated") << QStringList{QStringLiteral("--no")}
                                     << QStringLiteral("unknown option \"--no\"");
        QTest::newRow("missing value")
            << QStringList{QStringLiteral("--title")} << QStringLiteral("the option --title needs a value");
        QTest::newRow("flag with value") << QStringList{QStringLiteral("--no-edit=yes")}
                                         << QStringLiteral("the option --no-edit takes no value");
        QTest::newRow("twice") << QStringList{QStringLiteral("--no-edit"), QStringLiteral("--no-edit")}
                               << QStringLiteral("the option --no-edit is given twice");
        QTest::newRow("value twice") << QStringList{QStringLiteral("--title=a"), QStringLiteral("--title"),
                                                    QStringLiteral("b")}
                                     << QStringLiteral("the option --title is given twice");
    }

    void wrongOptionsAreRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        try {
            CommandArguments(arguments, {QStringLiteral("--no-edit")}, {QStringLiteral("--title")});
            QFAIL("accepted");
        } catch (const CommandArguments::Error& error) {
            QVERIFY2(error.message.contains(expected), qPrintable(error.message));
        }
    }
};

QTEST_GUILESS_MAIN(CommandArgumentsTest)
#include "CommandArgumentsTest.moc"
