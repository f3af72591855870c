// What the host keeps for each action of this plugin, and its JSON form.
#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

struct ActionSettings
{
    // The text that a run prints.
    QString message = QStringLiteral("Hello");
    // How often the action was edited; the editor's stand-in changes it.
    int timesEdited = 0;

    QJsonObject toJson() const
    {
        return {{QStringLiteral("message"), message}, {QStringLiteral("timesEdited"), timesEdited}};
    }

    // Strict: a value of the wrong type is no settings, and the provider falls back to the defaults.
    static std::optional<ActionSettings> fromJson(const QJsonObject& object)
    {
        const auto message = object.value(QStringLiteral("message"));
        const auto timesEdited = object.value(QStringLiteral("timesEdited"));
        if (!message.isString() || !timesEdited.isDouble()) {
            return std::nullopt;
        }
        return ActionSettings{message.toString(), timesEdited.toInt()};
    }
};
