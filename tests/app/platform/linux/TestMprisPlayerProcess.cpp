// Starts and stops the test player's process and reads its properties over the session bus.
#include "TestMprisPlayerProcess.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>

namespace VendelSDK::Testing {

namespace {

constexpr int busTimeoutMs = 10000;

bool isOnBus(const QString& name)
{
    const auto* bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(name).value();
}

} // namespace

TestMprisPlayerProcess::TestMprisPlayerProcess(Options options) : m_options(std::move(options))
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A test that is killed leaves no player behind.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

TestMprisPlayerProcess::~TestMprisPlayerProcess()
{
    stop();
}

bool TestMprisPlayerProcess::start()
{
    QStringList arguments{QStringLiteral("--name"), m_options.name, QStringLiteral("--status"),
                          m_options.playbackStatus};
    for (const QString& playlist : std::as_const(m_options.playlists)) {
        arguments << QStringLiteral("--playlist") << playlist;
    }
    for (const QString& ordering : std::as_const(m_options.orderings)) {
        arguments << QStringLiteral("--ordering") << ordering;
    }
    if (!m_options.servesPlaylists) {
        arguments << QStringLiteral("--no-playlists");
    }
    if (m_options.refusesPause) {
        arguments << QStringLiteral("--refuse-pause");
    }
    if (m_options.locksShuffle) {
        arguments << QStringLiteral("--locked-shuffle");
    }
    if (m_options.activePlaylist >= 0) {
        arguments << QStringLiteral("--active") << QString::number(m_options.activePlaylist)
                  << QStringLiteral("--track") << QString::number(m_options.track);
    }
    if (!m_options.vanishingPlaylist.isEmpty()) {
        arguments << QStringLiteral("--vanishing-playlist") << m_options.vanishingPlaylist;
    }
    for (const QString& quirk : std::as_const(m_options.quirks)) {
        arguments << QStringLiteral("--quirk") << quirk;
    }
    m_process.start(QStringLiteral(VENDEL_TEST_MPRIS_PLAYER), arguments);
    if (!m_process.waitForStarted()) {
        return false;
    }
    return QTest::qWaitFor([this] { return isOnBus(busName()) || m_process.state() == QProcess::NotRunning; },
                           busTimeoutMs) &&
           m_process.state() == QProcess::Running;
}

bool TestMprisPlayerProcess::stop()
{
    if (m_process.state() == QProcess::NotRunning) {
        return true;
    }
    // A frozen player would keep the termination pending.
    thaw();
    m_process.terminate();
    if (!m_process.waitForFinished(busTimeoutMs)) {
        m_process.kill();
        m_process.waitForFinished();
    }
    return QTest::qWaitFor([this] { return !isOnBus(busName()); }, busTimeoutMs);
}

bool TestMprisPlayerProcess::freeze()
{
    return m_process.state() == QProcess::Running && ::kill(pid_t(m_process.processId()), SIGSTOP) == 0;
}

bool TestMprisPlayerProcess::thaw()
{
    return m_process.state() == QProcess::Running && ::kill(pid_t(m_process.processId()), SIGCONT) == 0;
}

QString TestMprisPlayerProcess::busName() const
{
    return QStringLiteral("org.mpris.MediaPlayer2.") + m_options.name;
}

QVariant TestMprisPlayerProcess::property(const QString& interface, const QString& name) const
{
    auto message = QDBusMessage::createMethodCall(busName(), QStringLiteral("/org/mpris/MediaPlayer2"),
                                                  QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"));
    message << interface << name;
    const auto reply = QDBusConnection::sessionBus().call(message);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return {};
    }
    return reply.arguments().first().value<QDBusVariant>().variant();
}

QString TestMprisPlayerProcess::playbackStatus() const
{
    return property(QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("PlaybackStatus"))
        .toString();
}

bool TestMprisPlayerProcess::shuffle() const
{
    return property(QStringLiteral("org.mpris.MediaPlayer2.Player"), QStringLiteral("Shuffle")).toBool();
}

QStringList TestMprisPlayerProcess::calls() const
{
    return property(QStringLiteral("org.vendel.TestPlayer"), QStringLiteral("Calls")).toStringList();
}

int TestMprisPlayerProcess::track() const
{
    return property(QStringLiteral("org.vendel.TestPlayer"), QStringLiteral("Track")).toInt();
}

QString TestMprisPlayerProcess::activePlaylist() const
{
    return property(QStringLiteral("org.vendel.TestPlayer"), QStringLiteral("Active")).toString();
}

QString TestMprisPlayerProcess::playlistId(int index)
{
    return QStringLiteral("/org/vendel/TestPlayer/Playlist/%1").arg(index);
}

} // namespace VendelSDK::Testing
