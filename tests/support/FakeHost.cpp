// Parses the host commands the way the host would, undoing the string-literal escaping of the text.
#include "FakeHost.h"

#include <optional>

namespace VendelSDK::Testing {

namespace {

const QString prefix = QStringLiteral("    tell application \"Vendel\" to ");

// Reads a string literal body starting at `position`, just after its opening quote; moves past the closing
// one.
std::optional<QString> literal(const QString& source, qsizetype& position)
{
    QString text;
    while (position < source.size()) {
        const QChar c = source.at(position++);
        if (c == u'"') {
            return text;
        }
        if (c == u'\\') {
            if (position >= source.size()) {
                return std::nullopt;
            }
            text.append(source.at(position++));
        } else {
            text.append(c);
        }
    }
    return std::nullopt;
}

// Matches `head` then a literal then `tail` then a literal running to the end of the source.
bool twoLiterals(const QString& command, const QString& head, const QString& tail, QString& first,
                 QString& second)
{
    if (!command.startsWith(head)) {
        return false;
    }
    qsizetype position = head.size();
    const auto a = literal(command, position);
    if (!a || command.mid(position, tail.size()) != tail) {
        return false;
    }
    position += tail.size();
    const auto b = literal(command, position);
    if (!b || position != command.size()) {
        return false;
    }
    first = *a;
    second = *b;
    return true;
}

bool oneLiteral(const QString& command, const QString& head, QString& value)
{
    if (!command.startsWith(head)) {
        return false;
    }
    qsizetype position = head.size();
    const auto a = literal(command, position);
    if (!a || position != command.size()) {
        return false;
    }
    value = *a;
    return true;
}

ScriptErrorRecord unreachable()
{
    return ScriptErrorRecord{-600, QStringLiteral("Application isn't running."), std::nullopt};
}

} // namespace

FakeHost::FakeHost(FakeScriptEngine& engine)
{
    clock.start();
    engine.responder = [this](const QString& source) { return answer(source); };
}

ScriptOutcome FakeHost::answer(const QString& source)
{
    if (!source.startsWith(prefix)) {
        return unreachable();
    }
    const QString command = source.mid(prefix.size());
    QString first;
    QString second;
    if (twoLiterals(command, QStringLiteral("set config \""), QStringLiteral(" action \""), first, second)) {
        return store(configs, second, first);
    }
    if (twoLiterals(command, QStringLiteral("set global config \""), QStringLiteral(" action bundle id \""),
                    first, second)) {
        return store(globalConfigs, second, first);
    }
    if (oneLiteral(command, QStringLiteral("get config \""), first)) {
        return read(configs.value(first));
    }
    if (oneLiteral(command, QStringLiteral("get global config \""), first)) {
        return read(globalConfigs.value(first));
    }
    return unreachable();
}

ScriptOutcome FakeHost::read(const QString& text)
{
    if (failReads) {
        return unreachable();
    }
    if (answerReadsWithNothing) {
        return ScriptNoResult{};
    }
    return text;
}

ScriptOutcome FakeHost::store(QHash<QString, QString>& table, const QString& key, const QString& text)
{
    if (failWrites) {
        return unreachable();
    }
    table.insert(key, text);
    writes.append({key, text, clock.elapsed()});
    Q_EMIT written(key, text);
    return ScriptNoResult{};
}

} // namespace VendelSDK::Testing
