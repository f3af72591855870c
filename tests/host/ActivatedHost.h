// The served host as the test's session bus starts it on demand, from the build's activation file
// (XDG_DATA_DIRS names the build's share folder): its environment, and its end.
#pragma once

#include <QHash>
#include <QString>

namespace VendelHost::Testing {

class ActivatedHost
{
public:
    // What the bus gives the services it starts from now on, as a desktop session tells its bus.
    static bool setEnvironment(const QHash<QString, QString>& variables);
    // The process that serves org.vendel.Host now, or 0.
    static qint64 pid();
    // Ends the host that serves, if one does (SIGTERM), and waits until its name is gone; true then.
    static bool stop();
};

} // namespace VendelHost::Testing
