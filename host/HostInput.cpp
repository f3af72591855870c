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
