// Tests how titles are searched: folding of case, accents and compatibility forms, and word by word matching.
#include "TitleQuery.h"

#include <QTest>

using namespace VendelHost;

class TitleQueryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void foldingDropsCaseAccentsAndCompatibilityForms_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("folded");
        QTest::newRow("case") << QStringLiteral("Road TRIP") << QStringLiteral("road trip");
        QTest::newRow("acute and grave")
            << QStringLiteral("Café à la crème") << QStringLiteral("cafe a la creme");
        QTest::newRow("precomposed and decomposed alike")
            << QStringLiteral("Cafe\u0301") << QStringLiteral("cafe");
        QTest::newRow("umlaut and sharp s")
            << QStringLiteral("Grüße aus Straße") << QStringLiteral("grusse aus strasse");
        QTest::newRow("Turkish dotted and dotless i")
            << QStringLiteral("İstanbul ılık") << QStringLiteral("istanbul ilik");
        QTest::newRow("Greek tonos and final sigma")
            << QStringLiteral("Ώρες ΜΟΥΣΙΚΉΣ") << QStringLiteral("ωρεσ μουσικησ");
        QTest::newRow("Cyrillic") << QStringLiteral("Ёлка МУЗЫКА") << QStringLiteral("елка музыка");
        QTest::newRow("ligature and full width")
            << QStringLiteral("ﬁne ＭＩＸ") << QStringLiteral("fine mix");
        QTest::newRow("Nordic letters stay letters")
            << QStringLiteral("Ørsted Æble") << QStringLiteral("ørsted æble");
        QTest::newRow("Japanese stays") << QStringLiteral("朝の音楽") << QStringLiteral("朝の音楽");
    }

    void foldingDropsCaseAccentsAndCompatibilityForms()
    {
        QFETCH(QString, text);
        QFETCH(QString, folded);
        QCOMPARE(TitleQuery::fold(text), folded);
    }

    void everyWordMustOccurInTheTitle_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("matches");
        QTest::newRow("empty query") << QString() << QStringLiteral("Road Trip") << true;
        QTest::newRow("white space only") << QStringLiteral(" \t ") << QStringLiteral("Road Trip") << true;
        QTest::newRow("one word, other case")
            << QStringLiteral("ROAD") << QStringLiteral("Road Trip") << true;
        QTest::newRow("inside a word") << QStringLiteral("oad") << QStringLiteral("Road Trip") << true;
        QTest::newRow("words in another order")
            << QStringLiteral("trip road") << QStringLiteral("Road Trip") << true;
        QTest::newRow("one word missing")
            << QStringLiteral("road night") << QStringLiteral("Road Trip") << false;
        QTest::newRow("accent typed, none in title")
            << QStringLiteral("rôad") << QStringLiteral("Road Trip") << true;
        QTest::newRow("no accent typed, one in title")
            << QStringLiteral("cafe") << QStringLiteral("Café del Mar") << true;
        QTest::newRow("German sharp s typed as ss")
            << QStringLiteral("strasse") << QStringLiteral("Musik der Straße") << true;
        QTest::newRow("Greek without tonos")
            << QStringLiteral("μουσικη") << QStringLiteral("Μουσική") << true;
        QTest::newRow("spaces around words")
            << QStringLiteral("  trip   ") << QStringLiteral("Road Trip") << true;
        QTest::newRow("not across words")
            << QStringLiteral("roadtrip") << QStringLiteral("Road Trip") << false;
        QTest::newRow("empty title") << QStringLiteral("a") << QString() << false;
    }

    void everyWordMustOccurInTheTitle()
    {
        QFETCH(QString, query);
        QFETCH(QString, title);
        QFETCH(bool, matches);
        QCOMPARE(TitleQuery(query).matches(title), matches);
    }

    void titlesAreRankedExactPrefixWordStartSubstring_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("rank");
        const int none = -1;
        const auto rank = [](TitleQuery::Rank value) { return int(value); };
        QTest::newRow("exact, other case")
            << QStringLiteral("ROAD TRIP") << QStringLiteral("Road Trip") << rank(TitleQuery::Rank::Exact);
        QTest::newRow("exact, accents and spaces aside")
            << QStringLiteral("cafe  del mar") << QStringLiteral(" Café del\tMar ")
            << rank(TitleQuery::Rank::Exact);
        QTest::newRow("prefix") << QStringLiteral("road") << QStringLiteral("Road Trip")
                                << rank(TitleQuery::Rank::Prefix);
        QTest::newRow("prefix of two words")
            << QStringLiteral("road tr") << QStringLiteral("Road Trip") << rank(TitleQuery::Rank::Prefix);
        QTest::newRow("prefix inside the first word")
            << QStringLiteral("ro") << QStringLiteral("Road Trip") << rank(TitleQuery::Rank::Prefix);
        QTest::newRow("word start") << QStringLiteral("trip") << QStringLiteral("Road Trip")
                                    << rank(TitleQuery::Rank::WordStart);
        QTest::newRow("words in another order") << QStringLiteral("trip road") << QStringLiteral("Road Trip")
                                                << rank(TitleQuery::Rank::WordStart);
        QTest::newRow("word start after punctuation")
            << QStringLiteral("trip") << QStringLiteral("Road-Trip") << rank(TitleQuery::Rank::WordStart);
        QTest::newRow("a later place starts a word")
            << QStringLiteral("mix") << QStringLiteral("Remix Mix") << rank(TitleQuery::Rank::WordStart);
        QTest::newRow("substring") << QStringLiteral("oad") << QStringLiteral("Road Trip")
                                   << rank(TitleQuery::Rank::Substring);
        QTest::newRow("one word inside another") << QStringLiteral("trip mix") << QStringLiteral("Trip Remix")
                                                 << rank(TitleQuery::Rank::Substring);
        QTest::newRow("Greek word start without accents")
            << QStringLiteral("νυχτα") << QStringLiteral("Μουσική Νύχτα")
            << rank(TitleQuery::Rank::WordStart);
        QTest::newRow("Cyrillic exact")
            << QStringLiteral("ЁЛКА") << QStringLiteral("ёлка") << rank(TitleQuery::Rank::Exact);
        QTest::newRow("a missing word") << QStringLiteral("road jazz") << QStringLiteral("Road Trip") << none;
        QTest::newRow("empty query ranks nothing") << QString() << QStringLiteral("Road Trip") << none;
    }

    void titlesAreRankedExactPrefixWordStartSubstring()
    {
        QFETCH(QString, query);
        QFETCH(QString, title);
        QFETCH(int, rank);
        const auto ranked = TitleQuery(query).rank(title);
        QCOMPARE(ranked ? int(*ranked) : -1, rank);
    }

    void wordsAreSplitAtAnyWhiteSpace()
    {
        QCOMPARE(TitleQuery(QStringLiteral("a\tb\u00a0c\u3000d")).words(),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                              QStringLiteral("d")}));
        QVERIFY(TitleQuery(QStringLiteral("\n ")).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TitleQueryTest)
#include "TitleQueryTest.moc"
