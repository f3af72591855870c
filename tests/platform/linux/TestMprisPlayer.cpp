// A media player for tests: serves MPRIS's Player and Playlists interfaces and logs every call it is given.
//
// Options: --name <part after "org.mpris.MediaPlayer2.">, --status Playing|Paused|Stopped,
// --playlist <name> (repeatable, in the player's own order), --ordering <name> (repeatable),
// --no-playlists (serves no Playlists interface), --refuse-pause (answers Pause with an error).
// Besides MPRIS it serves org.vendel.TestPlayer with the property Calls, the log that tests read.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <algorithm>
#include <cstdio>

namespace {

struct PlaylistEntry
{
    QDBusObjectPath id;
    QString name;
    QString icon;
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

Q_DECLARE_METATYPE(PlaylistEntry)

namespace {

// What the player is and was told; the adaptors share it.
struct PlayerState
{
    QString playbackStatus;
    bool shuffle = false;
    QList<PlaylistEntry> playlists;
    QStringList orderings;
    bool refusePause = false;
    QStringList calls;
};

// QtDBus keeps the context of a call on the object that the adaptors belong to, not on the adaptor.
class PlayerObject : public QObject, public QDBusContext
{
    Q_OBJECT
};

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
            m_state.playbackStatus = QStringLiteral("Paused");
        }
    }

private:
    PlayerObject& context() const { return *static_cast<PlayerObject*>(parent()); }

    PlayerState& m_state;
};

class PlaylistsAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Playlists")
    Q_PROPERTY(uint PlaylistCount READ playlistCount)
    Q_PROPERTY(QStringList Orderings READ orderings)

public:
    PlaylistsAdaptor(PlayerObject* parent, PlayerState& state) : QDBusAbstractAdaptor(parent), m_state(state)
    {}

    uint playlistCount() const { return static_cast<uint>(m_state.playlists.size()); }
    QStringList orderings() const { return m_state.orderings; }

public Q_SLOTS:
    QList<PlaylistEntry> GetPlaylists(uint index, uint maxCount, const QString& order, bool reverseOrder)
    {
        m_state.calls.append(
            QStringLiteral("GetPlaylists %1 %2 %3 %4")
                .arg(index)
                .arg(maxCount)
                .arg(order, reverseOrder ? QStringLiteral("true") : QStringLiteral("false")));
        QList<PlaylistEntry> ordered = m_state.playlists;
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
        const bool known = std::any_of(m_state.playlists.begin(), m_state.playlists.end(),
                                       [&id](const PlaylistEntry& playlist) { return playlist.id == id; });
        if (!known) {
            context().sendErrorReply(QStringLiteral("org.mpris.MediaPlayer2.Error.NoSuchPlaylist"),
                                     QStringLiteral("No such playlist"));
            return;
        }
        m_state.playbackStatus = QStringLiteral("Playing");
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

public:
    LogAdaptor(QObject* parent, PlayerState& state) : QDBusAbstractAdaptor(parent), m_state(state) {}

    QStringList calls() const { return m_state.calls; }

private:
    PlayerState& m_state;
};

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<PlaylistEntry>();
    qDBusRegisterMetaType<QList<PlaylistEntry>>();

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
    parser.addOptions(
        {nameOption, statusOption, playlistOption, orderingOption, noPlaylistsOption, refusePauseOption});
    parser.process(application);
    if (!parser.isSet(nameOption)) {
        std::fputs("TestMprisPlayer: --name is required\n", stderr);
        return 2;
    }

    PlayerState state;
    state.playbackStatus = parser.value(statusOption);
    state.refusePause = parser.isSet(refusePauseOption);
    state.orderings = parser.values(orderingOption);
    const QStringList names = parser.values(playlistOption);
    for (qsizetype index = 0; index < names.size(); ++index) {
        state.playlists.append(
            {QDBusObjectPath(QStringLiteral("/org/vendel/TestPlayer/Playlist/%1").arg(index)),
             names.at(index),
             {}});
    }

    PlayerObject player;
    new RootAdaptor(&player);
    new PlayerAdaptor(&player, state);
    if (!parser.isSet(noPlaylistsOption)) {
        new PlaylistsAdaptor(&player, state);
    }
    new LogAdaptor(&player, state);

    auto bus = QDBusConnection::sessionBus();
    // The name comes last, so that whoever sees it finds the object ready.
    if (!bus.registerObject(QStringLiteral("/org/mpris/MediaPlayer2"), &player) ||
        !bus.registerService(QStringLiteral("org.mpris.MediaPlayer2.") + parser.value(nameOption))) {
        std::fprintf(stderr, "TestMprisPlayer: %s\n", bus.lastError().message().toUtf8().constData());
        return 1;
    }
    return application.exec();
}

#include "TestMprisPlayer.moc"
