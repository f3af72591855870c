// The window keeps this process's identifier and standard streams, so whoever started `vendel-host window`
// waits for the window and sees its exit status.
#include "WindowCommand.h"

#include "HostError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace VendelHost {

QString WindowCommand::executable()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u'/' +
                           QLatin1String(VENDEL_HOST_WINDOW_RELATIVE_PATH));
}

void WindowCommand::exec(const QString& filter)
{
    // Without a display the toolkit would abort; a person deserves a sentence instead.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        throw HostError(QStringLiteral(
            "The window needs a display, and neither DISPLAY nor WAYLAND_DISPLAY is set; the other commands "
            "work without one."));
    }
    const QByteArray program = QFile::encodeName(executable());
    QList<QByteArray> arguments{program};
    if (!filter.isEmpty()) {
        // One argument: the toolkit reads options such as -reverse from the command line, never this one.
        arguments.append(QByteArrayLiteral("--filter=") + filter.toUtf8());
    }
    QList<char*> argv;
    for (QByteArray& argument : arguments) {
        argv.append(argument.data());
    }
    argv.append(nullptr);
    ::execv(program.constData(), argv.data());
    throw HostError(QStringLiteral("Cannot start the window %1: %2")
                        .arg(QString::fromLocal8Bit(program), QString::fromLocal8Bit(std::strerror(errno))));
}

} // namespace VendelHost
