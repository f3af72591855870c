// A media player for tests: serves MPRIS's Player and Playlists interfaces and logs every call it is given.
//
// Options: --name <part after "org.mpris.MediaPlayer2.">, --status Playing|Paused|Stopped,
// --playlist <name> (repeatable, in the player's own order), --ordering <name> (repeatable),
// --no-playlists (serves no Playlists interface), --refuse-pause (answers Pause with an error),
// --locked-shuffle (Shuffle is read-only: setting it fails with PropertyReadOnly),
// --active <index> and --track <number> (the playlist that plays or is paused at start, and its track),
// --vanishing-playlist <name> (the playlist is removed once GetPlaylists has listed it, as if another
// program deleted it right then: activating it then fails with NoSuchPlaylist),
// --quirk <quirk> (repeatable): the ways real players were seen to depart from MPRIS:
//   toggle-while-playing  activating while playing pauses the same playlist and stops for another one;
//   skip-on-activate      activating the playlist that plays or is paused moves on to its next track;
//   stale-active-playlist ActivePlaylist always names the last playlist, whichever plays, and never changes;
//   changing-ids          every GetPlaylists names the playlists with new ids, and only those are valid;
//   user-ordering-only    offers only the ordering "User", which MPRIS does not name, and refuses any other;
//   never-plays           activating a playlist is answered, but playback never starts;
//   never-answers         activating a playlist is never answered.
// Changes of PlaybackStatus and ActivePlaylist are announced with PropertiesChanged, as MPRIS asks.
// Besides MPRIS it serves org.vendel.TestPlayer with the properties Calls, the log that tests read, Track,
// the number of the track that plays in the active playlist, and Active, the id of the playlist that really
// is active ("" for none), whatever ActivePlaylist says.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QSet>

#include <algorithm>
#include <cstdio>

namespace {

struct PlaylistEntry
{
    QDBusObjectPath id;
    QString name;
    QString icon;
};

// MPRIS's ActivePlaylist: whether one is active, and which.
struct MaybePlaylist
{
    bool valid = false;
    PlaylistEntry playlist;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PlaylistEntry& playlist)
{
    argument.beginStructure();
    argument << playlist.id << playlist.name << playlist.icon;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PlaylistEntry& playlist)
{
    argument.beginStructure();
    argument >> playlist.id >> playlist.name >> playlist.icon;
    argument.endStructure();
    return argument;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const MaybePlaylist& active)
{
    argument.beginStructure();
    argument << active.valid << active.playlist;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MaybePlaylist& active)
{
    argument.beginStructure();
    argument >> active.valid >> active.playlist;
    argument.endStructure();
    return argument;
}

Q_DECLARE_METATYPE(PlaylistEntry)
Q_DECLARE_METATYPE(MaybePlaylist)

namespace {

const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");

// What the player is and was told; the adaptors share it.
struct PlayerState
{
    QString playbackStatus;
    bool shuffle = false;
    QList<PlaylistEntry> playlists;
    QStringList orderings;
    bool refusePause = false;
    QStringList quirks;
    // Which playlist is active, as its index in `playlists`; -1 for none.
    qsizetype activePlaylist = -1;
    int track = 0;
    // Bumped by every GetPlaylists with the changing-ids quirk; ids carry it.
    int idGeneration = 0;
    // The playlist removed once listed, and those removed; they keep their index, so the others keep their
    // ids.
    QString vanishing;
    QSet<qsizetype> removed;
    QStringList calls;

    bool has(const char* quirk) const { return quirks.contains(QLatin1String(quirk)); }

    QDBusObjectPath idOf(qsizetype index) const
    {
        return QDBusObjectPath(
            idGeneration == 0
                ? QStringLiteral("/org/vendel/TestPlayer/Playlist/%1").arg(index)
                : QStringLiteral("/org/vendel/TestPlayer/Playlist/%1/g%2").arg(index).arg(idGeneration));
    }

