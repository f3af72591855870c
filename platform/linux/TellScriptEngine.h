// Executes one-line "tell application" statements against applications registered by name.
#pragma once

#include "ScriptDictionary.h"

#include <VendelSDK/ScriptEngine.h>

#include <QHash>

#include <memory>
#include <variant>

namespace VendelSDK {

// A statement: the addressed application and the command it is told.
struct TellStatement
{
    QString application;
    ScriptCommand command;

    friend bool operator==(const TellStatement&, const TellStatement&) = default;
};

class TellScriptEngine final : public ScriptEngine
{
public:
    // Error number of a statement that addresses an application nobody registered.
    static constexpr qint64 applicationNotFound = -10814;

    // Exactly `tell application "<name>" to <command>`, optionally surrounded by whitespace. The only
    // language is words, string literals with \" and \\ escapes, and true/false: no operators, no
    // concatenation and no second statement, so no text can smuggle in another command.
    static std::variant<TellStatement, ScriptErrorRecord> parse(const QString& source);

    // Only registered applications can be addressed; any other name fails with applicationNotFound.
    void registerApplication(const QString& name, std::unique_ptr<ScriptApplication> application) override;
    ScriptOutcome execute(const QString& source) override;

private:
    QHash<QString, std::shared_ptr<ScriptApplication>> m_applications;
};

} // namespace VendelSDK
