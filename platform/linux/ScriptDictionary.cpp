// Resolves commands against an application's dictionary.
#include "ScriptDictionary.h"

namespace VendelSDK {

namespace {

QString describe(const ScriptToken& token)
{
    return token.kind == ScriptToken::Kind::text ? QStringLiteral("“\"%1\"”").arg(token.value)
                                                 : QStringLiteral("“%1”").arg(token.value);
}

QString describeExpected(QStringView element)
{
    if (element == u"%s") {
        return QStringLiteral("string");
    }
    if (element == u"%b") {
        return QStringLiteral("true or false");
    }
    return QStringLiteral("“%1”").arg(element);
}

bool accepts(QStringView element, const ScriptToken& token)
{
    if (element == u"%s") {
        return token.kind == ScriptToken::Kind::text;
    }
    if (element == u"%b") {
        return token.kind == ScriptToken::Kind::boolean;
    }
    return token.kind == ScriptToken::Kind::word && token.value == element;
}

} // namespace

ScriptErrorRecord syntaxError(const QString& expected, const QString& found)
{
    const QString message = QStringLiteral("Expected %1 but found %2.").arg(expected, found);
    return ScriptErrorRecord{-2741, message, message};
}

std::variant<ResolvedCommand, ScriptErrorRecord> resolveCommand(const ScriptCommand& command,
                                                                const QStringList& dictionary)
{
    qsizetype closest = -1;
    qsizetype closestLength = 0;
    for (qsizetype entry = 0; entry < dictionary.size(); ++entry) {
        const auto elements = QStringView(dictionary.at(entry)).split(u' ', Qt::SkipEmptyParts);
        qsizetype length = 0;
        QStringList arguments;
        while (length < elements.size() && length < command.size() &&
               accepts(elements.at(length), command.at(length))) {
            if (elements.at(length).startsWith(u'%')) {
                arguments.append(command.at(length).value);
            }
            ++length;
        }
        if (length == elements.size() && length == command.size()) {
            return ResolvedCommand{entry, arguments};
        }
        if (closest < 0 || length > closestLength) {
            closest = entry;
            closestLength = length;
        }
    }

    const QString found = closestLength < command.size() ? describe(command.at(closestLength))
                                                         : QStringLiteral("end of script");
    if (closest < 0) {
        return syntaxError(QStringLiteral("command"), found);
    }
    const auto elements = QStringView(dictionary.at(closest)).split(u' ', Qt::SkipEmptyParts);
    if (closestLength < elements.size()) {
        return syntaxError(describeExpected(elements.at(closestLength)), found);
    }
    return syntaxError(QStringLiteral("end of line"), found);
}

} // namespace VendelSDK
