// The typed front to the host's scripting commands: builds each command text and reads its answer.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <optional>

namespace VendelSDK {

/// The host's scripting commands, each a method that sends its command and reads the answer. The providers
/// take one, so that a test may hand them a subclass; VendelSDK::Testing::ScriptedHost answers the texts.
///
/// Every operation throws an SDK error: 1 when the script failed or an argument could not be sent safely, 2
/// when a reading command got no text back. The static functions give the command texts, exactly as sent:
/// nothing when a text inserted without escaping (an identifier, a path) holds a double quote, a backslash or
/// a control character and so could end the string.
class VENDELSDK_EXPORT VendelAPI
{
public:
    VendelAPI() = default;
    virtual ~VendelAPI() = default;
    VendelAPI(const VendelAPI&) = delete;
    VendelAPI& operator=(const VendelAPI&) = delete;

    /// Reads the plugin-wide configuration text.
    virtual QString getGlobalConfig();
    /// Writes the plugin-wide configuration text.
    virtual void setGlobalConfig(const QString& config);
    /// Reads the configuration text of an action.
    virtual QString getConfig(const QString& actionID);
    /// Writes the configuration text of an action.
    virtual void setConfig(const QString& config, const QString& actionID);
    /// The folder where the host keeps its plugins.
    virtual QString getPluginFolderPath();
    /// Where the host has the named plugin; none when it has not.
    virtual std::optional<QString> getPathOfPlugin(const QString& plugin);
    /// Whether the plugin at the path is installed.
    virtual bool isPluginInstalled(const QString& atPath);
    /// Installs the running plugin (Platform::mainBundle()).
    virtual void installPlugin();

    /// The text of getGlobalConfig() for the plugin `bundleID`.
    static std::optional<QString> getGlobalConfigCommand(const QString& bundleID);
    /// The text of setGlobalConfig().
    static std::optional<QString> setGlobalConfigCommand(const QString& config, const QString& bundleID);
    /// The text of getConfig().
    static std::optional<QString> getConfigCommand(const QString& actionID);
    /// The text of setConfig().
    static std::optional<QString> setConfigCommand(const QString& config, const QString& actionID);
    /// The text of getPluginFolderPath().
    static QString getPluginFolderPathCommand();
    /// The text of getPathOfPlugin().
    static std::optional<QString> getPathOfPluginCommand(const QString& plugin);
    /// The text of isPluginInstalled().
    static std::optional<QString> isPluginInstalledCommand(const QString& atPath);
    /// The text of installPlugin().
    static QString installPluginCommand();

    /// Makes any text a valid string literal body: backslashes doubled first, then quotes escaped.
    static QString escaped(const QString& text);
    /// Whether the text can stand between double quotes as it is.
    static bool isSafeUnescaped(const QString& text);
};

} // namespace VendelSDK
