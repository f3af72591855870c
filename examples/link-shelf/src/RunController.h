// A run: hands the action's links, with those every action adds, to the host in one "add-resources" command.
#pragma once

#include <QString>

namespace LinkShelf {

class RunController
{
public:
    explicit RunController(QString actionID);

    // Reads both link sets from the host, sends the command, then asks the application to terminate, which
    // the host waits for. A failure is told in one alert first; then nothing is sent.
    void run();

private:
    QString m_actionID;
};

} // namespace LinkShelf
