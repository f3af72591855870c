// MPRIS calls over the session bus and the mapping of their D-Bus errors onto the players' error records.
#include "MprisMusicPlayer.h"

#include <QCoreApplication>

#include <algorithm>

namespace VendelSDK {

namespace {

constexpr auto objectPath = "/org/mpris/MediaPlayer2";
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto playerInterface = "org.mpris.MediaPlayer2.Player";
constexpr auto playlistsInterface = "org.mpris.MediaPlayer2.Playlists";

QString prefix()
{
    return QString::fromLatin1(MprisMusicPlayer::busNamePrefix);
}

bool isOneOf(const QString& name, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(),
                       [&name](const char* candidate) { return name == QLatin1String(candidate); });
}

ScriptErrorRecord failureOf(const SdBus::Error& error)
{
    const QString& name = error.name;
    if (isOneOf(name,
                {"org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner"})) {
        return MusicErrors::notRunning();
    }
    if (isOneOf(name, {"org.freedesktop.DBus.Error.NoReply", "org.freedesktop.DBus.Error.Timeout",
                       "org.freedesktop.DBus.Error.TimedOut"})) {
        return MusicErrors::noAnswer();
    }
    if (name == u"org.freedesktop.DBus.Error.Disconnected") {
        return MusicErrors::connectionLost();
    }
    return MusicErrors::failed(error.message.isEmpty() ? name : error.message);
}

// Errors with which a player says that it has no such interface; implementations differ in which they send.
bool isMissingInterface(const SdBus::Error& error)
{
    return isOneOf(error.name,
                   {"org.freedesktop.DBus.Error.UnknownInterface", "org.freedesktop.DBus.Error.UnknownMethod",
                    "org.freedesktop.DBus.Error.UnknownObject", "org.freedesktop.DBus.Error.UnknownProperty",
                    "org.freedesktop.DBus.Error.InvalidArgs", "org.freedesktop.DBus.Error.NotSupported"});
}

ScriptOutcome noResultOr(const SdBus::Reply& reply)
{
    if (reply.error) {
        return failureOf(*reply.error);
    }
    return ScriptNoResult{};
}

// Reads a variant's value when it holds that type; false, and nothing read, otherwise.
template <class Value> bool readVariant(SdBus::Message& message, const char* type, Value& value)
{
    return message.enter('v', type) && message.read(value) && message.exit();
}

// A count as players send it: unsigned as the interface says, or a signed integer.
bool readCount(SdBus::Message& message, uint& count)
{
    quint32 unsignedCount = 0;
    qint32 signedCount = 0;
    if (readVariant(message, "u", unsignedCount)) {
        count = unsignedCount;
        return true;
    }
    if (readVariant(message, "i", signedCount)) {
        count = uint(std::max(signedCount, 0));
        return true;
    }
    return false;
}

int statusRank(const QString& status)
{
    if (status == u"Playing") {
        return 0;
    }
    if (status == u"Paused") {
        return 1;
    }
    return 2;
}

} // namespace

MprisMusicPlayer::MprisMusicPlayer(SdBus::Bus bus, QString requestedPlayer)
    : m_bus(std::move(bus)), m_requestedPlayer(std::move(requestedPlayer).trimmed())
{}

SdBus::Reply MprisMusicPlayer::call(const QString& player, const char* interface, const char* method,
                                    const std::function<void(SdBus::Message&)>& arguments) const
{
    SdBus::Message message = m_bus.methodCall(player, objectPath, interface, method);
    if (arguments) {
        arguments(message);
    }
    return m_bus.call(message);
}

std::variant<QString, ScriptErrorRecord> MprisMusicPlayer::choosePlayer() const
{
    if (!m_bus.isConnected()) {
        return MusicErrors::notRunning();
    }
    SdBus::Message listNames = m_bus.methodCall(QStringLiteral("org.freedesktop.DBus"),
                                                "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames");
    SdBus::Reply names = m_bus.call(listNames);
    QStringList registered;
    if (names.error || !names.message.read(registered)) {
        return MusicErrors::notRunning();
    }
    QStringList players;
    for (const QString& name : std::as_const(registered)) {
        if (name.startsWith(prefix()) && name.size() > prefix().size()) {
            players.append(name);
        }
    }
    players.sort();

    if (!m_requestedPlayer.isEmpty()) {
        const QString wanted = m_requestedPlayer.startsWith(prefix()) ? m_requestedPlayer.mid(prefix().size())
                                                                      : m_requestedPlayer;
        for (const QString& player : std::as_const(players)) {
            if (QStringView(player).mid(prefix().size()) == wanted) {
                return player;
            }
        }
        for (const QString& player : std::as_const(players)) {
            if (QStringView(player).mid(prefix().size()).startsWith(wanted + u'.')) {
                return player;
            }
        }
        return MusicErrors::notRunning();
    }

    if (players.isEmpty()) {
        return MusicErrors::notRunning();
    }
    if (players.size() == 1) {
        return players.first();
    }
    QString chosen;
    int chosenRank = 3;
    for (const QString& player : std::as_const(players)) {
        auto reply = call(player, propertiesInterface, "Get", [](SdBus::Message& message) {
            message.append(QString::fromLatin1(playerInterface)).append(QStringLiteral("PlaybackStatus"));
        });
        // A player that cannot tell its status counts as stopped rather than stopping the choice.
        QString status;
        if (reply.error || !readVariant(reply.message, "s", status)) {
            status.clear();
        }
        const int rank = statusRank(status);
        if (rank < chosenRank) {
            chosen = player;
            chosenRank = rank;
        }
        if (rank == 0) {
            break;
        }
    }
    return chosen;
}

