// The music plugin's per-action record: what the action does, which playlist, and whether to shuffle.
#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace MusicPlugin {

struct LocalConfig
{
    enum class Action : qint64
    {
        play = 0,
        pause = 1
    };

    // The record's JSON keys.
    static constexpr auto actionKey = "action";
    static constexpr auto nameKey = "name";
    static constexpr auto shouldShuffleKey = "shouldShuffle";

    // The action with this raw value; nothing for any integer other than 0 and 1.
    static std::optional<Action> actionFromRawValue(qint64 raw);
    static qint64 rawValue(Action value) { return static_cast<qint64>(value); }

    Action action = Action::play;
    // The playlist to play; absent when none was chosen. The empty name is a present name.
    std::optional<QString> name;
    bool shouldShuffle = false;

    // Leaves an absent name out rather than writing null.
    QJsonObject toJson() const;
    // Strict: "action" must be the integer 0 or 1 and "shouldShuffle" a Boolean; "name" may be missing or
    // null, and is otherwise text. Other keys are ignored.
    static std::optional<LocalConfig> fromJson(const QJsonObject& object);

    friend bool operator==(const LocalConfig&, const LocalConfig&) = default;
};

} // namespace MusicPlugin