    qsizetype indexOf(const QDBusObjectPath& id) const
    {
        for (qsizetype index = 0; index < playlists.size(); ++index) {
            if (idOf(index) == id && !removed.contains(index)) {
                return index;
            }
        }
        return -1;
    }
};

// QtDBus keeps the context of a call on the object that the adaptors belong to, not on the adaptor.
class PlayerObject : public QObject, public QDBusContext
{
    Q_OBJECT
};

// What ActivePlaylist reports.
MaybePlaylist activePlaylistOf(const PlayerState& state)
{
    if (state.has("stale-active-playlist") && !state.playlists.isEmpty()) {
        const qsizetype last = state.playlists.size() - 1;
        return MaybePlaylist{true, {state.idOf(last), state.playlists.at(last).name, {}}};
    }
    if (state.activePlaylist < 0) {
        return MaybePlaylist{false, {QDBusObjectPath(QStringLiteral("/")), QString(), QString()}};
    }
    const PlaylistEntry& entry = state.playlists.at(state.activePlaylist);
    return MaybePlaylist{true, {state.idOf(state.activePlaylist), entry.name, entry.icon}};
}

void announce(const QString& interface, const QString& property, const QVariant& value)
{
    auto signal = QDBusMessage::createSignal(objectPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                             QStringLiteral("PropertiesChanged"));
    signal << interface << QVariantMap{{property, value}} << QStringList();
    QDBusConnection::sessionBus().send(signal);
}

// Sets the status and the active playlist, and announces what changed.
void change(PlayerState& state, const QString& status, qsizetype active)
{
    if (status != state.playbackStatus) {
        state.playbackStatus = status;
        announce(QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("PlaybackStatus"), status);
    }
    if (active != state.activePlaylist) {
        state.activePlaylist = active;
        if (state.has("stale-active-playlist")) {
            return;
        }
        announce(QStringLiteral("org.mpris.MediaPlayer2.Playlists"), QStringLiteral("ActivePlaylist"),
                 QVariant::fromValue(activePlaylistOf(state)));
    }
}

class RootAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(QString Identity READ identity)
    Q_PROPERTY(bool CanQuit READ canQuit)
    Q_PROPERTY(bool CanRaise READ canRaise)
    Q_PROPERTY(bool HasTrackList READ hasTrackList)

public:
    explicit RootAdaptor(QObject* parent) : QDBusAbstractAdaptor(parent) {}

    QString identity() const { return QStringLiteral("Vendel test player"); }
    bool canQuit() const { return false; }
    bool canRaise() const { return false; }
    bool hasTrackList() const { return false; }
};

class PlayerAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(bool Shuffle READ shuffle WRITE setShuffle)
    Q_PROPERTY(bool CanControl READ canControl)
    Q_PROPERTY(bool CanPause READ canControl)
    Q_PROPERTY(bool CanPlay READ canControl)

public:
    PlayerAdaptor(PlayerObject* parent, PlayerState& state) : QDBusAbstractAdaptor(parent), m_state(state) {}

    QString playbackStatus() const { return m_state.playbackStatus; }
    bool shuffle() const { return m_state.shuffle; }
    void setShuffle(bool enabled)
    {
        m_state.calls.append(QStringLiteral("Shuffle=") +
                             (enabled ? QStringLiteral("true") : QStringLiteral("false")));
        m_state.shuffle = enabled;
    }
    bool canControl() const { return true; }

public Q_SLOTS:
    void Pause()
    {
        m_state.calls.append(QStringLiteral("Pause"));
        if (m_state.refusePause) {
            context().sendErrorReply(QStringLiteral("org.vendel.TestPlayer.Error.Refused"),
                                     QStringLiteral("Pausing is not allowed now"));
            return;
        }
        if (m_state.playbackStatus == u"Playing") {
            change(m_state, QStringLiteral("Paused"), m_state.activePlaylist);
        }
    }

    void Stop()
    {
        m_state.calls.append(QStringLiteral("Stop"));
        change(m_state, QStringLiteral("Stopped"), m_state.activePlaylist);
    }

    void Play()
    {
        m_state.calls.append(QStringLiteral("Play"));
        if (m_state.activePlaylist >= 0 && !m_state.has("never-plays")) {
            change(m_state, QStringLiteral("Playing"), m_state.activePlaylist);
        }
    }

private:
    PlayerObject& context() const { return *static_cast<PlayerObject*>(parent()); }

    PlayerState& m_state;
};

// The same Player, but its Shuffle cannot be set: the property declared here hides the writable one, and
// the bus answers a Set with PropertyReadOnly.
class LockedShufflePlayerAdaptor : public PlayerAdaptor
{
    Q_OBJECT
    Q_PROPERTY(bool Shuffle READ shuffle)

public:
    using PlayerAdaptor::PlayerAdaptor;
};

class PlaylistsAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Playlists")
    Q_PROPERTY(uint PlaylistCount READ playlistCount)
    Q_PROPERTY(QStringList Orderings READ orderings)
    Q_PROPERTY(MaybePlaylist ActivePlaylist READ activePlaylist)

