// The window's process, which `vendel-host window` becomes: it shows the actions and asks the served host,
// over the session bus, for everything it does.
#include "ActionsClient.h"
#include "HostTranslations.h"
#include "HostWindow.h"

#include <QApplication>
#include <QDBusConnection>
#include <QIcon>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("org.vendel.Actions"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("org.vendel.Actions"),
                                                 QIcon(QStringLiteral(":/icons/org.vendel.Actions.png"))));
    VendelHost::HostTranslations::install();

    // `vendel-host window` checks the command line and passes the filter as one argument.
    QString filter;
    const QStringList arguments = QApplication::arguments().mid(1);
    const QString prefix = QStringLiteral("--filter=");
    if (arguments.size() == 1 && arguments.constFirst().startsWith(prefix)) {
        filter = arguments.constFirst().mid(prefix.size());
    } else if (!arguments.isEmpty()) {
        std::fputs("vendel-host-window: start the window with 'vendel-host window'.\n", stderr);
        return 2;
    }

    VendelHost::ActionsClient client(QDBusConnection::sessionBus());
    VendelHost::HostWindow window(client);
    window.setFilter(filter);
    window.show();
    client.refresh();
    return QApplication::exec();
}
