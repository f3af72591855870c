// libFuzzer target: arbitrary sources through the tell engine's parser, and escaped texts through literals.
#include "FuzzRequire.h"
#include "TellScriptEngine.h"

#include <VendelSDK/VendelAPI.h>

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>

using namespace VendelSDK;

namespace {

QString rendered(const TellStatement& statement)
{
    QString source = QStringLiteral("tell application \"") + VendelAPI::escaped(statement.application) +
                     QStringLiteral("\" to");
    for (const ScriptToken& token : statement.command) {
        source += u' ';
        source += token.kind == ScriptToken::Kind::text ? u'"' + VendelAPI::escaped(token.value) + u'"'
                                                        : token.value;
    }
    return source;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));

    // Whatever parses is exactly one statement: written back canonically, it parses to the same thing.
    const auto parsed = TellScriptEngine::parse(input);
    if (const auto* statement = std::get_if<TellStatement>(&parsed)) {
        require(!statement->command.isEmpty(), "a statement has a command");
        const auto again = TellScriptEngine::parse(rendered(*statement));
        require(std::holds_alternative<TellStatement>(again) && std::get<TellStatement>(again) == *statement,
                "a parsed statement survives being written back");
    } else {
        require(std::get<ScriptErrorRecord>(parsed).number == -2741, "a refused source is a syntax error");
    }

    // Any configuration text, once escaped, is one string literal that comes back unchanged.
    const auto command = VendelAPI::setConfigCommand(input, QStringLiteral("A"));
    const auto setConfig = TellScriptEngine::parse(*command);
    require(std::holds_alternative<TellStatement>(setConfig), "an escaped configuration parses");
    const ScriptCommand& tokens = std::get<TellStatement>(setConfig).command;
    require(tokens.size() == 5 && tokens.at(2) == ScriptToken{ScriptToken::Kind::text, input} &&
                tokens.at(4) == ScriptToken{ScriptToken::Kind::text, QStringLiteral("A")},
            "an escaped configuration arrives as one unchanged literal");

    // An identifier accepted without escaping cannot add a token.
    if (const auto getConfig = VendelAPI::getConfigCommand(input)) {
        const auto statement = TellScriptEngine::parse(*getConfig);
        require(std::holds_alternative<TellStatement>(statement), "an accepted identifier parses");
        require(std::get<TellStatement>(statement).command.size() == 3,
                "an accepted identifier stays one literal");
    }
    return 0;
}
