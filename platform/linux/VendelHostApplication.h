// The application "Vendel" of the tell engine: the host's scripting commands, carried out over D-Bus.
#pragma once

#include <VendelSDK/ScriptEngine.h>

#include <chrono>
#include <optional>

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

    // What came back from the host: an error, or a method return with its arguments' signature and, when
    // that is one string, the string.
    struct Reply
    {
        QString errorName;
        QString errorMessage;
        QString signature;
        QString text;
    };

    // Without a time-out the D-Bus default applies, as it must in production; a test may shorten it.
    explicit VendelHostApplication(std::optional<std::chrono::milliseconds> timeout = std::nullopt);

    QStringList dictionary() const override;
    ScriptOutcome perform(qsizetype entry, const QStringList& arguments) override;

    // What a reply to the command means as a script outcome.
    static ScriptOutcome outcome(Command command, const Reply& reply);

    // The interface's method that each command calls, in the dictionary's order, with the signature of
    // the arguments it sends (one string for each "%s" of the pattern).
    struct Method
    {
        QString name;
        QString signature;
    };
    static QList<Method> methods();

private:
    std::optional<std::chrono::milliseconds> m_timeout;
};

} // namespace VendelSDK
