// The application "Vendel" of the tell engine: the host's scripting commands, carried out over D-Bus.
#pragma once

#include "ScriptApplication.h"

#include <chrono>
#include <memory>
#include <optional>

class QDBusMessage;
class VendelHostProxy;

namespace VendelSDK {

// Each command calls one method of the interface org.vendel.Host1 of the object /org/vendel/Host, owned by
// org.vendel.Host on the session bus (platform/linux/dbus/org.vendel.Host1.xml). Calls block the calling
// thread, as scripts are synchronous, and may start the host through D-Bus activation.
//
// How a reply reads:
// - one string: the result text, unchanged (the empty text included);
// - no arguments: no result;
// - GetPathOfPlugin failing with org.vendel.Host1.Error.NoSuchPlugin: no result, as the host's way of
//   saying that it knows no such plugin;
// - any other shape of reply: error -1700 "Can’t make some data into the expected type.";
// - org.freedesktop.DBus.Error.ServiceUnknown or NameHasNoOwner: error -600 "Application isn't running.";
// - org.freedesktop.DBus.Error.NoReply: error -1712 "AppleEvent timed out.";
// - any other error: error -10000 with the error's message (its name when the message is empty).
// Every error record holds the same text as message and brief message.
class VendelHostApplication final : public ScriptApplication
{
public:
    // The dictionary's entries, in order.
    enum Command : qsizetype
    {
        getGlobalConfig,
        setGlobalConfig,
        getConfig,
        setConfig,
        getPluginFolderPath,
        getPathOfPlugin,
        isPluginInstalled,
        installPlugin,
    };

    static constexpr qint64 applicationIsNotRunning = -600;
    static constexpr qint64 timedOut = -1712;
    static constexpr qint64 unexpectedReply = -1700;
    static constexpr qint64 hostFailed = -10000;

    // Without a time-out the D-Bus default applies, as it must in production; a test may shorten it.
    explicit VendelHostApplication(std::optional<std::chrono::milliseconds> timeout = std::nullopt);
    ~VendelHostApplication() override;
    VendelHostApplication(const VendelHostApplication&) = delete;
    VendelHostApplication& operator=(const VendelHostApplication&) = delete;

    QStringList dictionary() const override;
    ScriptOutcome perform(qsizetype entry, const QStringList& arguments) override;

    // What a reply to the command means as a script outcome.
    static ScriptOutcome outcome(Command command, const QDBusMessage& reply);

private:
    VendelHostProxy& proxy();

    std::optional<std::chrono::milliseconds> m_timeout;
    std::unique_ptr<VendelHostProxy> m_proxy;
};

} // namespace VendelSDK
