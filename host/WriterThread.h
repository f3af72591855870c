// Runs storage jobs one after another on a thread of their own, with a database connection made there.
#pragma once

#include "HostStorage.h"

#include <QObject>
#include <QThread>
#include <QVariantList>

#include <exception>
#include <functional>
#include <memory>

namespace VendelHost {

class WriterThread
{
public:
    // What a job gave back, or what it threw instead; exactly one of the two is set.
    struct Outcome
    {
        QVariantList values;
        std::exception_ptr failure;
    };
    using Job = std::function<QVariantList(HostStorage&)>;
    using Done = std::function<void(Outcome)>;

    // The connection is opened for writing in the folder on the first job, on the writer thread.
    explicit WriterThread(QString dataDirectory);
    // Finishes the jobs already queued, and closes the connection on its own thread.
    ~WriterThread();
    WriterThread(const WriterThread&) = delete;
    WriterThread& operator=(const WriterThread&) = delete;

    // Runs the job after those queued before it, then hands its outcome to `done` on the receiver's
    // thread. A job that throws, whatever it throws, fails alone: the thread goes on with the next one.
    // The receiver must outlive this object.
    void post(Job job, QObject* receiver, Done done);

    // Runs the job here and now, catching whatever it throws, the opening of storage included.
    static Outcome run(const Job& job, const std::function<HostStorage&()>& storage) noexcept;
    // Runs the work here and now, catching whatever it throws.
    static Outcome capture(const std::function<QVariantList()>& work) noexcept;

private:
    HostStorage& storage();

    QString m_dataDirectory;
    QThread m_thread;
    std::unique_ptr<QObject> m_context;
    // Used on the writer thread only, where its connection was made.
    std::unique_ptr<HostStorage> m_storage;
};

} // namespace VendelHost
