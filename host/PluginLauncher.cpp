// The host runs the plugin's executable itself rather than through the desktop's URL opener, so a launch
// reaches exactly the installed plugin and the caller learns how it ended.
#include "PluginLauncher.h"

#include "HostError.h"

#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace VendelHost {

namespace {

QString launchUrl(const char* verb, const QString& actionID)
{
    // The identifier is one path segment, so everything but unreserved characters is percent-encoded.
    return QStringLiteral("vendelplugin://%1/%2")
        .arg(QLatin1String(verb), QString::fromLatin1(QUrl::toPercentEncoding(actionID)));
}

} // namespace

void PluginLauncher::checkExecutable(const QString& executable)
{
    const QFileInfo file(executable);
    if (!file.exists()) {
        throw HostError(QStringLiteral("The plugin's executable %1 is missing; install the plugin again.")
                            .arg(executable));
    }
    if (!file.isFile() || !file.isExecutable()) {
        throw HostError(QStringLiteral("The plugin's executable %1 cannot be run.").arg(executable));
    }
}

std::optional<QString> PluginLauncher::endProblem(const QString& executable, const QString& url,
                                                  int exitStatus, int signal)
{
    if (signal > 0) {
        return QStringLiteral("%1 crashed while handling %2 (signal %3).").arg(executable, url).arg(signal);
    }
    if (signal < 0) {
        return QStringLiteral("%1 crashed while handling %2.").arg(executable, url);
    }
    if (exitStatus < 0) {
        return QStringLiteral("%1 ended while handling %2, and how is not known.").arg(executable, url);
    }
    if (exitStatus != 0) {
        return QStringLiteral("%1 failed on %2 (exit status %3).").arg(executable, url).arg(exitStatus);
    }
    return std::nullopt;
}

QString PluginLauncher::timeLimitProblem(const QString& executable, const QString& url,
                                         std::chrono::milliseconds timeout)
{
    return QStringLiteral("%1 did not finish %2 within %3 s; it was stopped.")
        .arg(executable, url)
        .arg(static_cast<double>(timeout.count()) / 1000.0);
}

QString PluginLauncher::runUrl(const QString& actionID)
{
    return launchUrl("run", actionID);
}

QString PluginLauncher::editUrl(const QString& actionID)
{
    return launchUrl("edit", actionID);
}

QString PluginLauncher::configureUrl(const QString& plugin)
{
    return launchUrl("configure", plugin);
}

void PluginLauncher::runAndWait(const QString& executable, const QString& url,
                                std::chrono::milliseconds timeout)
{
    checkExecutable(executable);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(executable, {url});
    if (!process.waitForStarted()) {
        throw HostError(QStringLiteral("Cannot start %1: %2").arg(executable, process.errorString()));
    }
    if (!process.waitForFinished(static_cast<int>(timeout.count()))) {
        process.kill();
        process.waitForFinished();
        throw HostError(timeLimitProblem(executable, url, timeout));
    }
    // QProcess does not say which signal ended a crashed plugin.
    const bool crashed = process.exitStatus() == QProcess::CrashExit;
    if (const auto problem =
            endProblem(executable, url, crashed ? -1 : process.exitCode(), crashed ? -1 : 0)) {
        throw HostError(*problem);
    }
}

qint64 PluginLauncher::startDetached(const QString& executable, const QString& url)
{
    checkExecutable(executable);
    qint64 pid = 0;
    if (!QProcess::startDetached(executable, {url}, QString(), &pid)) {
        throw HostError(QStringLiteral("Cannot start %1.").arg(executable));
    }
    return pid;
}

} // namespace VendelHost
