// Icons are serialised as GLib serialises a GIcon: ("themed", <[names]>) for a themed icon, with the generic
// one as its fallback, or ("file", <uri>) for a file.
#include "ShellSearchProvider.h"

#include "ActionSearch.h"
#include "HostError.h"
#include "HostInput.h"
#include "SearchActions.h"
#include "ShellSearchAdaptor.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QDir>
#include <QProcess>
#include <QUrl>

#include <optional>

namespace VendelHost {

namespace {

constexpr auto invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";
constexpr auto storageFailed = "org.vendel.Host1.Error.StorageFailed";

QVariant serialisedIcon(const QString& icon)
{
    QDBusArgument serialised;
    serialised.beginStructure();
    if (QDir::isAbsolutePath(icon)) {
        serialised << QStringLiteral("file") << QDBusVariant(QUrl::fromLocalFile(icon).toString());
    } else {
        const QString generic = QStringLiteral("application-x-executable");
        serialised << QStringLiteral("themed")
                   << QDBusVariant(icon == generic ? QStringList{icon} : QStringList{icon, generic});
    }
    serialised.endStructure();
    return QVariant::fromValue(serialised);
}

} // namespace

ShellSearchProvider::ShellSearchProvider(SearchActions& actions, QObject* parent)
    : QObject(parent), m_actions(actions)
{
    new SearchProvider2Adaptor(this);
}

QStringList ShellSearchProvider::resultsAmong(const QStringList& terms,
                                              const std::optional<QStringList>& among)
{
    QStringList results;
    try {
        ActionEntries entries = m_actions.entries();
        if (among) {
            entries.removeIf([&](const ActionEntry& entry) { return !among->contains(entry.id); });
        }
        for (const ActionSearch::Match& match : ActionSearch::find(entries, terms)) {
            results.append(match.action.id);
        }
    } catch (const HostError& error) {
        sendErrorReply(QLatin1String(storageFailed), error.message());
    }
    return results;
}

QStringList ShellSearchProvider::GetInitialResultSet(const QStringList& terms)
{
    return resultsAmong(terms, std::nullopt);
}

QStringList ShellSearchProvider::GetSubsearchResultSet(const QStringList& previousResults,
                                                       const QStringList& terms)
{
    return resultsAmong(terms, previousResults);
}

QList<QVariantMap> ShellSearchProvider::GetResultMetas(const QStringList& identifiers)
{
    if (identifiers.size() > maxMetas) {
        sendErrorReply(QLatin1String(invalidArguments),
                       QStringLiteral("%1 identifiers were asked for; at most %2 are described in one call.")
                           .arg(identifiers.size())
                           .arg(maxMetas));
        return {};
    }
    QList<QVariantMap> metas;
    try {
        // Identifiers the host does not know (an action deleted since the search) are left out.
        for (const ActionEntry& entry : m_actions.entries()) {
            if (identifiers.contains(entry.id)) {
                metas.append({{QStringLiteral("id"), entry.id},
                              {QStringLiteral("name"), entry.title},
                              {QStringLiteral("description"), entry.pluginDisplayName},
                              {QStringLiteral("icon"), serialisedIcon(entry.pluginIcon)}});
            }
        }
    } catch (const HostError& error) {
        sendErrorReply(QLatin1String(storageFailed), error.message());
    }
    return metas;
}

void ShellSearchProvider::ActivateResult(const QString& identifier, const QStringList&, uint)
{
    try {
        const auto action = m_actions.action(identifier);
        if (!action) {
            sendErrorReply(QStringLiteral("org.vendel.Actions1.Error.NoSuchAction"),
                           QStringLiteral("There is no action \"%1\".").arg(HostInput::escaped(identifier)));
            return;
        }
        m_actions.start(LaunchMessages::Verb::Run, *action);
    } catch (const HostError& error) {
        sendErrorReply(QLatin1String(storageFailed), error.message());
    }
}

void ShellSearchProvider::LaunchSearch(const QStringList& terms, uint)
{
    if (terms.size() > ActionSearch::maxQueryWords ||
        terms.join(u' ').toUcs4().size() > ActionSearch::maxQueryCharacters) {
        sendErrorReply(QLatin1String(invalidArguments),
                       QStringLiteral("A search of more than %1 words or %2 characters finds no title.")
                           .arg(ActionSearch::maxQueryWords)
                           .arg(ActionSearch::maxQueryCharacters));
        return;
    }
    // Words after "--" are the filter's, whatever they look like.
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                 QStringList{QStringLiteral("window"), QStringLiteral("--")} + terms)) {
        sendErrorReply(QStringLiteral("org.freedesktop.DBus.Error.Failed"),
                       QStringLiteral("The host's window could not be started."));
    }
}

} // namespace VendelHost
