// A launch is refused before anything starts, or started and later reported once; the counts change only on
// the event loop's thread.
#include "Launches.h"

#include "HostError.h"
#include "PluginLauncher.h"
#include "PluginProcess.h"

#include <QTimer>

namespace VendelHost {

struct Launches::Launch
{
    Request request;
    std::unique_ptr<PluginProcess> process;
    std::unique_ptr<QTimer> timeLimit;
    bool stoppedAtLimit = false;
};

Launches::Launches(std::chrono::milliseconds runTimeLimit, QObject* parent)
    : QObject(parent), m_runTimeLimit(runTimeLimit)
{}

Launches::~Launches() = default;

QString Launches::verbName(Verb verb)
{
    switch (verb) {
    case Verb::Run:
        return QStringLiteral("run");
    case Verb::Edit:
        return QStringLiteral("edit");
    case Verb::Configure:
        break;
    }
    return QStringLiteral("configure");
}

QString Launches::url(const Request& request)
{
    switch (request.verb) {
    case Verb::Run:
        return PluginLauncher::runUrl(request.actionID);
    case Verb::Edit:
        return PluginLauncher::editUrl(request.actionID);
    case Verb::Configure:
        break;
    }
    return PluginLauncher::configureUrl(request.plugin);
}

quint64 Launches::start(const Request& request)
{
    if (request.verb == Verb::Run && m_runningActions.contains(request.actionID)) {
        throw Refusal{Refusal::AlreadyRunning,
                      QStringLiteral("\"%1\" is running already; it can run again when this run has ended.")
                          .arg(request.label)};
    }
    if (running() >= maxProcesses) {
        throw Refusal{Refusal::TooMany,
                      QStringLiteral("%1 plugins are running, the most the host starts at once, "
                                     "so \"%2\" was not started; try again when one has ended.")
                          .arg(maxProcesses)
                          .arg(request.label)};
    }
    auto launch = std::make_unique<Launch>();
    launch->request = request;
    try {
        PluginLauncher::checkExecutable(request.executable);
        launch->process = std::make_unique<PluginProcess>(request.executable, url(request));
    } catch (const HostError& error) {
        throw Refusal{Refusal::FailedToStart, error.message()};
    }
    const quint64 number = ++m_lastNumber;
    connect(launch->process.get(), &PluginProcess::finished, this,
            [this, number](int exitStatus, int signal) { finish(number, exitStatus, signal); });
    if (request.verb == Verb::Run) {
        m_runningActions.insert(request.actionID);
        launch->timeLimit = std::make_unique<QTimer>();
        launch->timeLimit->setSingleShot(true);
        Launch* running = launch.get();
        connect(launch->timeLimit.get(), &QTimer::timeout, this, [running] {
            running->stoppedAtLimit = true;
            running->process->kill();
        });
        launch->timeLimit->start(m_runTimeLimit);
    }
    m_launches.emplace(number, std::move(launch));
    return number;
}

void Launches::finish(quint64 number, int exitStatus, int signal)
{
    const auto found = m_launches.find(number);
    if (found == m_launches.end()) {
        return;
    }
    const std::unique_ptr<Launch> launch = std::move(found->second);
    m_launches.erase(found);
    if (launch->request.verb == Verb::Run) {
        m_runningActions.remove(launch->request.actionID);
    }
    Outcome outcome;
    outcome.launch = number;
    outcome.request = launch->request;
    outcome.exitStatus = exitStatus;
    const QString launchUrl = url(launch->request);
    if (launch->stoppedAtLimit) {
        outcome.failure =
            PluginLauncher::timeLimitProblem(launch->request.executable, launchUrl, m_runTimeLimit);
    } else if (const auto problem =
                   PluginLauncher::endProblem(launch->request.executable, launchUrl, exitStatus, signal)) {
        outcome.failure = *problem;
    }
    // The process object sent the signal that led here: it is deleted once that has returned, or with
    // this object, should the event loop end first.
    PluginProcess* process = launch->process.release();
    process->setParent(this);
    process->deleteLater();
    Q_EMIT ended(outcome);
}

} // namespace VendelHost
