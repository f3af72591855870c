// Tests the window's filter: queries against titles in several scripts, with accents and mixed case, and the
// order of what is shown.
#include "ActionFilter.h"
#include "ActionListModel.h"

#include <QTest>

using namespace VendelHost;

namespace {

const QStringList titles{
    QStringLiteral("Road Trip"),     QStringLiteral("Café del Mar"), QStringLiteral("Musik der Straße"),
    QStringLiteral("Μουσική Νύχτα"), QStringLiteral("MIX 10"),       QStringLiteral("Mix 2"),
    QStringLiteral("road work"),     QStringLiteral("Ёлка"),         QStringLiteral("ÉTÉ à Paris"),
};

} // namespace

class ActionFilterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        ActionEntries entries;
        for (qsizetype index = 0; index < titles.size(); ++index) {
            entries.append({QStringLiteral("id%1").arg(index), titles.at(index), index + 1,
                            QStringLiteral("stub"), QStringLiteral("Stub"), QStringLiteral("stub-icon")});
        }
        m_model.setEntries(entries);
        m_filter.setSourceModel(&m_model);
    }

    void queriesShowTheTitlesThatHoldEveryWord_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("nothing typed shows all, by title: numbers by value, Latin, Greek, Cyrillic")
            << QString() << QStringList{QStringLiteral("Café del Mar"),
                                        QStringLiteral("ÉTÉ à Paris"),
                                        QStringLiteral("Mix 2"),
                                        QStringLiteral("MIX 10"),
                                        QStringLiteral("Musik der Straße"),
                                        QStringLiteral("Road Trip"),
                                        QStringLiteral("road work"),
                                        QStringLiteral("Μουσική Νύχτα"),
                                        QStringLiteral("Ёлка")};
        QTest::newRow("lower case finds both cases")
            << QStringLiteral("road")
            << QStringList{QStringLiteral("Road Trip"), QStringLiteral("road work")};
        QTest::newRow("upper case too")
            << QStringLiteral("MIX") << QStringList{QStringLiteral("Mix 2"), QStringLiteral("MIX 10")};
        QTest::newRow("no accent typed")
            << QStringLiteral("cafe") << QStringList{QStringLiteral("Café del Mar")};
        QTest::newRow("accents typed where there are none")
            << QStringLiteral("ròàd TRÎP") << QStringList{QStringLiteral("Road Trip")};
        QTest::newRow("capital accents")
            << QStringLiteral("ete") << QStringList{QStringLiteral("ÉTÉ à Paris")};
        QTest::newRow("sharp s as ss")
            << QStringLiteral("STRASSE") << QStringList{QStringLiteral("Musik der Straße")};
        QTest::newRow("sharp s as itself")
            << QStringLiteral("straße") << QStringList{QStringLiteral("Musik der Straße")};
        QTest::newRow("Greek without accents, in capitals")
            << QStringLiteral("ΜΟΥΣΙΚΗ") << QStringList{QStringLiteral("Μουσική Νύχτα")};
        QTest::newRow("Cyrillic e for yo") << QStringLiteral("елка") << QStringList{QStringLiteral("Ёлка")};
        QTest::newRow("two words, any order")
            << QStringLiteral("paris ete") << QStringList{QStringLiteral("ÉTÉ à Paris")};
        QTest::newRow("a word that no title holds") << QStringLiteral("road jazz") << QStringList{};
        QTest::newRow("the plugin's name is not searched") << QStringLiteral("stub") << QStringList{};
    }

    void queriesShowTheTitlesThatHoldEveryWord()
    {
        QFETCH(QString, query);
        QFETCH(QStringList, shown);
        m_filter.setQuery(query);
        QStringList seen;
        for (int row = 0; row < m_filter.rowCount(); ++row) {
            seen.append(m_filter.index(row, ActionListModel::TitleColumn).data().toString());
        }
        QCOMPARE(seen, shown);
    }

    void aNewListingIsFilteredAndSortedToo()
    {
        m_filter.setQuery(QStringLiteral("mix"));
        m_model.setEntries({{QStringLiteral("a"), QStringLiteral("Mix 3"), 1, {}, {}, {}},
                            {QStringLiteral("b"), QStringLiteral("Jazz"), 2, {}, {}, {}},
                            {QStringLiteral("c"), QStringLiteral("mix 1"), 3, {}, {}, {}}});
        QCOMPARE(m_filter.rowCount(), 2);
        QCOMPARE(m_filter.index(0, 0).data(ActionListModel::IdRole).toString(), QStringLiteral("c"));
        QCOMPARE(m_filter.index(1, 0).data(ActionListModel::IdRole).toString(), QStringLiteral("a"));
    }

private:
    ActionListModel m_model;
    ActionFilter m_filter;
};

QTEST_MAIN(ActionFilterTest)
#include "ActionFilterTest.moc"
