// MPRIS calls over the session bus and the mapping of their D-Bus errors onto the players' error records.
#include "MprisMusicPlayer.h"

#include <QCoreApplication>

#include <algorithm>

namespace MusicPlugin {

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

bool isNoAnswer(const SdBus::Error& error)
{
    return isOneOf(error.name, {"org.freedesktop.DBus.Error.NoReply", "org.freedesktop.DBus.Error.Timeout",
                                "org.freedesktop.DBus.Error.TimedOut"});
}

ScriptErrorRecord failureOf(const SdBus::Error& error)
{
    const QString& name = error.name;
    if (isOneOf(name,
                {"org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner"})) {
        return MusicErrors::notRunning();
    }
    if (isNoAnswer(error)) {
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

// Waits for the reply until the deadline; a call whose time is up is not sent at all, so that a player
// never acts on a command that has already been reported as timed out.
SdBus::Reply callUntil(const SdBus::Bus& bus, SdBus::Message& message,
                       std::chrono::steady_clock::time_point deadline)
{
    using namespace std::chrono;
    const auto left = duration_cast<milliseconds>(deadline - steady_clock::now());
    if (left <= milliseconds::zero()) {
        return {SdBus::Error{QString::fromLatin1(SdBus::noReplyError),
                             QStringLiteral("Did not receive a reply.")},
                {}};
    }
    return SdBus::call(bus, message, left);
}

// MPRIS's ActivePlaylist property: whether a playlist is active, and which.
struct ActivePlaylist
{
    bool valid = false;
    QString id;
    QString name;
};

bool readActivePlaylist(SdBus::Message& message, ActivePlaylist& active)
{
    // Once the variant holds this signature, the bus has checked that the values inside match it.
    if (!message.enter('v', "(b(oss))")) {
        return false;
    }
    ActivePlaylist read;
    QString icon;
    message.enter('r', "b(oss)");
    message.read(read.valid);
    message.enter('r', "oss");
    message.readObjectPath(read.id);
    message.read(read.name);
    message.read(icon);
    message.exit();
    message.exit();
    message.exit();
    active = read;
    return true;
}

// What one player last said of its playback status and active playlist, kept current from its
// PropertiesChanged signals and from direct reads. Every value carries the serial of the message that
// brought it, and only a newer one replaces it: signals that arrive while a read waits for its answer are
// handled after it, yet may be older.
class PlaybackWatch
{
public:
    PlaybackWatch(const SdBus::Bus& bus, QString player) : m_bus(bus), m_player(std::move(player)) {}

    // Starts listening. False when the player has no owner any more, or the bus refuses the match.
    bool start(std::chrono::steady_clock::time_point deadline)
    {
        // Signals come from the owner's unique name, which is what the match must name.
        SdBus::Message owner =
            m_bus.methodCall(QStringLiteral("org.freedesktop.DBus"), "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", "GetNameOwner");
        owner.append(m_player);
        SdBus::Reply reply = callUntil(m_bus, owner, deadline);
        QString unique;
        if (reply.error || !reply.message.read(unique)) {
            return false;
        }
        m_slot = SdBus::addMatch(
            m_bus,
            QStringLiteral("type='signal',sender='%1',path='%2',interface='%3',member='PropertiesChanged'")
                .arg(unique, QLatin1String(objectPath), QLatin1String(propertiesInterface)),
            [this](SdBus::Message& signal) { changed(signal); });
        return m_slot != nullptr;
    }

    // Reads both values directly, for a player that changed them before the watch began or does not
    // announce them. A failed read leaves what was known; only a time-out is worth reporting.
    std::optional<SdBus::Error> read(std::chrono::steady_clock::time_point deadline)
    {
        m_refreshNeeded = false;
        for (const auto& [interface, property] : {std::pair{playerInterface, "PlaybackStatus"},
                                                  std::pair{playlistsInterface, "ActivePlaylist"}}) {
            SdBus::Message get = m_bus.methodCall(m_player, objectPath, propertiesInterface, "Get");
            get.append(QString::fromLatin1(interface)).append(QString::fromLatin1(property));
            SdBus::Reply reply = callUntil(m_bus, get, deadline);
            if (reply.error) {
                if (isNoAnswer(*reply.error)) {
                    return reply.error;
                }
                continue;
            }
            take(reply.message, QString::fromLatin1(property), reply.message.serial());
        }
        return std::nullopt;
    }

    // Handles the player's signals until the condition holds; false when the deadline passed first.
    bool waitUntil(const std::function<bool()>& condition, std::chrono::steady_clock::time_point deadline)
    {
        for (;;) {
            if (m_refreshNeeded) {
                read(deadline);
            }
            if (condition()) {
                return true;
            }
            // Wakes too for a property that a signal named without its value, which is read first.
            const auto end = SdBus::waitUntil(
                m_bus, [&] { return m_refreshNeeded || condition(); }, deadline);
            if (end != SdBus::WaitEnd::done) {
                return condition();
            }
        }
    }

    // Puts a player that was stopped back to playing, then to paused when it had been paused: Play goes on
    // with the track that was current. False when the player did not follow in time.
    bool resume(bool paused, std::chrono::steady_clock::time_point deadline)
    {
        return perform(
                   "Play", [this] { return isPlaying(); }, deadline) &&
               (!paused || perform(
                               "Pause", [this] { return isPaused(); }, deadline));
    }

    const QString& status() const { return m_status; }
    bool isPlaying() const { return m_status == u"Playing"; }
    bool isPaused() const { return m_status == u"Paused"; }
    const ActivePlaylist& active() const { return m_active; }
    // Whether the requested playlist is the active one, as far as the player tells. One that reports none
    // (Mopidy), or still reports the one it reported before the activation (Strawberry keeps the playlist
    // that was current at start there, whichever plays), is taken at its status: it had been stopped, so
    // playing can only come from the activation.
    bool isActive(const QString& id, const QString& name, const ActivePlaylist& before) const
    {
        const bool unchanged = m_active.id == before.id && m_active.name == before.name;
        return !m_active.valid || m_active.id == id || m_active.name == name || (before.valid && unchanged);
    }

private:
    // Sends a method of the Player interface, then follows the player until it has reached the state.
    bool perform(const char* method, const std::function<bool()>& reached,
                 std::chrono::steady_clock::time_point deadline)
    {
        SdBus::Message message = m_bus.methodCall(m_player, objectPath, playerInterface, method);
        return !callUntil(m_bus, message, deadline).error && !read(deadline) && waitUntil(reached, deadline);
    }

    void changed(SdBus::Message& signal)
    {
        QString interface;
        if (!signal.read(interface) || !signal.enter('a', "{sv}")) {
            return;
        }
        const quint64 serial = signal.serial();
        while (signal.enter('e', "sv")) {
            QString key;
            signal.read(key);
            if (!take(signal, key, serial)) {
                signal.skip();
            }
            signal.exit();
        }
        signal.exit();
        // A property named as changed without its value must be read.
        QStringList invalidated;
        if (signal.read(invalidated) && (invalidated.contains(QStringLiteral("PlaybackStatus")) ||
                                         invalidated.contains(QStringLiteral("ActivePlaylist")))) {
            m_refreshNeeded = true;
        }
    }

    // Takes the variant that comes next as the property's value; false, and nothing read, when it is not
    // one of the two or not of its type.
    bool take(SdBus::Message& message, const QString& property, quint64 serial)
    {
        if (property == u"PlaybackStatus") {
            QString status;
            if (!readVariant(message, "s", status)) {
                return false;
            }
            if (serial >= m_statusSerial) {
                m_status = status;
                m_statusSerial = serial;
            }
            return true;
        }
        if (property == u"ActivePlaylist") {
            ActivePlaylist active;
            if (!readActivePlaylist(message, active)) {
                return false;
            }
            if (serial >= m_activeSerial) {
                m_active = active;
                m_activeSerial = serial;
            }
            return true;
        }
        return false;
    }

    SdBus::Bus m_bus;
    QString m_player;
    SdBus::Slot m_slot;
    QString m_status;
    quint64 m_statusSerial = 0;
    ActivePlaylist m_active;
    quint64 m_activeSerial = 0;
    bool m_refreshNeeded = false;
};

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

MprisMusicPlayer::MprisMusicPlayer(SdBus::Bus bus, QString requestedPlayer, std::chrono::milliseconds timeout)
    : m_bus(std::move(bus)), m_requestedPlayer(std::move(requestedPlayer).trimmed()), m_timeout(timeout)
{}

MprisMusicPlayer::Deadline MprisMusicPlayer::deadline() const
{
    return std::chrono::steady_clock::now() + m_timeout;
}

SdBus::Reply MprisMusicPlayer::call(const QString& player, const char* interface, const char* method,
                                    Deadline deadline,
                                    const std::function<void(SdBus::Message&)>& arguments) const
{
    SdBus::Message message = m_bus.methodCall(player, objectPath, interface, method);
    if (arguments) {
        arguments(message);
    }
    return callUntil(m_bus, message, deadline);
}

std::variant<QString, ScriptErrorRecord> MprisMusicPlayer::choosePlayer() const
{
    return choosePlayer(deadline());
}

std::variant<QString, ScriptErrorRecord> MprisMusicPlayer::choosePlayer(Deadline deadline) const
{
    if (!m_bus.isConnected()) {
        return MusicErrors::notRunning();
    }
    SdBus::Message listNames = m_bus.methodCall(QStringLiteral("org.freedesktop.DBus"),
                                                "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames");
    SdBus::Reply names = callUntil(m_bus, listNames, deadline);
    QStringList registered;
    if (names.error && isNoAnswer(*names.error)) {
        return MusicErrors::noAnswer();
    }
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
        auto reply = call(player, propertiesInterface, "Get", deadline, [](SdBus::Message& message) {
            message.append(QString::fromLatin1(playerInterface)).append(QStringLiteral("PlaybackStatus"));
        });
        // A player that does not answer may be the one the user listens to: it is not passed over. One
        // that cannot tell its status counts as stopped rather than stopping the choice.
        if (reply.error && isNoAnswer(*reply.error)) {
            return MusicErrors::noAnswer();
        }
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

template <class Result, class Command> Result MprisMusicPlayer::withPlayer(Command command) const
{
    const Deadline until = deadline();
    const auto player = choosePlayer(until);
    if (const auto* error = std::get_if<ScriptErrorRecord>(&player)) {
        return *error;
    }
    return command(std::get<QString>(player), until);
}

ScriptOutcome MprisMusicPlayer::setShuffle(bool enabled)
{
    return withPlayer<ScriptOutcome>([&](const QString& player, Deadline until) {
        return noResultOr(call(player, propertiesInterface, "Set", until, [enabled](SdBus::Message& message) {
            message.append(QString::fromLatin1(playerInterface))
                .append(QStringLiteral("Shuffle"))
                .appendVariant(enabled);
        }));
    });
}

ScriptOutcome MprisMusicPlayer::playPlaylist(const QString& name)
{
    return withPlayer<ScriptOutcome>([&](const QString& player, Deadline until) -> ScriptOutcome {
        const auto found = playlists(player, until);
        if (const auto* error = std::get_if<ScriptErrorRecord>(&found)) {
            return *error;
        }
        for (const Playlist& playlist : std::get<QList<Playlist>>(found)) {
            if (playlist.name == name) {
                return activate(player, playlist, until);
            }
        }
        return MusicErrors::playlistNotFound(name);
    });
}

ScriptOutcome MprisMusicPlayer::activate(const QString& player, const Playlist& playlist,
                                         Deadline deadline) const
{
    PlaybackWatch watch(m_bus, player);
    if (!watch.start(deadline)) {
        return MusicErrors::notRunning();
    }
    if (auto error = watch.read(deadline)) {
        return failureOf(*error);
    }
    // From Stopped an activation can only mean "start": a player that plays or is paused may take it as
    // play/pause, or as a skip to the next track, instead.
    const bool wasPlaying = watch.isPlaying();
    const bool wasPaused = watch.isPaused();
    if (wasPlaying || wasPaused) {
        if (auto stopped = call(player, playerInterface, "Stop", deadline); stopped.error) {
            return failureOf(*stopped.error);
        }
        if (auto error = watch.read(deadline)) {
            return failureOf(*error);
        }
        // A player that does not stop finds no time left for the activation, which then times out.
        watch.waitUntil([&watch] { return !watch.isPlaying() && !watch.isPaused(); }, deadline);
    }
    const ActivePlaylist before = watch.active();
    auto activated = call(player, playlistsInterface, "ActivatePlaylist", deadline,
                          [&playlist](SdBus::Message& message) { message.appendObjectPath(playlist.id); });
    if (activated.error) {
        // Refused, the activation changed nothing but the stop, which is undone before the user hears why. A
        // player that cannot resume is left stopped: the refusal is what the user hears about.
        if (!isNoAnswer(*activated.error) && (wasPlaying || wasPaused)) {
            watch.resume(wasPaused, deadline);
        }
        return refusal(player, playlist, *activated.error, deadline);
    }
    if (auto error = watch.read(deadline)) {
        return failureOf(*error);
    }
    if (!watch.waitUntil(
            [&] { return watch.isPlaying() && watch.isActive(playlist.id, playlist.name, before); },
            deadline)) {
        return MusicErrors::notPlaying(player, playlist.name);
    }
    return ScriptNoResult{};
}

ScriptErrorRecord MprisMusicPlayer::refusal(const QString& player, const Playlist& playlist,
                                            const SdBus::Error& error, Deadline deadline) const
{
    // Players name a missing playlist each in their own way; one that no longer lists it has lost it since
    // it was looked up (deleted or renamed in the player), which is the missing playlist the user knows.
    const auto found = playlists(player, deadline);
    if (const auto* listed = std::get_if<QList<Playlist>>(&found);
        listed && std::none_of(listed->begin(), listed->end(), [&playlist](const Playlist& candidate) {
            return candidate.id == playlist.id || candidate.name == playlist.name;
        })) {
        return MusicErrors::playlistNotFound(playlist.name);
    }
    return failureOf(error);
}

ScriptOutcome MprisMusicPlayer::pause()
{
    return withPlayer<ScriptOutcome>([&](const QString& player, Deadline until) {
        return noResultOr(call(player, playerInterface, "Pause", until));
    });
}

PlaylistNames MprisMusicPlayer::playlistNames()
{
    return withPlayer<PlaylistNames>([&](const QString& player, Deadline until) -> PlaylistNames {
        const auto found = playlists(player, until);
        if (const auto* error = std::get_if<ScriptErrorRecord>(&found)) {
            return *error;
        }
        QStringList names;
        for (const Playlist& playlist : std::get<QList<Playlist>>(found)) {
            names.append(playlist.name);
        }
        return names;
    });
}

MprisMusicPlayer::Playlists MprisMusicPlayer::playlists(const QString& player, Deadline deadline) const
{
    auto properties = call(player, propertiesInterface, "GetAll", deadline, [](SdBus::Message& message) {
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

    auto reply = call(player, playlistsInterface, "GetPlaylists", deadline, [&](SdBus::Message& message) {
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

} // namespace MusicPlugin
