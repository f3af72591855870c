// Host commands: four leading spaces, one line, addressed to the application "Vendel".
#include <VendelSDK/VendelAPI.h>

#include <VendelSDK/AppleScriptRunner.h>
#include <VendelSDK/Error.h>
#include <VendelSDK/FatalError.h>
#include <VendelSDK/Platform.h>

#include <algorithm>

namespace VendelSDK {

namespace {

const QString prefix = QStringLiteral("    tell application \"Vendel\" to ");

// Identifiers come from launch URLs, which any web page can open; one that could close the string
// literal must never reach the engine, so the operation fails as a failed script would.
QString sent(const std::optional<QString>& command)
{
    if (!command) {
        throw couldNotRunScriptError();
    }
    return *command;
}

QString requiredText(const std::optional<QString>& result)
{
    if (!result) {
        throw couldNotReadScriptOutputError();
    }
    return *result;
}

QString bundleIdentifier()
{
    const QString& identifier = Platform::mainBundle().identifier();
    if (identifier.isEmpty()) {
        fatalError(QStringLiteral("The plugin application has no bundle identifier."), "VendelSDK/VendelAPI",
                   __LINE__);
    }
    return identifier;
}

} // namespace

bool VendelAPI::isSafeUnescaped(const QString& text)
{
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\' || c.category() == QChar::Other_Control ||
            c.category() == QChar::Separator_Line || c.category() == QChar::Separator_Paragraph) {
            return false;
        }
    }
    return true;
}

QString VendelAPI::escaped(const QString& text)
{
    // One pass into a string sized once: a configuration holding millions of quotes costs as much as one
    // holding none. Each backslash and each quote gets a backslash before it, which is what doubling the
    // backslashes first and escaping the quotes after gives.
    const auto needsEscape = [](QChar c) { return c == u'\\' || c == u'"'; };
    const qsizetype escapes = std::count_if(text.cbegin(), text.cend(), needsEscape);
    if (escapes == 0) {
        return text;
    }
    QString result(text.size() + escapes, Qt::Uninitialized);
    QChar* out = result.data();
    for (const QChar c : text) {
        if (needsEscape(c)) {
            *out++ = u'\\';
        }
        *out++ = c;
    }
    return result;
}

std::optional<QString> VendelAPI::getGlobalConfigCommand(const QString& bundleID)
{
    if (!isSafeUnescaped(bundleID)) {
        return std::nullopt;
    }
    return prefix + QStringLiteral("get global config \"") + bundleID + u'"';
}

std::optional<QString> VendelAPI::setGlobalConfigCommand(const QString& config, const QString& bundleID)
{
    if (!isSafeUnescaped(bundleID)) {
        return std::nullopt;
    }
    return prefix + QStringLiteral("set global config \"") + escaped(config) +
           QStringLiteral("\" action bundle id \"") + bundleID + u'"';
}

std::optional<QString> VendelAPI::getConfigCommand(const QString& actionID)
{
    if (!isSafeUnescaped(actionID)) {
        return std::nullopt;
    }
    return prefix + QStringLiteral("get config \"") + actionID + u'"';
}

std::optional<QString> VendelAPI::setConfigCommand(const QString& config, const QString& actionID)
{
    if (!isSafeUnescaped(actionID)) {
        return std::nullopt;
    }
    return prefix + QStringLiteral("set config \"") + escaped(config) + QStringLiteral("\" action \"") +
           actionID + u'"';
}

QString VendelAPI::getPluginFolderPathCommand()
{
    return prefix + QStringLiteral("get plugin folder path");
}

std::optional<QString> VendelAPI::getPathOfPluginCommand(const QString& plugin)
{
    if (!isSafeUnescaped(plugin)) {
        return std::nullopt;
    }
    return prefix + QStringLiteral("get path of plugin \"") + plugin + u'"';
}

std::optional<QString> VendelAPI::isPluginInstalledCommand(const QString& atPath)
{
    if (!isSafeUnescaped(atPath)) {
        return std::nullopt;
    }
    return prefix + QStringLiteral("get is plugin installed at path \"") + atPath + u'"';
}

QString VendelAPI::installPluginCommand()
{
    return prefix + QStringLiteral("install plugin");
}

QString VendelAPI::getGlobalConfig()
{
    return requiredText(AppleScriptRunner::run(sent(getGlobalConfigCommand(bundleIdentifier()))));
}

void VendelAPI::setGlobalConfig(const QString& config)
{
    AppleScriptRunner::run(sent(setGlobalConfigCommand(config, bundleIdentifier())));
}

QString VendelAPI::getConfig(const QString& actionID)
{
    return requiredText(AppleScriptRunner::run(sent(getConfigCommand(actionID))));
}

void VendelAPI::setConfig(const QString& config, const QString& actionID)
{
    AppleScriptRunner::run(sent(setConfigCommand(config, actionID)));
}

QString VendelAPI::getPluginFolderPath()
{
    return requiredText(AppleScriptRunner::run(getPluginFolderPathCommand()));
}

std::optional<QString> VendelAPI::getPathOfPlugin(const QString& plugin)
{
    return AppleScriptRunner::run(sent(getPathOfPluginCommand(plugin)));
}

bool VendelAPI::isPluginInstalled(const QString& atPath)
{
    return requiredText(AppleScriptRunner::run(sent(isPluginInstalledCommand(atPath)))) == u"true";
}

void VendelAPI::installPlugin()
{
    AppleScriptRunner::run(installPluginCommand());
}

} // namespace VendelSDK
