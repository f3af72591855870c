// The one matcher of the desktop's searches: the actions whose titles hold every word typed, best first, a
// few at most. Results carry what a launcher shows (title, plugin's display name, icon), never a
// configuration.
#pragma once

#include "ActionEntries.h"
#include "TitleQuery.h"

#include <QStringList>

namespace VendelHost {

class ActionSearch
{
public:
    // A launcher shows a handful; more would only hide the best.
    static constexpr qsizetype maxResults = 20;
    // Longer queries, or ones with more words, are no search for a title but a paste or an attack: they
    // find nothing, without looking.
    static constexpr qsizetype maxQueryCharacters = 256;
    static constexpr qsizetype maxQueryWords = 16;

    struct Match
    {
        ActionEntry action;
        TitleQuery::Rank rank;
    };

    // The matches of the query in the actions, best rank first and then by title as people sort words (in
    // the user's language, numbers by value), at most maxResults. Nothing for an empty query, one longer
    // than maxQueryCharacters (in characters) or with more than maxQueryWords words.
    static QList<Match> find(const ActionEntries& actions, const QString& query);
    // The same for the query's words one by one, as GNOME Shell gives them.
    static QList<Match> find(const ActionEntries& actions, const QStringList& terms);
};

} // namespace VendelHost
