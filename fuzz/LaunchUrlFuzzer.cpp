// libFuzzer target: hostile launch URLs through parsing, dispatch and the host command texts they feed.
#include "FuzzRequire.h"
#include <VendelSDK/PluginController.h>
#include <VendelSDK/VendelAPI.h>
#include <VendelSDK/VendelPluginURL.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>

using namespace VendelSDK;

namespace {

// A quote is unescaped when an even number of backslashes, possibly none, stands right before it.
int unescapedQuotes(const QString& text)
{
    int quotes = 0;
    int backslashes = 0;
    for (const QChar c : text) {
        if (c == u'"' && backslashes % 2 == 0) {
            ++quotes;
        }
        backslashes = c == u'\\' ? backslashes + 1 : 0;
    }
    return quotes;
}

bool everyQuoteEscaped(const QString& text)
{
    int backslashes = 0;
    for (const QChar c : text) {
        if (c == u'"' && backslashes % 2 == 0) {
            return false;
        }
        backslashes = c == u'\\' ? backslashes + 1 : 0;
    }
    return true;
}

// Reverses the escaping, to prove that nothing of the configuration text is lost or changed.
QString unescaped(const QString& text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'\\' && i + 1 < text.size()) {
            ++i;
        }
        result += text.at(i);
    }
    return result;
}

bool isLineBreakOrControl(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
}

// What an identifier may hold to stand between quotes unescaped, restated independently of the SDK.
bool mayStandUnescaped(const QString& text)
{
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\' || isLineBreakOrControl(c)) {
            return false;
        }
    }
    return true;
}

// Configuration texts are JSON, which escapes C0 controls; other line breaks may pass through it.
bool hasC0ControlOrLineBreak(const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c == QChar::LineSeparator || c == QChar::ParagraphSeparator) {
            return true;
        }
    }
    return false;
}

const QString prefix = QStringLiteral("    tell application \"Vendel\" to ");

void checkIdentifierCommand(const std::optional<QString>& command, const QString& expectedHead,
                            const QString& identifier)
{
    require(command.has_value() == mayStandUnescaped(identifier), "only unsafe identifiers are refused");
    if (!command) {
        return;
    }
    require(*command == prefix + expectedHead + identifier + u'"', "identifier command text is exact");
    require(unescapedQuotes(*command) == 4, "identifier command keeps its two string literals closed");
    for (const QChar c : *command) {
        require(!isLineBreakOrControl(c), "identifier command holds no control character or line break");
    }
}

void checkConfigCommand(const std::optional<QString>& command, const QString& expectedHead,
                        const QString& config, const QString& middle, const QString& identifier)
{
    require(command.has_value() == mayStandUnescaped(identifier), "only unsafe identifiers are refused");
    if (!command) {
        return;
    }
    require(*command == prefix + expectedHead + VendelAPI::escaped(config) + middle + identifier + u'"',
            "configuration command text is exact");
    require(unescapedQuotes(*command) == 6, "configuration command keeps its three string literals closed");
    require(hasC0ControlOrLineBreak(*command) == hasC0ControlOrLineBreak(config),
            "only the configuration text can bring a line break into the command");
}

void checkEscaping(const QString& text)
{
    const QString escapedText = VendelAPI::escaped(text);
    require(everyQuoteEscaped(escapedText), "escaped text has no unescaped quote");
    qsizetype trailingBackslashes = 0;
    while (trailingBackslashes < escapedText.size() &&
           escapedText.at(escapedText.size() - 1 - trailingBackslashes) == u'\\') {
        ++trailingBackslashes;
    }
    require(trailingBackslashes % 2 == 0, "escaped text cannot escape the closing quote");
    require(unescaped(escapedText) == text, "escaping loses nothing");
}

void checkCommandsFor(const QString& identifier, const QString& rawText)
{
    // Providers send compact JSON; the fuzz input inside it stands for a hostile playlist name.
    const QString config =
        QString::fromUtf8(QJsonDocument(QJsonArray{rawText, identifier}).toJson(QJsonDocument::Compact));

    checkIdentifierCommand(VendelAPI::getConfigCommand(identifier), QStringLiteral("get config \""),
                           identifier);
    checkIdentifierCommand(VendelAPI::getGlobalConfigCommand(identifier),
                           QStringLiteral("get global config \""), identifier);
    checkIdentifierCommand(VendelAPI::getPathOfPluginCommand(identifier),
                           QStringLiteral("get path of plugin \""), identifier);
    checkIdentifierCommand(VendelAPI::isPluginInstalledCommand(identifier),
                           QStringLiteral("get is plugin installed at path \""), identifier);
    checkConfigCommand(VendelAPI::setConfigCommand(config, identifier), QStringLiteral("set config \""),
                       config, QStringLiteral("\" action \""), identifier);
    checkConfigCommand(VendelAPI::setGlobalConfigCommand(config, identifier),
                       QStringLiteral("set global config \""), config,
                       QStringLiteral("\" action bundle id \""), identifier);
    checkEscaping(config);
}

void checkDispatch(const QString& text, const std::optional<VendelPluginURL>& url)
{
    int runs = 0;
    int edits = 0;
    int configures = 0;
    int runCommands = 0;
    PluginController controller;
    controller.onRun = [&](const QString& actionID) {
        ++runs;
        require(url && url->actionID == actionID, "run receives the parsed identifier");
        checkCommandsFor(actionID, text);
    };
    controller.onEdit = [&](const QString& actionID) {
        ++edits;
        require(url && url->actionID == actionID, "edit receives the parsed identifier");
    };
    controller.onConfigure = [&] { ++configures; };
    controller.onRunCommand = [&](const std::optional<QString>& actionID) {
        ++runCommands;
        require(url && url->actionID == actionID, "runCommand receives the parsed identifier");
    };

    const bool handled = controller.handle(text);
    require(handled == controller.didPerformAction, "a fresh controller reports exactly what it did");
    require(runs + edits + configures + runCommands == (handled ? 1 : 0), "at most one handler runs, once");
    if (!url) {
        require(!handled, "an unparsable URL is ignored");
        return;
    }
    const QString& verb = url->action;
    require(runs == ((verb == u"run" && url->actionID) ? 1 : 0), "run is matched exactly");
    require(edits == ((verb == u"edit" && url->actionID) ? 1 : 0), "edit is matched exactly");
    require(configures == (verb == u"configure" ? 1 : 0), "configure is matched exactly");
    require(runCommands == (verb == u"runCommand" ? 1 : 0), "runCommand is matched exactly");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));

    const auto url = VendelPluginURL::parse(text);
    if (url) {
        require(url->scheme == u"vendelplugin", "a parsed URL has the plugin scheme");
        require(!url->action.isEmpty(), "a parsed URL has a verb");
        if (url->actionID) {
            require(!url->actionID->isEmpty(), "a parsed identifier is not empty");
            checkCommandsFor(*url->actionID, text);
        }
        checkCommandsFor(url->action, text);
    }
    checkDispatch(text, url);

    // The raw input stands for an identifier that reached the API some other way.
    checkCommandsFor(text, text);
    checkEscaping(text);
    return 0;
}
