// The tell engine's commands, resolved against an application's scripting dictionary.
#pragma once

#include <VendelSDK/ScriptEngine.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

namespace VendelSDK {

// One token of a command: a bare word, a string literal (already unescaped), or true/false.
struct ScriptToken
{
    enum class Kind
    {
        word,
        text,
        boolean
    };

    Kind kind = Kind::word;
    QString value;

    friend bool operator==(const ScriptToken&, const ScriptToken&) = default;
};

using ScriptCommand = QList<ScriptToken>;

// A command resolved against a dictionary: which entry, and the placeholders' values.
struct ResolvedCommand
{
    qsizetype entry = -1;
    QStringList arguments;

    friend bool operator==(const ResolvedCommand&, const ResolvedCommand&) = default;
};

// Finds the dictionary entry that the command matches exactly. A command that matches none is a
// syntax error naming the first token that the closest entry did not expect, as a compiler would.
std::variant<ResolvedCommand, ScriptErrorRecord> resolveCommand(const ScriptCommand& command,
                                                                const QStringList& dictionary);

// The error of a source that does not follow the grammar.
ScriptErrorRecord syntaxError(const QString& expected, const QString& found);

} // namespace VendelSDK
