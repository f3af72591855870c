// Runs the stand-in host as its own process on the test's session bus and drives its control interface.
#pragma once

#include <QDBusMessage>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <QVariantList>

namespace VendelSDK::Testing {

class TestHostProcess
{
public:
    TestHostProcess() = default;
    ~TestHostProcess() { stop(); }
    TestHostProcess(const TestHostProcess&) = delete;
    TestHostProcess& operator=(const TestHostProcess&) = delete;

    // Starts the host unless it runs, and waits until its name is on the bus.
    bool start();
    // Ends the host and waits until its name is gone.
    bool stop();

    static bool isRunning();
    // Calls a method of the control interface and hands back the reply, errors included.
    static QDBusMessage control(const QString& method, const QVariantList& arguments = {});
    // The same, true when the host answered without an error.
    static bool controlled(const QString& method, const QVariantList& arguments = {});
    // Every call the host received since the last reset: the method's name, then its arguments.
    static QList<QStringList> calls();

private:
    QProcess m_process;
};

} // namespace VendelSDK::Testing
