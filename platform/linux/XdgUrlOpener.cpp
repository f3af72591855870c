// Starts xdg-open detached: the command is one-way, and its handler may outlive this process.
#include "XdgUrlOpener.h"

#include <QProcess>
#include <QStringList>

namespace VendelSDK {

void XdgUrlOpener::open(const QString& url)
{
    QProcess::startDetached(QStringLiteral("xdg-open"), {url});
}

} // namespace VendelSDK