public:
    PlaylistsAdaptor(PlayerObject* parent, PlayerState& state) : QDBusAbstractAdaptor(parent), m_state(state)
    {}

    uint playlistCount() const
    {
        return static_cast<uint>(m_state.playlists.size() - m_state.removed.size());
    }
    QStringList orderings() const
    {
        return m_state.has("user-ordering-only") ? QStringList{QStringLiteral("User")} : m_state.orderings;
    }
    MaybePlaylist activePlaylist() const { return activePlaylistOf(m_state); }

public Q_SLOTS:
    QList<PlaylistEntry> GetPlaylists(uint index, uint maxCount, const QString& order, bool reverseOrder)
    {
        m_state.calls.append(
            QStringLiteral("GetPlaylists %1 %2 %3 %4")
                .arg(index)
                .arg(maxCount)
                .arg(order, reverseOrder ? QStringLiteral("true") : QStringLiteral("false")));
        if (m_state.has("user-ordering-only") && order != u"User") {
            context().sendErrorReply(QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"),
                                     QStringLiteral("Unknown ordering"));
            return {};
        }
        if (m_state.has("changing-ids")) {
            ++m_state.idGeneration;
        }
        QList<PlaylistEntry> ordered;
        for (qsizetype entry = 0; entry < m_state.playlists.size(); ++entry) {
            if (!m_state.removed.contains(entry)) {
                ordered.append({m_state.idOf(entry), m_state.playlists.at(entry).name,
                                m_state.playlists.at(entry).icon});
            }
        }
        for (qsizetype entry = 0; entry < m_state.playlists.size(); ++entry) {
            if (m_state.playlists.at(entry).name == m_state.vanishing) {
                m_state.removed.insert(entry);
            }
        }
        if (order == u"Alphabetical") {
            std::stable_sort(
                ordered.begin(), ordered.end(),
                [](const PlaylistEntry& left, const PlaylistEntry& right) { return left.name < right.name; });
        }
        if (reverseOrder) {
            std::reverse(ordered.begin(), ordered.end());
        }
        return ordered.mid(index, maxCount);
    }

    void ActivatePlaylist(const QDBusObjectPath& id)
    {
        m_state.calls.append(QStringLiteral("ActivatePlaylist ") + id.path());
        const qsizetype index = m_state.indexOf(id);
        if (index < 0) {
            context().sendErrorReply(QStringLiteral("org.mpris.MediaPlayer2.Error.NoSuchPlaylist"),
                                     QStringLiteral("No such playlist"));
            return;
        }
        if (m_state.has("never-answers")) {
            // The call stays unanswered for as long as the player runs.
            context().setDelayedReply(true);
            return;
        }
        const bool playing = m_state.playbackStatus == u"Playing";
        const bool paused = m_state.playbackStatus == u"Paused";
        if (m_state.has("never-plays")) {
            change(m_state, m_state.playbackStatus, index);
        } else if (playing && m_state.has("toggle-while-playing")) {
            // Taken as play/pause: the same playlist pauses, another one stops with nothing to play.
            if (index == m_state.activePlaylist) {
                change(m_state, QStringLiteral("Paused"), index);
            } else {
                change(m_state, QStringLiteral("Stopped"), -1);
            }
        } else if ((playing || paused) && index == m_state.activePlaylist &&
                   m_state.has("skip-on-activate")) {
            ++m_state.track;
            change(m_state, QStringLiteral("Playing"), index);
        } else {
            m_state.track = 0;
            change(m_state, QStringLiteral("Playing"), index);
        }
    }

private:
    PlayerObject& context() const { return *static_cast<PlayerObject*>(parent()); }

    PlayerState& m_state;
};

class LogAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.vendel.TestPlayer")
    Q_PROPERTY(QStringList Calls READ calls)
    Q_PROPERTY(int Track READ track)
    Q_PROPERTY(QString Active READ active)

public:
    LogAdaptor(QObject* parent, PlayerState& state) : QDBusAbstractAdaptor(parent), m_state(state) {}

    QStringList calls() const { return m_state.calls; }
    int track() const { return m_state.track; }
    QString active() const
    {
        return m_state.activePlaylist < 0 ? QString() : m_state.idOf(m_state.activePlaylist).path();
    }

