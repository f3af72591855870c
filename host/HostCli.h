// The host's command line: actions, their configuration, launches, plugins, command URLs and serving.
#pragma once

#include "HostStorage.h"

#include <QStringList>
#include <QTextStream>
#include <QVariantList>

#include <memory>

namespace VendelHost {

class HostCli
{
public:
    static constexpr int success = 0;
    // The request was understood but could not be carried out.
    static constexpr int failure = 1;
    // The command line itself is wrong.
    static constexpr int usageError = 2;

    HostCli(QTextStream& out, QTextStream& err) : m_out(out), m_err(err) {}

    // Carries out one command line (without the program's name) and returns the exit status.
    int run(const QStringList& arguments);
    // The same from the bytes the system passed: an argument that is not UTF-8 is a wrong command line,
    // never replaced by stand-in characters.
    int run(const QList<QByteArray>& arguments);

    static QString usage();

private:
    int dispatch(const QStringList& arguments);
    int action(const QStringList& arguments);
    int listActions(const QStringList& arguments);
    int runAction(const QStringList& arguments);
    int editAction(const QString& id);
    int configurePlugin(const QString& name);
    int config(const QStringList& arguments);
    int listPlugins(const QStringList& arguments);
    int listResources(const QStringList& arguments);
    // One value per column: texts, and numbers that JSON keeps as numbers.
    using Row = QVariantList;
    // Prints rows as a table with control characters shown escaped, or as a JSON array of objects.
    void print(const QList<Row>& rows, const QStringList& keys, bool json);
    int openCommandUrl(const QString& url);
    int openLaunchUrl(const QString& url);
    int serve();

    // Opened on first use; a command that only reads opens it for reading only.
    HostStorage& storage(HostStorage::Access access = HostStorage::Access::ReadOnly);
    HostStorage::Action existingAction(const QString& id);
    HostStorage::Plugin installedPlugin(const QString& name);
    // The one action with exactly this title; throws HostError naming them all when there are several.
    HostStorage::Action actionTitled(const QString& title);
    // Throws a usage error for a title that cannot be kept.
    static void checkTitle(const QString& title);
    int usageFailure(const QString& message);

    QTextStream& m_out;
    QTextStream& m_err;
    std::unique_ptr<HostStorage> m_storage;
    HostStorage::Access m_storageAccess = HostStorage::Access::ReadOnly;
};

} // namespace VendelHost
