// Sorting is stable, so actions of equal rank and equal title keep the order they were made in.
#include "ActionSearch.h"

#include <algorithm>

namespace VendelHost {

QList<ActionSearch::Match> ActionSearch::find(const ActionEntries& actions, const QString& query)
{
    if (query.toUcs4().size() > maxQueryCharacters) {
        return {};
    }
    const TitleQuery words(query);
    if (words.isEmpty() || words.words().size() > maxQueryWords) {
        return {};
    }
    QList<Match> found;
    for (const ActionEntry& action : actions) {
        if (const auto rank = words.rank(action.title)) {
            found.append({action, *rank});
        }
    }
    const QCollator collator = TitleQuery::titleOrder();
    std::stable_sort(found.begin(), found.end(), [&](const Match& left, const Match& right) {
        if (left.rank != right.rank) {
            return left.rank < right.rank;
        }
        return collator.compare(left.action.title, right.action.title) < 0;
    });
    if (found.size() > maxResults) {
        found.resize(maxResults);
    }
    return found;
}

QList<ActionSearch::Match> ActionSearch::find(const ActionEntries& actions, const QStringList& terms)
{
    if (terms.size() > maxQueryWords) {
        return {};
    }
    return find(actions, terms.join(u' '));
}

} // namespace VendelHost
