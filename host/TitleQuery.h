// What people type to find an action by its title: words matched in any case and with or without accents.
#pragma once

#include <QCollator>
#include <QString>
#include <QStringList>

#include <optional>

namespace VendelHost {

class TitleQuery
{
public:
    // How well a title matches, best first: the whole title is the query, it begins with the query, every
    // word begins a word of the title, or the words are only somewhere in it.
    enum class Rank
    {
        Exact,
        Prefix,
        WordStart,
        Substring,
    };

    // The query's words, folded; white space separates them.
    explicit TitleQuery(const QString& text);

    bool isEmpty() const { return m_words.isEmpty(); }
    const QStringList& words() const { return m_words; }

    // True when every word of the query occurs in the title, folded alike. The empty query matches every
    // title.
    bool matches(const QString& title) const;
    // How well the title matches, or nothing when some word is not in it. The empty query ranks nothing.
    // White space counts as one space, wherever it is and however long.
    std::optional<Rank> rank(const QString& title) const;

    // Titles in the order people sort words: in the user's language, numbers by their value ("Mix 2" before
    // "Mix 10"), case aside.
    static QCollator titleOrder();

    // The text as it is compared: compatibility forms decomposed ("ﬁ" is "fi"), accents and other
    // non-spacing marks dropped, and case folded fully ("Straße" is "strasse", "İ" and "ı" are "i").
    static QString fold(const QString& text);

private:
    QStringList m_words;
};

} // namespace VendelHost
