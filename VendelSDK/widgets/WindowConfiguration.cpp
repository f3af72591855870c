// The host opens a plugin's window from its own, often floating, window; the plugin's must not end up behind.
#include <VendelSDK/WindowConfiguration.h>

#include <QWidget>

namespace VendelSDK {

void WindowConfiguration::configure(QWidget& window)
{
    // Window systems have no numbered levels; staying on top is the highest level a client may ask for.
    window.setWindowFlag(Qt::WindowStaysOnTopHint, true);
}

} // namespace VendelSDK
