// A Qt test run by ScriptedHostTest in a child process, so that a failure of its own can be watched from
// outside.
#include <VendelSDK/Testing/ScriptedHost.h>

#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/VendelAPI.h>

#include <QTest>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

class ScriptedHostProbe : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Platform::reset(); }

    void matchingCommand()
    {
        ScriptedHost host;
        host.install();
        host.expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(QStringLiteral("{}")));
        QCOMPARE(VendelAPI().getConfig(QStringLiteral("A1")), QStringLiteral("{}"));
    }

    void differingCommand()
    {
        ScriptedHost host;
        host.install();
        host.expectGetConfig(QStringLiteral("A1"), ScriptedHost::text(QStringLiteral("{}")));
        try {
            VendelAPI().getConfig(QStringLiteral("B2"));
        } catch (const Error&) {
            // The mismatch is answered as a failed script; the test has failed already.
        }
    }

    void commandBeyondTheScript()
    {
        ScriptedHost host;
        host.install();
        try {
            VendelAPI().installPlugin();
        } catch (const Error&) {
        }
    }
};

QTEST_GUILESS_MAIN(ScriptedHostProbe)
#include "ScriptedHostProbe.moc"
