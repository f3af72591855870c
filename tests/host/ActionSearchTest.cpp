// Tests the one matcher of the desktop's searches: ranks, then titles, in several languages, with accents and
// case; at most 20 results; and queries too long or with too many words, which find nothing.
#include "ActionSearch.h"

#include <QTest>

using namespace VendelHost;

namespace {

ActionEntries actionsTitled(const QStringList& titles)
{
    ActionEntries actions;
    for (qsizetype index = 0; index < titles.size(); ++index) {
        actions.append({QStringLiteral("id%1").arg(index), titles.at(index), index + 1,
                        QStringLiteral("stub"), QStringLiteral("Stub Player"),
                        QStringLiteral("stub-player")});
    }
    return actions;
}

QStringList titlesOf(const QList<ActionSearch::Match>& matches)
{
    QStringList titles;
    for (const ActionSearch::Match& match : matches) {
        titles.append(match.action.title);
    }
    return titles;
}

const QStringList library{
    QStringLiteral("Road Trip"),         QStringLiteral("road"),         QStringLiteral("Car Road"),
    QStringLiteral("Railroad"),          QStringLiteral("Road Trip 2"),  QStringLiteral("Road Trip 10"),
    QStringLiteral("Café del Mar"),      QStringLiteral("CAFÉ"),         QStringLiteral("Le café du coin"),
    QStringLiteral("Musik der Straße"),  QStringLiteral("Straßenmusik"), QStringLiteral("Μουσική Νύχτα"),
    QStringLiteral("Νυχτερινή μουσική"), QStringLiteral("Ёлка"),         QStringLiteral("Зимняя ёлка"),
    QStringLiteral("朝の音楽"),          QStringLiteral("音楽"),
};

} // namespace

class ActionSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resultsAreRankedThenSortedByTitle_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("exact, prefixes by number, word start, substring")
            << QStringLiteral("road")
            << QStringList{QStringLiteral("road"),        QStringLiteral("Road Trip"),
                           QStringLiteral("Road Trip 2"), QStringLiteral("Road Trip 10"),
                           QStringLiteral("Car Road"),    QStringLiteral("Railroad")};
        QTest::newRow("accents and capitals typed or not")
            << QStringLiteral("Cafe")
            << QStringList{QStringLiteral("CAFÉ"), QStringLiteral("Café del Mar"),
                           QStringLiteral("Le café du coin")};
        QTest::newRow("two words in any order")
            << QStringLiteral("trip ROAD")
            << QStringList{QStringLiteral("Road Trip"), QStringLiteral("Road Trip 2"),
                           QStringLiteral("Road Trip 10")};
        QTest::newRow("German sharp s as ss")
            << QStringLiteral("strasse")
            << QStringList{QStringLiteral("Straßenmusik"), QStringLiteral("Musik der Straße")};
        QTest::newRow("Greek without accents")
            << QStringLiteral("ΜΟΥΣΙΚΗ")
            << QStringList{QStringLiteral("Μουσική Νύχτα"), QStringLiteral("Νυχτερινή μουσική")};
        QTest::newRow("Cyrillic e for yo")
            << QStringLiteral("елка") << QStringList{QStringLiteral("Ёлка"), QStringLiteral("Зимняя ёлка")};
        QTest::newRow("Japanese") << QStringLiteral("音楽")
                                  << QStringList{QStringLiteral("音楽"), QStringLiteral("朝の音楽")};
        QTest::newRow("every word must match") << QStringLiteral("road jazz") << QStringList{};
        QTest::newRow("nothing typed finds nothing") << QStringLiteral("  ") << QStringList{};
    }

    void resultsAreRankedThenSortedByTitle()
    {
        QFETCH(QString, query);
        QFETCH(QStringList, titles);
        QCOMPARE(titlesOf(ActionSearch::find(actionsTitled(library), query)), titles);
    }

    void termsAreTheQuerysWords()
    {
        QCOMPARE(titlesOf(ActionSearch::find(actionsTitled(library),
                                             QStringList{QStringLiteral("TRIP"), QStringLiteral("road")})),
                 titlesOf(ActionSearch::find(actionsTitled(library), QStringLiteral("trip road"))));
    }

    void resultsExposeTitlesNamesAndIconsOnly()
    {
        const auto found =
            ActionSearch::find(actionsTitled({QStringLiteral("Road Trip")}), QStringLiteral("road"));
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.constFirst().action,
                 (ActionEntry{QStringLiteral("id0"), QStringLiteral("Road Trip"), 1, QStringLiteral("stub"),
                              QStringLiteral("Stub Player"), QStringLiteral("stub-player")}));
        QCOMPARE(found.constFirst().rank, TitleQuery::Rank::Prefix);
    }

    void atMostTwentyResultsTheBestOnes()
    {
        QStringList titles;
        for (int index = 30; index > 0; --index) {
            titles.append(QStringLiteral("Mix %1").arg(index));
        }
        titles.append(QStringLiteral("mix"));
        const auto found = ActionSearch::find(actionsTitled(titles), QStringLiteral("mix"));
        QCOMPARE(found.size(), 20);
        QCOMPARE(found.constFirst().action.title, QStringLiteral("mix"));
        QCOMPARE(found.at(1).action.title, QStringLiteral("Mix 1"));
        QCOMPARE(found.constLast().action.title, QStringLiteral("Mix 19"));
    }

    void longQueriesAndManyWordsFindNothing_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("finds");
        QTest::newRow("256 characters") << QStringLiteral("a") + QString(255, u' ') << true;
        QTest::newRow("257 characters") << QStringLiteral("a") + QString(256, u' ') << false;
        // Characters, not UTF-16 units: 256 of them are 510 units here.
        QTest::newRow("256 characters outside the basic plane")
            << QStringLiteral("a ") + QString::fromUcs4(std::u32string(254, U'😀').c_str()) << true;
        QTest::newRow("257 characters outside the basic plane")
            << QStringLiteral("a  ") + QString::fromUcs4(std::u32string(254, U'😀').c_str()) << false;
        QTest::newRow("16 words") << QStringLiteral("a b c d e f g h i j k l m n o p") << true;
        QTest::newRow("17 words") << QStringLiteral("a b c d e f g h i j k l m n o p q") << false;
    }

    void longQueriesAndManyWordsFindNothing()
    {
        QFETCH(QString, query);
        QFETCH(bool, finds);
        const ActionEntries actions =
            actionsTitled({QStringLiteral("a b c d e f g h i j k l m n o p q r s t") +
                           QString::fromUcs4(std::u32string(254, U'😀').c_str())});
        QCOMPARE(ActionSearch::find(actions, query).size(), finds ? 1 : 0);
    }

    void tooManyTermsFindNothing()
    {
        const ActionEntries actions = actionsTitled({QStringLiteral("a b c d e f g h i j k l m n o p q")});
        QStringList terms = QStringLiteral("a b c d e f g h i j k l m n o p").split(u' ');
        QCOMPARE(ActionSearch::find(actions, terms).size(), 1);
        terms.append(QStringLiteral("q"));
        QCOMPARE(ActionSearch::find(actions, terms).size(), 0);
    }
};

QTEST_GUILESS_MAIN(ActionSearchTest)
#include "ActionSearchTest.moc"
