// The host's actions in GNOME Shell's search: org.gnome.Shell.SearchProvider2 at its own object path on the
// served host's bus name, named by the key file that GNOME Shell reads. Results come from ActionSearch.
#pragma once

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace VendelHost {

class SearchActions;

class ShellSearchProvider : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    static constexpr auto objectPath = "/org/vendel/Host/SearchProvider";
    // GNOME Shell asks for a screenful at a time; more in one call is no shell.
    static constexpr qsizetype maxMetas = 50;

    explicit ShellSearchProvider(SearchActions& actions, QObject* parent = nullptr);

    // org.gnome.Shell.SearchProvider2, called by the adaptor.
    QStringList GetInitialResultSet(const QStringList& terms);
    // The earlier results only, matched again.
    QStringList GetSubsearchResultSet(const QStringList& previousResults, const QStringList& terms);
    QList<QVariantMap> GetResultMetas(const QStringList& identifiers);
    void ActivateResult(const QString& identifier, const QStringList& terms, uint timestamp);
    // Opens the host's window filtered by the terms: `vendel-host window -- <terms>`, an argument vector,
    // never a shell.
    void LaunchSearch(const QStringList& terms, uint timestamp);

private:
    QStringList resultsAmong(const QStringList& terms, const std::optional<QStringList>& among);

    SearchActions& m_actions;
};

} // namespace VendelHost
