// Folding turns both sides into one spelling, so matching is a plain search for each word.
#include "TitleQuery.h"

#include <QLocale>

namespace VendelHost {

TitleQuery::TitleQuery(const QString& text)
{
    const QString folded = fold(text);
    qsizetype start = -1;
    for (qsizetype index = 0; index <= folded.size(); ++index) {
        const bool space = index == folded.size() || folded.at(index).isSpace();
        if (space && start >= 0) {
            m_words.append(folded.mid(start, index - start));
            start = -1;
        } else if (!space && start < 0) {
            start = index;
        }
    }
}

bool TitleQuery::matches(const QString& title) const
{
    return m_words.isEmpty() || rank(title).has_value();
}

std::optional<TitleQuery::Rank> TitleQuery::rank(const QString& title) const
{
    if (m_words.isEmpty()) {
        return std::nullopt;
    }
    const QString folded = TitleQuery(title).words().join(u' ');
    bool everyAtWordStart = true;
    for (const QString& word : m_words) {
        qsizetype at = folded.indexOf(word);
        if (at < 0) {
            return std::nullopt;
        }
        // Any of the word's places may be a word's start: "mix" in "remix mix".
        while (at > 0 && folded.at(at - 1).isLetterOrNumber()) {
            at = folded.indexOf(word, at + 1);
            if (at < 0) {
                everyAtWordStart = false;
                break;
            }
        }
    }
    const QString query = m_words.join(u' ');
    if (folded == query) {
        return Rank::Exact;
    }
    if (folded.startsWith(query)) {
        return Rank::Prefix;
    }
    return everyAtWordStart ? Rank::WordStart : Rank::Substring;
}

QCollator TitleQuery::titleOrder()
{
    QLocale locale;
    // Under the C locale Qt compares code units, which no person means; the root order serves them then.
    if (locale.language() == QLocale::C) {
        locale = QLocale(QLocale::English, QLocale::UnitedStates);
    }
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

QString TitleQuery::fold(const QString& text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString bare;
    bare.reserve(decomposed.size());
    for (const QChar character : decomposed) {
        // Marks outside the basic plane come as surrogates, whose category says nothing; they stay.
        if (character.category() != QChar::Mark_NonSpacing) {
            bare.append(character);
        }
    }
    // Upper case first takes the full mappings that simple folding lacks ("ß" becomes "SS"); folding then
    // makes one letter of the variants that upper case keeps apart.
    return bare.toUpper().toCaseFolded();
}

} // namespace VendelHost
