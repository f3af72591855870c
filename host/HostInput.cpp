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

} // namespace VendelHost
