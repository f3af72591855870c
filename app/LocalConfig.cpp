// The JSON form of the action record, with no leniency: a record the plugin did not write reads as invalid.
#include "LocalConfig.h"

#include <QJsonValue>

namespace MusicPlugin {

std::optional<LocalConfig::Action> LocalConfig::actionFromRawValue(qint64 raw)
{
    switch (raw) {
    case 0:
        return Action::play;
    case 1:
        return Action::pause;
    default:
        return std::nullopt;
    }
}

QJsonObject LocalConfig::toJson() const
{
    QJsonObject object;
    object.insert(QLatin1String(actionKey), rawValue(action));
    if (name) {
        object.insert(QLatin1String(nameKey), *name);
    }
    object.insert(QLatin1String(shouldShuffleKey), shouldShuffle);
    return object;
}

std::optional<LocalConfig> LocalConfig::fromJson(const QJsonObject& object)
{
    LocalConfig record;

    const QJsonValue actionValue = object.value(QLatin1String(actionKey));
    if (!actionValue.isDouble()) {
        return std::nullopt;
    }
    // A number with a fraction, or beyond the integer range, reads as -1, which is no action.
    const std::optional<Action> decodedAction = actionFromRawValue(actionValue.toInteger(-1));
    if (!decodedAction) {
        return std::nullopt;
    }
    record.action = *decodedAction;

    const QJsonValue nameValue = object.value(QLatin1String(nameKey));
    if (nameValue.isString()) {
        record.name = nameValue.toString();
    } else if (!nameValue.isNull() && !nameValue.isUndefined()) {
        return std::nullopt;
    }

    const QJsonValue shuffleValue = object.value(QLatin1String(shouldShuffleKey));
    if (!shuffleValue.isBool()) {
        return std::nullopt;
    }
    record.shouldShuffle = shuffleValue.toBool();
    return record;
}

} // namespace MusicPlugin
