// Runs a private MPD for tests: its own socket, music folder and stored playlists, and a null audio output.
#pragma once

#include "ServerProcess.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

struct mpd_connection;

namespace VendelSDK::Testing {

// Writes an 8-bit mono PCM WAV file of silence at 4 kHz, making its folder; players decode it and report its
// duration. False when it could not be written.
bool writeSilentSong(const QString& path, int seconds);

class MpdTestServer
{
public:
    struct ConnectionDeleter
    {
        void operator()(mpd_connection* connection) const;
    };
    using Connection = std::unique_ptr<mpd_connection, ConnectionDeleter>;

    // What the tests check after a command.
    struct Status
    {
        bool random = false;
        QString state; // "stop", "play" or "pause"
        unsigned queueLength = 0;
        int songPosition = -1;
        int songId = -1;
    };

    MpdTestServer();
    ~MpdTestServer();
    MpdTestServer(const MpdTestServer&) = delete;
    MpdTestServer& operator=(const MpdTestServer&) = delete;

    // Before start: a WAV file of silence in the music folder. Long enough that playback is still under way
    // when a test looks, since the null output plays in real time.
    void addSong(const QString& relativePath, int seconds = 600);
    // A stored playlist of music-folder paths; may be added while MPD runs, it reads them when asked.
    void addPlaylist(const QString& name, const QStringList& songs);
    // Before start: the permissions of clients without a password, and a password with every permission.
    void setDefaultPermissions(const QString& permissions, const QString& password);

    // Starts MPD, waits until its socket answers, then has it index the music folder and waits until the
    // database holds every added song. Can be called again after stop(); the database is kept.
    bool start();
    void stop();
    bool isRunning() const;
    // Stops MPD's process (SIGSTOP) and lets it go on (SIGCONT): a frozen server still takes connections
    // in the kernel's queue, but answers nothing.
    bool freeze();
    bool thaw();

    QString socketPath() const;
    // Why start() failed, with the end of MPD's log.
    QString errorString() const { return m_error; }
    // The end of MPD's log, for the message of a failed check.
    QString logTail() const;

    // A new connection with every permission, for setting up and checking state; null if MPD cannot be
    // reached.
    Connection connect() const;
    std::optional<Status> status() const;
    // The status as any server of MPD's protocol reports it on that connection.
    static std::optional<Status> statusOf(mpd_connection* connection);
    // The queue's song paths in position order; nothing on failure.
    std::optional<QStringList> queue() const;
    // Sets the state a test starts from: empty queue, stopped, random off. False if MPD refused.
    bool reset() const;
    // Replaces the queue with a stored playlist and plays it, as a user would have before a test.
    bool playStoredPlaylist(const QString& name) const;

private:
    bool fail(const QString& reason);
    bool writeConfig();

    ServerProcess m_server;
    QString m_error;
    QString m_permissions;
    QString m_password;
    int m_songCount = 0;
};

} // namespace VendelSDK::Testing