private:
    PlayerState& m_state;
};

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<PlaylistEntry>();
    qDBusRegisterMetaType<QList<PlaylistEntry>>();
    qDBusRegisterMetaType<MaybePlaylist>();

    QCommandLineParser parser;
    const QCommandLineOption nameOption(QStringLiteral("name"), QStringLiteral("Bus name suffix."),
                                        QStringLiteral("name"));
    const QCommandLineOption statusOption(QStringLiteral("status"), QStringLiteral("Playback status."),
                                          QStringLiteral("status"), QStringLiteral("Stopped"));
    const QCommandLineOption playlistOption(QStringLiteral("playlist"), QStringLiteral("A playlist."),
                                            QStringLiteral("name"));
    const QCommandLineOption orderingOption(QStringLiteral("ordering"), QStringLiteral("An ordering."),
                                            QStringLiteral("name"));
    const QCommandLineOption noPlaylistsOption(QStringLiteral("no-playlists"),
                                               QStringLiteral("Serve no Playlists interface."));
    const QCommandLineOption refusePauseOption(QStringLiteral("refuse-pause"),
                                               QStringLiteral("Answer Pause with an error."));
    const QCommandLineOption lockedShuffleOption(QStringLiteral("locked-shuffle"),
                                                 QStringLiteral("Refuse to set Shuffle."));
    const QCommandLineOption activeOption(QStringLiteral("active"), QStringLiteral("The active playlist."),
                                          QStringLiteral("index"));
    const QCommandLineOption trackOption(QStringLiteral("track"), QStringLiteral("The active track."),
                                         QStringLiteral("number"), QStringLiteral("0"));
    const QCommandLineOption vanishingOption(QStringLiteral("vanishing-playlist"),
                                             QStringLiteral("A playlist removed once listed."),
                                             QStringLiteral("name"));
    const QCommandLineOption quirkOption(
        QStringLiteral("quirk"), QStringLiteral("A way to depart from MPRIS."), QStringLiteral("quirk"));
    parser.addOptions({nameOption, statusOption, playlistOption, orderingOption, noPlaylistsOption,
                       refusePauseOption, lockedShuffleOption, activeOption, trackOption, vanishingOption,
                       quirkOption});
    parser.process(application);
    if (!parser.isSet(nameOption)) {
        std::fputs("TestMprisPlayer: --name is required\n", stderr);
        return 2;
    }

    PlayerState state;
    state.playbackStatus = parser.value(statusOption);
    state.refusePause = parser.isSet(refusePauseOption);
    state.orderings = parser.values(orderingOption);
    state.quirks = parser.values(quirkOption);
    for (const QString& quirk : std::as_const(state.quirks)) {
        if (!QStringList{QStringLiteral("toggle-while-playing"), QStringLiteral("skip-on-activate"),
                         QStringLiteral("changing-ids"), QStringLiteral("user-ordering-only"),
                         QStringLiteral("stale-active-playlist"), QStringLiteral("never-plays"),
                         QStringLiteral("never-answers")}
                 .contains(quirk)) {
            std::fprintf(stderr, "TestMprisPlayer: no quirk \"%s\"\n", quirk.toUtf8().constData());
            return 2;
        }
    }
    const QStringList names = parser.values(playlistOption);
    for (qsizetype index = 0; index < names.size(); ++index) {
        state.playlists.append(
            {QDBusObjectPath(QStringLiteral("/org/vendel/TestPlayer/Playlist/%1").arg(index)),
             names.at(index),
             {}});
    }

    if (parser.isSet(activeOption)) {
        state.activePlaylist = parser.value(activeOption).toLongLong();
        if (state.activePlaylist < 0 || state.activePlaylist >= state.playlists.size()) {
            std::fputs("TestMprisPlayer: --active names no playlist\n", stderr);
            return 2;
        }
    }
    state.track = parser.value(trackOption).toInt();
    state.vanishing = parser.value(vanishingOption);

    PlayerObject player;
    new RootAdaptor(&player);
    if (parser.isSet(lockedShuffleOption)) {
        new LockedShufflePlayerAdaptor(&player, state);
    } else {
        new PlayerAdaptor(&player, state);
    }
    if (!parser.isSet(noPlaylistsOption)) {
        new PlaylistsAdaptor(&player, state);
    }
    new LogAdaptor(&player, state);

    auto bus = QDBusConnection::sessionBus();
    // The name comes last, so that whoever sees it finds the object ready.
    if (!bus.registerObject(objectPath, &player) ||
        !bus.registerService(QStringLiteral("org.mpris.MediaPlayer2.") + parser.value(nameOption))) {
        std::fprintf(stderr, "TestMprisPlayer: %s\n", bus.lastError().message().toUtf8().constData());
        return 1;
    }
    return application.exec();
}

#include "TestMprisPlayer.moc"
