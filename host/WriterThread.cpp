// Every exception stops at the job that threw it: nothing escapes into the thread's event loop, which would
// end the whole host.
#include "WriterThread.h"

namespace VendelHost {

WriterThread::WriterThread(QString dataDirectory)
    : m_dataDirectory(std::move(dataDirectory)), m_context(std::make_unique<QObject>())
{
    m_thread.setObjectName(QStringLiteral("vendel-host writer"));
    m_context->moveToThread(&m_thread);
    m_thread.start();
}

WriterThread::~WriterThread()
{
    QMetaObject::invokeMethod(
        m_context.get(), [this] { m_storage.reset(); }, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

HostStorage& WriterThread::storage()
{
    if (!m_storage) {
        m_storage = std::make_unique<HostStorage>(m_dataDirectory);
    }
    return *m_storage;
}

WriterThread::Outcome WriterThread::run(const Job& job, const std::function<HostStorage&()>& storage) noexcept
{
    return capture([&] { return job(storage()); });
}

WriterThread::Outcome WriterThread::capture(const std::function<QVariantList()>& work) noexcept
{
    try {
        return {work(), nullptr};
    } catch (...) {
        return {{}, std::current_exception()};
    }
}

void WriterThread::post(Job job, QObject* receiver, Done done)
{
    QMetaObject::invokeMethod(
        m_context.get(),
        [this, job = std::move(job), receiver, done = std::move(done)]() mutable {
            Outcome outcome = run(job, [this]() -> HostStorage& { return storage(); });
            QMetaObject::invokeMethod(
                receiver, [done = std::move(done), outcome = std::move(outcome)] { done(outcome); },
                Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

} // namespace VendelHost
