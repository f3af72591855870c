// The typed front to the host's scripting commands: builds each command text and reads its answer.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>

#include <optional>

namespace VendelSDK {

class VENDELSDK_EXPORT VendelAPI
{
public:
    VendelAPI() = default;
    virtual ~VendelAPI() = default;
    VendelAPI(const VendelAPI&) = delete;
    VendelAPI& operator=(const VendelAPI&) = delete;

    // Every operation throws an SDK error: 1 when the script failed or an argument could not be
    // sent safely, 2 when a reading command got no text back.
    virtual QString getGlobalConfig();
    virtual void setGlobalConfig(const QString& config);
    virtual QString getConfig(const QString& actionID);
    virtual void setConfig(const QString& config, const QString& actionID);
    virtual QString getPluginFolderPath();
    virtual std::optional<QString> getPathOfPlugin(const QString& plugin);
    virtual bool isPluginInstalled(const QString& atPath);
    virtual void installPlugin();

    // The command texts, exactly as sent. Nothing when a text inserted without escaping (an identifier,
    // a path) holds a double quote, a backslash or a control character and so could end the string.
    static std::optional<QString> getGlobalConfigCommand(const QString& bundleID);
    static std::optional<QString> setGlobalConfigCommand(const QString& config, const QString& bundleID);
    static std::optional<QString> getConfigCommand(const QString& actionID);
    static std::optional<QString> setConfigCommand(const QString& config, const QString& actionID);
    static QString getPluginFolderPathCommand();
    static std::optional<QString> getPathOfPluginCommand(const QString& plugin);
    static std::optional<QString> isPluginInstalledCommand(const QString& atPath);
    static QString installPluginCommand();

    // Makes any text a valid string literal body: backslashes doubled first, then quotes escaped.
    static QString escaped(const QString& text);
    // Whether the text can stand between double quotes as it is.
    static bool isSafeUnescaped(const QString& text);
};

} // namespace VendelSDK
