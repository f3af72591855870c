// Runs one configured action: reads its record from the host, tells the player, and ends the application.
#pragma once

#include <QString>

namespace MusicPlugin {

class RunActionController
{
public:
    explicit RunActionController(QString actionID) : m_actionID(std::move(actionID)) {}

    // Every path, after any alert has been dismissed, ends by asking the application to terminate.
    void run();
    // A modal alert for an error of the plugin's own, in the application's domain.
    static void showRunError(const QString& message);

    const QString& actionID() const { return m_actionID; }

private:
    QString m_actionID;
};

} // namespace MusicPlugin
