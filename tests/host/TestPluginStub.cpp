// A stand-in plugin for the host's tests: records how it was launched, installs itself when started bare.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

// VENDEL_STUB_RECORD: a file to which each launch appends its arguments, one line per launch.
// VENDEL_STUB_HOLD: a FIFO; after recording, the launch waits until no one holds the FIFO open for writing
// (it does not wait at all when no one does), so a test decides when its launches end.
// VENDEL_STUB_DONE: a file to which each launch appends its arguments when it has stopped waiting.
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
    const QByteArray hold = qgetenv("VENDEL_STUB_HOLD");
    if (!hold.isEmpty()) {
        // Opened without waiting for a writer; reading then waits only while a writer holds it open.
        const int fifo = ::open(hold.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (fifo >= 0) {
            ::fcntl(fifo, F_SETFL, ::fcntl(fifo, F_GETFL) & ~O_NONBLOCK);
            char byte = 0;
            ssize_t got = 0;
            do {
                got = ::read(fifo, &byte, 1);
            } while (got < 0 && errno == EINTR);
            ::close(fifo);
        }
    }
    const QString done = qEnvironmentVariable("VENDEL_STUB_DONE");
    if (!done.isEmpty()) {
        QFile file(done);
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
