// The plugin's wiring: its launch handlers on the SDK's plugin object, and the windows they open.
#pragma once

#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace VendelSDK {
class VendelPlugin;
}

namespace LinkShelf {

class LinkSetWindow;

class LinkShelfPlugin : public QObject
{
    Q_OBJECT

public:
    // Assigns every handler of the plugin's controller, and dispatches the launch URLs that the platform
    // delivers to the running application. `windowsAvailable` is false in a process without a display:
    // an edit or configure launch then tells the user so and ends.
    LinkShelfPlugin(VendelSDK::VendelPlugin& plugin, bool windowsAvailable);
    ~LinkShelfPlugin() override;

    // A launch URL, at start or from a later launch; no URL dispatches nothing.
    void handleLaunchURL(const std::optional<QString>& url);
    // Whether this instance serves a later launch: not while it terminates, nor one that needs windows
    // when it has none. An accepted launch is dispatched from the event loop.
    bool acceptLaunch(const std::optional<QString>& url);

    void run(const QString& actionID);
    void openEditor(const QString& actionID);
    void openPreferences();

    // Every window opened, in order; each lives as long as the plugin object.
    const std::vector<std::unique_ptr<LinkSetWindow>>& windows() const { return m_windows; }

private:
    bool canOpenWindows();
    void show(std::unique_ptr<LinkSetWindow> window);

    VendelSDK::VendelPlugin& m_plugin;
    bool m_windowsAvailable;
    std::vector<std::unique_ptr<LinkSetWindow>> m_windows;
};

} // namespace LinkShelf
