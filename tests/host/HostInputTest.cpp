// Tests what the host accepts as a configuration text and as a bundle identifier.
#include "HostInput.h"

#include <QTest>

using namespace VendelHost;

class HostInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsJsonObjectsAndArraysAndTheEmptyText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty, which clears") << QString();
        QTest::newRow("object") << QStringLiteral("{\"action\":0,\"name\":\"Ünï\",\"shouldShuffle\":true}");
        QTest::newRow("array") << QStringLiteral("[1,2]");
        QTest::newRow("spaces around") << QStringLiteral(" {}\n");
        QTest::newRow("at the limit")
            << QStringLiteral("[\"%1\"]").arg(QString(HostInput::maxConfigBytes - 4, u'x'));
    }

    void acceptsJsonObjectsAndArraysAndTheEmptyText()
    {
        QFETCH(QString, text);
        const auto problem = HostInput::configProblem(text);
        QVERIFY2(!problem, qPrintable(problem.value_or(QString())));
    }

    void refusesEverythingElse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bare word") << QStringLiteral("pause")
                                   << QStringLiteral("not a valid JSON object or array");
        QTest::newRow("number") << QStringLiteral("1") << QStringLiteral("not a valid JSON object or array");
        QTest::newRow("string") << QStringLiteral("\"x\"")
                                << QStringLiteral("not a valid JSON object or array");
        QTest::newRow("trailing text") << QStringLiteral("{} {}") << QStringLiteral("not a valid JSON");
        QTest::newRow("spaces only") << QStringLiteral(" ") << QStringLiteral("not a valid JSON");
        // Counted in UTF-8 bytes: two bytes a letter.
        QTest::newRow("one byte over")
            << QStringLiteral("[\"%1\"]").arg(QString(HostInput::maxConfigBytes - 3, u'x'))
            << QStringLiteral("at most 1048576 are kept");
        QTest::newRow("over in UTF-8 only")
            << QStringLiteral("[\"%1\"]").arg(QString(HostInput::maxConfigBytes / 2, u'é'))
            << QStringLiteral("at most 1048576 are kept");
    }

    void refusesEverythingElse()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const auto problem = HostInput::configProblem(text);
        QVERIFY(problem);
        QVERIFY2(problem->contains(expected), qPrintable(*problem));
    }

    void bundleIdentifiersAreReverseDns_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("plugin") << QStringLiteral("org.vendel.MusicPlugin") << true;
        QTest::newRow("two labels, digits, hyphen") << QStringLiteral("com.x-2.a1") << true;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("one label") << QStringLiteral("music") << false;
        QTest::newRow("parent folder") << QStringLiteral("../org.vendel.x") << false;
        QTest::newRow("slash") << QStringLiteral("org/vendel.x") << false;
        QTest::newRow("newline") << QStringLiteral("org.vendel\n.x") << false;
        QTest::newRow("empty label") << QStringLiteral("org..x") << false;
        QTest::newRow("leading dot") << QStringLiteral(".org.x") << false;
        QTest::newRow("trailing dot") << QStringLiteral("org.x.") << false;
        QTest::newRow("hyphen at a label's end") << QStringLiteral("org.x-") << false;
        QTest::newRow("space") << QStringLiteral("org.x y") << false;
        QTest::newRow("non-ASCII") << QStringLiteral("org.vendél.x") << false;
        QTest::newRow("too long") << QStringLiteral("org.") + QString(252, u'x') << false;
    }

    void bundleIdentifiersAreReverseDns()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QCOMPARE(HostInput::isBundleIdentifier(text), accepted);
    }
};

QTEST_GUILESS_MAIN(HostInputTest)
#include "HostInputTest.moc"