ScriptOutcome MprisMusicPlayer::setShuffle(bool enabled)
{
    const auto player = choosePlayer();
    if (const auto* error = std::get_if<ScriptErrorRecord>(&player)) {
        return *error;
    }
    return noResultOr(
        call(std::get<QString>(player), propertiesInterface, "Set", [enabled](SdBus::Message& message) {
            message.append(QString::fromLatin1(playerInterface))
                .append(QStringLiteral("Shuffle"))
                .appendVariant(enabled);
        }));
}

ScriptOutcome MprisMusicPlayer::playPlaylist(const QString& name)
{
    const auto player = choosePlayer();
    if (const auto* error = std::get_if<ScriptErrorRecord>(&player)) {
        return *error;
    }
    const auto found = playlists(std::get<QString>(player));
    if (const auto* error = std::get_if<ScriptErrorRecord>(&found)) {
        return *error;
    }
    for (const Playlist& playlist : std::get<QList<Playlist>>(found)) {
        if (playlist.name == name) {
            return noResultOr(
                call(std::get<QString>(player), playlistsInterface, "ActivatePlaylist",
                     [&playlist](SdBus::Message& message) { message.appendObjectPath(playlist.id); }));
        }
    }
    return MusicErrors::playlistNotFound(name);
}

ScriptOutcome MprisMusicPlayer::pause()
{
    const auto player = choosePlayer();
    if (const auto* error = std::get_if<ScriptErrorRecord>(&player)) {
        return *error;
    }
    return noResultOr(call(std::get<QString>(player), playerInterface, "Pause"));
}

PlaylistNames MprisMusicPlayer::playlistNames()
{
    const auto player = choosePlayer();
    if (const auto* error = std::get_if<ScriptErrorRecord>(&player)) {
        return *error;
    }
    const auto found = playlists(std::get<QString>(player));
    if (const auto* error = std::get_if<ScriptErrorRecord>(&found)) {
        return *error;
    }
    QStringList names;
    for (const Playlist& playlist : std::get<QList<Playlist>>(found)) {
        names.append(playlist.name);
    }
    return names;
}

MprisMusicPlayer::Playlists MprisMusicPlayer::playlists(const QString& player) const
{
    auto properties = call(player, propertiesInterface, "GetAll", [](SdBus::Message& message) {
        message.append(QString::fromLatin1(playlistsInterface));
    });
    if (properties.error) {
        if (isMissingInterface(*properties.error)) {
            return MusicErrors::playlistsNotSupported(player);
        }
        return failureOf(*properties.error);
    }
    // Properties of other types than the interface gives them read as absent.
    bool hasCount = false;
    uint count = 0;
    QStringList orderings;
    SdBus::Message& values = properties.message;
    if (values.enter('a', "{sv}")) {
        while (values.enter('e', "sv")) {
            QString key;
            values.read(key);
            if (key == u"PlaylistCount") {
                hasCount = true;
                if (!readCount(values, count)) {
                    values.skip();
                }
            } else if (key != u"Orderings" || !readVariant(values, "as", orderings)) {
                values.skip();
            }
            values.exit();
        }
        values.exit();
    }
    // Some implementations answer an unknown interface with no properties rather than an error.
    if (!hasCount) {
        return MusicErrors::playlistsNotSupported(player);
    }
    if (count == 0) {
        return QList<Playlist>();
    }
    QString ordering = orderings.isEmpty() ? QStringLiteral("Alphabetical") : orderings.first();
    if (orderings.contains(QStringLiteral("UserDefined"))) {
        ordering = QStringLiteral("UserDefined");
    }

    auto reply = call(player, playlistsInterface, "GetPlaylists", [&](SdBus::Message& message) {
        message.append(quint32(0)).append(quint32(count)).append(ordering).append(false);
    });
    if (reply.error) {
        if (isMissingInterface(*reply.error)) {
            return MusicErrors::playlistsNotSupported(player);
        }
        return failureOf(*reply.error);
    }
    if (reply.message.signature() != u"a(oss)") {
        return MusicErrors::failed(
            //: %1 is the music player's bus name
            QCoreApplication::translate("MprisMusicPlayer",
                                        "The player “%1” sent its playlists in an unknown form.")
                .arg(player));
    }
    QList<Playlist> result;
    SdBus::Message& list = reply.message;
    list.enter('a', "(oss)");
    while (list.enter('r', "oss")) {
        Playlist playlist;
        QString icon;
        list.readObjectPath(playlist.id);
        list.read(playlist.name);
        list.read(icon);
        list.exit();
        result.append(playlist);
    }
    list.exit();
    return result;
}

} // namespace VendelSDK
