// Relevance follows the rank, and within a rank the order by title, so KRunner sorts the matches as the
// matcher did; an exact title is KRunner's exact match.
#include "KRunnerService.h"

#include "ActionSearch.h"
#include "HostError.h"
#include "HostInput.h"
#include "KRunnerAdaptor.h"
#include "SearchActions.h"

namespace VendelHost {

namespace {

// KRunner's kinds of match (Plasma::QueryMatch::Type).
constexpr int exactMatch = 100;
constexpr int possibleMatch = 30;
// Far enough apart that 20 matches within one rank, each a step lower, stay above the next rank.
constexpr double rankStep = 0.2;
constexpr double titleStep = 0.001;

} // namespace

KRunnerService::KRunnerService(SearchActions& actions, QObject* parent) : QObject(parent), m_actions(actions)
{
    registerRemoteMatchTypes();
    new KRunner1Adaptor(this);
}

RemoteMatches KRunnerService::Match(const QString& query)
{
    RemoteMatches matches;
    try {
        const QList<ActionSearch::Match> found = ActionSearch::find(m_actions.entries(), query);
        for (qsizetype index = 0; index < found.size(); ++index) {
            const ActionSearch::Match& match = found.at(index);
            const double relevance = 1.0 - rankStep * double(match.rank) - titleStep * double(index);
            matches.append({match.action.id,
                            match.action.title,
                            match.action.pluginIcon,
                            match.rank == TitleQuery::Rank::Exact ? exactMatch : possibleMatch,
                            relevance,
                            {{QStringLiteral("subtext"), match.action.pluginDisplayName},
                             {QStringLiteral("actions"), QStringList{QLatin1String(editAction)}}}});
        }
    } catch (const HostError& error) {
        sendErrorReply(QStringLiteral("org.vendel.Host1.Error.StorageFailed"), error.message());
    }
    return matches;
}

RemoteActions KRunnerService::Actions()
{
    //: KRunner's action that opens the action's plugin's editor, offered beside every match
    return {{QLatin1String(editAction), tr("Edit"), QStringLiteral("document-edit")}};
}

void KRunnerService::Run(const QString& matchId, const QString& actionId)
{
    if (!actionId.isEmpty() && actionId != QLatin1String(editAction)) {
        sendErrorReply(QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"),
                       QStringLiteral("\"%1\" is no action of this runner, which offers \"%2\".")
                           .arg(HostInput::escaped(actionId), QLatin1String(editAction)));
        return;
    }
    try {
        const auto action = m_actions.action(matchId);
        if (!action) {
            sendErrorReply(QStringLiteral("org.vendel.Actions1.Error.NoSuchAction"),
                           QStringLiteral("There is no action \"%1\".").arg(HostInput::escaped(matchId)));
            return;
        }
        m_actions.start(actionId.isEmpty() ? LaunchMessages::Verb::Run : LaunchMessages::Verb::Edit, *action);
    } catch (const HostError& error) {
        sendErrorReply(QStringLiteral("org.vendel.Host1.Error.StorageFailed"), error.message());
    }
}

void KRunnerService::Teardown()
{
    // Nothing of a match session is kept: each query reads the actions afresh.
}

QVariantMap KRunnerService::Config()
{
    return {};
}

} // namespace VendelHost
