// MPRIS calls over QtDBus and the mapping of their D-Bus errors onto the players' error records.
#include "MprisMusicPlayer.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>

namespace VendelSDK {

namespace {

const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString playlistsInterface = QStringLiteral("org.mpris.MediaPlayer2.Playlists");

QString prefix()
{
    return QString::fromLatin1(MprisMusicPlayer::busNamePrefix);
}

bool isOneOf(const QString& name, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(),
                       [&name](const char* candidate) { return name == QLatin1String(candidate); });
}

ScriptErrorRecord failureOf(const QDBusMessage& reply)
{
    const QString name = reply.errorName();
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
    return MusicErrors::failed(reply.errorMessage().isEmpty() ? name : reply.errorMessage());
}

// Errors with which a player says that it has no such interface; implementations differ in which they send.
bool isMissingInterface(const QDBusMessage& reply)
{
    return isOneOf(reply.errorName(),
                   {"org.freedesktop.DBus.Error.UnknownInterface", "org.freedesktop.DBus.Error.UnknownMethod",
                    "org.freedesktop.DBus.Error.UnknownObject", "org.freedesktop.DBus.Error.UnknownProperty",
                    "org.freedesktop.DBus.Error.InvalidArgs", "org.freedesktop.DBus.Error.NotSupported"});
}

ScriptOutcome noResultOr(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return failureOf(reply);
    }
    return ScriptNoResult{};
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

MprisMusicPlayer::MprisMusicPlayer(QDBusConnection bus, QString requestedPlayer)
    : m_bus(std::move(bus)), m_requestedPlayer(std::move(requestedPlayer).trimmed())
{}

QDBusMessage MprisMusicPlayer::call(const QString& player, const QString& interface, const QString& method,
                                    const QVariantList& arguments) const
{
    auto message = QDBusMessage::createMethodCall(player, objectPath, interface, method);
    message.setArguments(arguments);
    return m_bus.call(message);
}

std::variant<QString, ScriptErrorRecord> MprisMusicPlayer::choosePlayer() const
{
    if (!m_bus.isConnected() || !m_bus.interface()) {
        return MusicErrors::notRunning();
    }
    const auto names = m_bus.interface()->registeredServiceNames();
    if (!names.isValid()) {
        return MusicErrors::notRunning();
    }
    QStringList players;
    for (const QString& name : names.value()) {
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
        const auto reply = call(player, propertiesInterface, QStringLiteral("Get"),
                                {playerInterface, QStringLiteral("PlaybackStatus")});
        // A player that cannot tell its status counts as stopped rather than stopping the choice.
        const QString status = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                                   ? reply.arguments().first().value<QDBusVariant>().variant().toString()
                                   : QString();
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
        call(std::get<QString>(player), propertiesInterface, QStringLiteral("Set"),
             {playerInterface, QStringLiteral("Shuffle"), QVariant::fromValue(QDBusVariant(enabled))}));
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
            return noResultOr(call(std::get<QString>(player), playlistsInterface,
                                   QStringLiteral("ActivatePlaylist"),
                                   {QVariant::fromValue(QDBusObjectPath(playlist.id))}));
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
    return noResultOr(call(std::get<QString>(player), playerInterface, QStringLiteral("Pause"), {}));
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
    const auto properties = call(player, propertiesInterface, QStringLiteral("GetAll"), {playlistsInterface});
    if (properties.type() != QDBusMessage::ReplyMessage) {
        if (isMissingInterface(properties)) {
            return MusicErrors::playlistsNotSupported(player);
        }
        return failureOf(properties);
    }
    const auto values = properties.arguments().isEmpty()
                            ? QVariantMap()
                            : qdbus_cast<QVariantMap>(properties.arguments().first());
    // Some implementations answer an unknown interface with no properties rather than an error.
    if (!values.contains(QStringLiteral("PlaylistCount"))) {
        return MusicErrors::playlistsNotSupported(player);
    }
    const uint count = values.value(QStringLiteral("PlaylistCount")).toUInt();
    if (count == 0) {
        return QList<Playlist>();
    }
    const auto orderings = qdbus_cast<QStringList>(values.value(QStringLiteral("Orderings")));
    QString ordering = orderings.isEmpty() ? QStringLiteral("Alphabetical") : orderings.first();
    if (orderings.contains(QStringLiteral("UserDefined"))) {
        ordering = QStringLiteral("UserDefined");
    }

    const auto reply =
        call(player, playlistsInterface, QStringLiteral("GetPlaylists"), {0U, count, ordering, false});
    if (reply.type() != QDBusMessage::ReplyMessage) {
        if (isMissingInterface(reply)) {
            return MusicErrors::playlistsNotSupported(player);
        }
        return failureOf(reply);
    }
    if (reply.signature() != u"a(oss)") {
        return MusicErrors::failed(
            QStringLiteral("The player “%1” sent its playlists in an unknown form.").arg(player));
    }
    QList<Playlist> result;
    const auto list = reply.arguments().first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QDBusObjectPath id;
        QString name;
        QString icon;
        list.beginStructure();
        list >> id >> name >> icon;
        list.endStructure();
        result.append({id.path(), name});
    }
    list.endArray();
    return result;
}

} // namespace VendelSDK
