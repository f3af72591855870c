// A stand-in plugin for the host's tests: records how it was launched, installs itself when started bare.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

// VENDEL_STUB_RECORD: a file to which each launch appends its arguments, one line per launch.
// VENDEL_STUB_EXIT: the exit status to end with. VENDEL_STUB_HANG: never end. VENDEL_STUB_CRASH: abort.
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);

    const QString record = qEnvironmentVariable("VENDEL_STUB_RECORD");
    if (!record.isEmpty()) {
        QFile file(record);
        if (file.open(QIODevice::Append)) {
            file.write(arguments.join(u' ').toUtf8() + '\n');
        }
    }
    if (qEnvironmentVariableIsSet("VENDEL_STUB_HANG")) {
        for (;;) {
            pause();
        }
    }
    if (qEnvironmentVariableIsSet("VENDEL_STUB_CRASH")) {
        std::abort();
    }
    if (arguments.isEmpty()) {
        // Started without a launch URL, a plugin asks the host to install it, as a real one does.
        const QDBusMessage reply = QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
            QStringLiteral("org.vendel.Host"), QStringLiteral("/org/vendel/Host"),
            QStringLiteral("org.vendel.Host1"), QStringLiteral("InstallPlugin")));
        if (reply.type() != QDBusMessage::ReplyMessage) {
            std::fprintf(stderr, "install failed: %s\n", qPrintable(reply.errorMessage()));
            return 1;
        }
    }
    return qEnvironmentVariableIntValue("VENDEL_STUB_EXIT");
}
