// The host's actions in KRunner: org.kde.krunner1 at /runner on the served host's bus name, which the bus
// starts on KRunner's first query. Matches come from ActionSearch; running and editing never wait.
#pragma once

#include "RemoteMatches.h"

#include <QDBusContext>
#include <QObject>

namespace VendelHost {

class SearchActions;

class KRunnerService : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    static constexpr auto objectPath = "/runner";
    // The one action a match offers besides running it.
    static constexpr auto editAction = "edit";

    KRunnerService(SearchActions& actions, QObject* parent = nullptr);

    // org.kde.krunner1, called by the adaptor.
    RemoteMatches Match(const QString& query);
    RemoteActions Actions();
    // Only an identifier the host made, with "" (run) or "edit"; anything else is an error. The plugin is
    // started before the answer, and what goes wrong after is told through the desktop's notifications.
    void Run(const QString& matchId, const QString& actionId);
    void Teardown();
    QVariantMap Config();

private:
    SearchActions& m_actions;
};

} // namespace VendelHost
