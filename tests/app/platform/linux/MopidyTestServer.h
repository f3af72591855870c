// Runs Mopidy for tests: a real player, written by others, that serves both MPRIS and MPD's protocol.
#pragma once

#include "MpdTestServer.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace VendelSDK::Testing {

// Mopidy with its file and m3u backends on a private folder, a fake audio sink that keeps real time, MPRIS
// on the session bus (the caller's private one) and MPD's protocol on a socket in the folder.
class MopidyTestServer
{
public:
    static constexpr auto busName = "org.mpris.MediaPlayer2.mopidy";

    MopidyTestServer();
    ~MopidyTestServer();
    MopidyTestServer(const MopidyTestServer&) = delete;
    MopidyTestServer& operator=(const MopidyTestServer&) = delete;

    // Before start: a silent song in the music folder, long enough to still play when a test looks.
    void addSong(const QString& relativePath, int seconds = 600);
    // Before start: an m3u playlist of music-folder paths, named as Mopidy shows it.
    void addPlaylist(const QString& name, const QStringList& songs);

    // Starts Mopidy and waits until both its bus name and its MPD socket answer.
    bool start();
    void stop();
    QString socketPath() const;
    // Why start() failed, with the end of Mopidy's output.
    QString errorString() const { return m_error; }
    QString logTail() const;

    MpdTestServer::Connection connect() const;
    std::optional<MpdTestServer::Status> status() const;
    // The path of the song that plays, relative to the music folder; empty when none does.
    QString currentSong() const;
    // Stopped, empty queue, random off.
    bool reset() const;

private:
    bool fail(const QString& reason);
    bool writeConfig() const;

    ServerProcess m_server;
    QString m_error;
};

} // namespace VendelSDK::Testing
