// Application services on top of QCoreApplication, which needs no display and no GUI libraries.
#include <VendelSDK/QtApplicationServices.h>

#include <VendelSDK/TerminationSignals.h>

#include <QCoreApplication>

namespace VendelSDK {

QtApplicationServices::QtApplicationServices(QObject* parent) : ApplicationServices(parent)
{
    // An event loop that ends for another reason still gets its will-terminate hook, once.
    if (auto* app = QCoreApplication::instance()) {
        connect(app, &QCoreApplication::aboutToQuit, this, [this] {
            if (!m_terminated) {
                m_terminated = true;
                Q_EMIT willTerminate();
            }
        });
    }
}

QtApplicationServices::~QtApplicationServices() = default;

void QtApplicationServices::terminateOnSignals(std::function<void(int)> end)
{
    if (m_signals) {
        return;
    }
    m_end = end ? std::move(end) : std::function<void(int)>(&TerminationSignals::endAs);
    m_signals = std::make_unique<TerminationSignals>();
    connect(m_signals.get(), &TerminationSignals::received, this,
            [this](int number) { endBySignal(number); });
}

void QtApplicationServices::endBySignal(int number)
{
    // The hooks run already (a write at termination waiting for the host): they finish, and the process then
    // ends as the signal asked.
    if (m_terminated) {
        return;
    }
    m_terminating = true;
    m_terminated = true;
    Q_EMIT willTerminate();
    m_end(number);
    endEventLoop();
}

int QtApplicationServices::terminatingSignal() const
{
    // Known from the moment the signal arrives, so that one received while the hooks ran counts too.
    return m_signals ? m_signals->first() : 0;
}

void QtApplicationServices::terminate()
{
    if (m_terminating) {
        return;
    }
    m_terminating = true;
    // quit() before exec() is ignored; a queued call reaches the loop once it runs.
    postToMainThread([this] { endEventLoop(); });
}

void QtApplicationServices::endEventLoop()
{
    if (!m_terminated) {
        m_terminated = true;
        Q_EMIT willTerminate();
    }
    m_ended = true;
    QCoreApplication::exit(0);
}

int QtApplicationServices::exec()
{
    return m_ended ? 0 : QCoreApplication::exec();
}

void QtApplicationServices::postToMainThread(std::function<void()> work)
{
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

QList<WindowState> QtApplicationServices::windows() const
{
    return {};
}

void QtApplicationServices::finishLaunchingWhenLoopStarts()
{
    postToMainThread([this] { Q_EMIT didFinishLaunching(); });
}

} // namespace VendelSDK
