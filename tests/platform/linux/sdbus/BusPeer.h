// The other end of the tests' calls: a connection of its own, on a thread of its own, with plain sd-bus.
#pragma once

#include <QString>

#include <pthread.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

struct sd_bus;
struct sd_bus_message;

namespace VendelSDK::Testing {

// Serves org.vendel.Test1 at /org/vendel/Test under the name org.vendel.TestPeer (a second peer queues for
// it), as another process would:
// Echo(s) answers its argument, Refuse() answers the error org.vendel.Test1.Error.Refused, Silent() is never
// answered. It does not use the layer under test, and blocks SIGUSR1 in its thread.
class BusPeer
{
public:
    static constexpr auto name = "org.vendel.TestPeer";
    static constexpr auto path = "/org/vendel/Test";
    static constexpr auto interface = "org.vendel.Test1";

    // Connects and serves before it returns; false from isReady() when the bus could not be reached.
    explicit BusPeer(const QString& address);
    ~BusPeer();
    BusPeer(const BusPeer&) = delete;
    BusPeer& operator=(const BusPeer&) = delete;

    bool isReady() const { return m_ready; }
    QString uniqueName() const;

    // Runs in the peer's thread before each call is answered (or left unanswered); set it before the call.
    std::function<void(const QString& member)> onCall;
    // Every call the peer was given, by member name.
    int calls(const QString& member) const;

    // Emits the signal org.vendel.Test1.Changed(s) from the peer's thread.
    void emitChanged(const QString& text);
    // What a call made from the peer's thread answered: the reply's string, or the error's name.
    struct Answer
    {
        bool isError = false;
        QString text;
    };
    // Calls `member`(s) of `callPath`/`callInterface` at `destination` from the peer's thread; answers()
    // holds what each answered, in the order the calls were made.
    void callLater(const QString& destination, const char* callPath, const char* callInterface,
                   const char* member, const QString& argument);
    std::vector<Answer> answers() const;

    // Runs `job` in the peer's thread, after the jobs posted before it.
    void post(std::function<void()> job);

    // Answers a call of the peer's table, in its thread.
    int answer(sd_bus_message* call);

private:
    void run(const QString& address);

    sd_bus* m_bus = nullptr;
    std::atomic<bool> m_ready{false};
    std::atomic<bool> m_stop{false};
    int m_wake = -1;
    mutable std::mutex m_mutex;
    std::vector<std::function<void()>> m_jobs;
    std::vector<QString> m_calls;
    std::vector<Answer> m_answers;
    QString m_uniqueName;
    std::thread m_thread;
};

// The test's own harmless signal: SIGUSR1 with a handler that only counts.
namespace SignalBurst {

// Installs the counting handler (without SA_RESTART, as most programs install theirs).
void install();
int handled();
// Sends `count` SIGUSR1 to `thread`, each once the one before has been handled there, so that none is
// merged into another; returns how many were handled.
int send(pthread_t thread, int count);

} // namespace SignalBurst

} // namespace VendelSDK::Testing
