// Folding turns both sides into one spelling, so matching is a plain search for each word.
#include "TitleQuery.h"

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
    if (m_words.isEmpty()) {
        return true;
    }
    const QString folded = fold(title);
    for (const QString& word : m_words) {
        if (!folded.contains(word)) {
            return false;
        }
    }
    return true;
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
