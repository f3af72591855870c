// Checks input once, at the edge, so that storage only ever holds what a plugin can read back.
#include "HostInput.h"

#include <QJsonDocument>
#include <QRegularExpression>

namespace VendelHost {

std::optional<QString> HostInput::configProblem(const QString& text)
{
    if (text.isEmpty()) {
        return std::nullopt;
    }
    const QByteArray bytes = text.toUtf8();
    if (bytes.size() > maxConfigBytes) {
        return QStringLiteral("the configuration is %1 bytes long; at most %2 are kept.")
            .arg(bytes.size())
            .arg(maxConfigBytes);
    }
    QJsonParseError error;
    QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        return QStringLiteral("the configuration is not a valid JSON object or array: %1 at offset %2.")
            .arg(error.errorString())
            .arg(error.offset);
    }
    return std::nullopt;
}

std::optional<QString> HostInput::titleProblem(const QString& text)
{
    qsizetype characters = 0;
    bool visible = false;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar character = text.at(index);
        char32_t code = character.unicode();
        if (character.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate()) {
            code = QChar::surrogateToUcs4(character, text.at(++index));
        } else if (character.isSurrogate()) {
            return QStringLiteral("the title is not valid text: it has a lone surrogate at character %1.")
                .arg(characters + 1);
        }
        ++characters;
        const auto category = QChar::category(code);
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph) {
            return QStringLiteral(
                       "the title has a control character or line break (%1) at character %2; a title "
                       "is one line of text.")
                .arg(escaped(QString::fromUcs4(&code, 1)))
                .arg(characters);
        }
        visible |= !QChar::isSpace(code);
    }
    if (characters == 0) {
        return QStringLiteral("the title is empty; a title has 1 to %1 characters.").arg(maxTitleCharacters);
    }
    if (characters > maxTitleCharacters) {
        return QStringLiteral("the title has %1 characters; a title has at most %2.")
            .arg(characters)
            .arg(maxTitleCharacters);
    }
    if (!visible) {
        return QStringLiteral("the title is only white space.");
    }
    return std::nullopt;
}

bool HostInput::isBundleIdentifier(const QString& text)
{
    static const QRegularExpression reverseDns(QStringLiteral(
        "^[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?(?:\\.[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?)+$"));
    return text.size() <= maxBundleIdentifierLength && reverseDns.match(text).hasMatch();
}

QString HostInput::escaped(const QString& text)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        if (code == u'\t') {
            shown += QStringLiteral("\\t");
        } else if (code == u'\n') {
            shown += QStringLiteral("\\n");
        } else if (code == u'\r') {
            shown += QStringLiteral("\\r");
        } else if (code < 0x20 || code == 0x7f) {
            shown += QStringLiteral("\\x%1").arg(int(code), 2, 16, QLatin1Char('0'));
        } else if ((code >= 0x80 && code < 0xa0) || code == 0x2028 || code == 0x2029) {
            shown += QStringLiteral("\\u%1").arg(int(code), 4, 16, QLatin1Char('0'));
        } else {
            shown += character;
        }
    }
    return shown;
}

} // namespace VendelHost
