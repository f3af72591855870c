// What people type to find an action by its title: words matched in any case and with or without accents.
#pragma once

#include <QString>
#include <QStringList>

namespace VendelHost {

class TitleQuery
{
public:
    // The query's words, folded; white space separates them.
    explicit TitleQuery(const QString& text);

    bool isEmpty() const { return m_words.isEmpty(); }
    const QStringList& words() const { return m_words; }

    // True when every word of the query occurs in the title, folded alike. The empty query matches every
    // title.
    bool matches(const QString& title) const;

    // The text as it is compared: compatibility forms decomposed ("ﬁ" is "fi"), accents and other
    // non-spacing marks dropped, and case folded fully ("Straße" is "strasse", "İ" and "ı" are "i").
    static QString fold(const QString& text);

private:
    QStringList m_words;
};

} // namespace VendelHost
