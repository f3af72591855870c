// Tests the splitting of vendel:// command URLs into command name and argument.
#include "CommandUrl.h"
#include "HostError.h"

#include <QTest>

using namespace VendelHost;

class CommandUrlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCommandWithoutArgument()
    {
        const CommandUrl url = CommandUrl::parse(QStringLiteral("vendel://ping"));
        QCOMPARE(url.name, QStringLiteral("ping"));
        QVERIFY(!url.argument);
    }

    void theArgumentIsTheWholePathDecoded()
    {
        const CommandUrl url =
            CommandUrl::parse(QStringLiteral("vendel://add-resources/%5B%22a:%5C/b/c%22%5D"));
        QCOMPARE(url.name, QStringLiteral("add-resources"));
        QCOMPARE(*url.argument, QByteArray(R"(["a:\/b/c"])"));
    }

    void anEmptyPathIsAnEmptyArgument()
    {
        const CommandUrl url = CommandUrl::parse(QStringLiteral("vendel://add-resources/"));
        QVERIFY(url.argument);
        QCOMPARE(*url.argument, QByteArray());
    }

    void theNameIsKeptAsWritten()
    {
        QCOMPARE(CommandUrl::parse(QStringLiteral("vendel://Add-Resources/x")).name,
                 QStringLiteral("Add-Resources"));
    }

    void refusesWhatIsNoCommandUrl_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << QString() << QStringLiteral("not a vendel:// command URL");
        QTest::newRow("no URL") << QStringLiteral("vendel://a b") << QStringLiteral("is not a URL");
        QTest::newRow("bad escape") << QStringLiteral("vendel://add-resources/%zz")
                                    << QStringLiteral("is not a URL");
        QTest::newRow("raw bracket") << QStringLiteral("vendel://add-resources/[]")
                                     << QStringLiteral("is not a URL");
        QTest::newRow("other scheme")
            << QStringLiteral("vendelplugin://run/x") << QStringLiteral("not a vendel:// command URL");
        QTest::newRow("capital scheme")
            << QStringLiteral("VENDEL://ping") << QStringLiteral("not a vendel:// command URL");
        QTest::newRow("no authority") << QStringLiteral("vendel:ping") << QStringLiteral("names no command");
        QTest::newRow("empty host") << QStringLiteral("vendel:///x") << QStringLiteral("names no command");
        QTest::newRow("user and port") << QStringLiteral("vendel://u:p@add-resources:99/%5B%5D")
                                       << QStringLiteral("has a user or a port");
        QTest::newRow("user") << QStringLiteral("vendel://u@add-resources/%5B%5D")
                              << QStringLiteral("has a user or a port");
        QTest::newRow("port") << QStringLiteral("vendel://add-resources:99/%5B%5D")
                              << QStringLiteral("has a user or a port");
        QTest::newRow("query") << QStringLiteral("vendel://add-resources/%5B%5D?x=1")
                               << QStringLiteral("query or a fragment");
        QTest::newRow("fragment") << QStringLiteral("vendel://add-resources/%5B%5D#x")
                                  << QStringLiteral("query or a fragment");
    }

    void refusesWhatIsNoCommandUrl()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        try {
            CommandUrl::parse(text);
            QFAIL("parsed");
        } catch (const HostError& error) {
            QVERIFY2(error.message().contains(expected), qPrintable(error.message()));
        }
    }
};

QTEST_GUILESS_MAIN(CommandUrlTest)
#include "CommandUrlTest.moc"
