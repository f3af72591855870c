// A tokenizer and a fixed grammar; every deviation is a syntax error worded as the scripting language does.
#include "TellScriptEngine.h"

#include <QCoreApplication>

namespace VendelSDK {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\u2028' || c == u'\u2029';
}

bool isWordCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

QString quoted(const QString& text)
{
    return u'“' + text + u'”';
}

class Tokenizer
{
public:
    explicit Tokenizer(const QString& source) : m_source(source) { skipBlanks(); }

    bool atEnd() const { return m_position >= m_source.size(); }

    // What the next token looks like, for error messages.
    QString describeNext() const
    {
        if (atEnd()) {
            return QStringLiteral("end of script");
        }
        const QChar c = m_source.at(m_position);
        if (isLineBreak(c)) {
            return QStringLiteral("end of line");
        }
        if (c == u'"') {
            return QStringLiteral("“\"”");
        }
        if (isWordCharacter(c)) {
            qsizetype end = m_position;
            while (end < m_source.size() && isWordCharacter(m_source.at(end))) {
                ++end;
            }
            return quoted(m_source.mid(m_position, end - m_position));
        }
        return quoted(QString(c));
    }

    std::optional<QString> word()
    {
        qsizetype end = m_position;
        while (end < m_source.size() && isWordCharacter(m_source.at(end))) {
            ++end;
        }
        if (end == m_position) {
            return std::nullopt;
        }
        QString text = m_source.mid(m_position, end - m_position);
        m_position = end;
        skipBlanks();
        return text;
    }

    // A string literal; nothing when the next token is not one, an error when it is malformed.
    std::variant<std::monostate, QString, ScriptErrorRecord> text()
    {
        if (atEnd() || m_source.at(m_position) != u'"') {
            return std::monostate{};
        }
        QString value;
        for (qsizetype i = m_position + 1; i < m_source.size(); ++i) {
            const QChar c = m_source.at(i);
            if (c == u'"') {
                m_position = i + 1;
                skipBlanks();
                return value;
            }
            if (c == u'\\') {
                if (i + 1 >= m_source.size()) {
                    break;
                }
                const QChar escapedCharacter = m_source.at(i + 1);
                if (escapedCharacter != u'"' && escapedCharacter != u'\\') {
                    return syntaxError(QStringLiteral("“\\\"” or “\\\\”"),
                                       quoted(u'\\' + QString(escapedCharacter)));
                }
                value.append(escapedCharacter);
                ++i;
                continue;
            }
            value.append(c);
        }
        return syntaxError(QStringLiteral("“\"”"), QStringLiteral("end of script"));
    }

private:
    void skipBlanks()
    {
        while (m_position < m_source.size() && isBlank(m_source.at(m_position))) {
            ++m_position;
        }
    }

    const QString& m_source;
    qsizetype m_position = 0;
};

// Whitespace around the statement, line breaks included, is no part of it.
QString trimmed(const QString& source)
{
    qsizetype first = 0;
    qsizetype last = source.size();
    while (first < last && (isBlank(source.at(first)) || isLineBreak(source.at(first)))) {
        ++first;
    }
    while (last > first && (isBlank(source.at(last - 1)) || isLineBreak(source.at(last - 1)))) {
        --last;
    }
    return source.mid(first, last - first);
}

} // namespace

std::variant<TellStatement, ScriptErrorRecord> TellScriptEngine::parse(const QString& source)
{
    const QString statement = trimmed(source);
    Tokenizer tokens(statement);

    const auto keyword = [&tokens](const char* expectedWord) -> std::optional<ScriptErrorRecord> {
        const QString next = tokens.describeNext();
        const auto found = tokens.word();
        if (!found || *found != QLatin1String(expectedWord)) {
            return syntaxError(quoted(QString::fromLatin1(expectedWord)), next);
        }
        return std::nullopt;
    };

    if (auto error = keyword("tell")) {
        return *error;
    }
    if (auto error = keyword("application")) {
        return *error;
    }
    const QString beforeName = tokens.describeNext();
    auto name = tokens.text();
    if (auto* error = std::get_if<ScriptErrorRecord>(&name)) {
        return *error;
    }
    if (std::holds_alternative<std::monostate>(name)) {
        return syntaxError(QStringLiteral("application name"), beforeName);
    }
    if (auto error = keyword("to")) {
        return *error;
    }

    TellStatement result{std::get<QString>(name), {}};
    while (!tokens.atEnd()) {
        const QString next = tokens.describeNext();
        if (auto word = tokens.word()) {
            const bool isBoolean = *word == u"true" || *word == u"false";
            result.command.append({isBoolean ? ScriptToken::Kind::boolean : ScriptToken::Kind::word, *word});
            continue;
        }
        auto literal = tokens.text();
        if (auto* error = std::get_if<ScriptErrorRecord>(&literal)) {
            return *error;
        }
        if (auto* value = std::get_if<QString>(&literal)) {
            result.command.append({ScriptToken::Kind::text, *value});
            continue;
        }
        return syntaxError(QStringLiteral("end of line"), next);
    }
    if (result.command.isEmpty()) {
        return syntaxError(QStringLiteral("command"), QStringLiteral("end of script"));
    }
    return result;
}

void TellScriptEngine::registerApplication(const QString& name,
                                           std::unique_ptr<ScriptApplication> application)
{
    if (!application) {
        m_applications.remove(name);
        return;
    }
    m_applications.insert(name, std::shared_ptr<ScriptApplication>(std::move(application)));
}

ScriptOutcome TellScriptEngine::execute(const QString& source)
{
    auto parsed = parse(source);
    if (auto* error = std::get_if<ScriptErrorRecord>(&parsed)) {
        return *error;
    }
    const auto& statement = std::get<TellStatement>(parsed);
    const auto application = m_applications.value(statement.application);
    if (!application) {
        //: The system's message for a script addressed to an application it does not know; %1 is its name
        const QString message =
            QCoreApplication::translate("TellScriptEngine", "Application “%1” can’t be found.")
                .arg(statement.application);
        return ScriptErrorRecord{applicationNotFound, message, message};
    }
    // Commands are checked against the dictionary before anything is performed, as a compiler would.
    const auto resolved = resolveCommand(statement.command, application->dictionary());
    if (const auto* error = std::get_if<ScriptErrorRecord>(&resolved)) {
        return *error;
    }
    const auto& command = std::get<ResolvedCommand>(resolved);
    // A shared reference keeps the application alive even if a command re-registers it.
    return application->perform(command.entry, command.arguments);
}

} // namespace VendelSDK
