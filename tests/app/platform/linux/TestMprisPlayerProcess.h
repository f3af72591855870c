// Runs the test MPRIS player in a process of its own on the session bus and reads back what it was told.
#pragma once

#include <QProcess>
#include <QStringList>
#include <QVariant>

namespace VendelSDK::Testing {

class TestMprisPlayerProcess
{
public:
    struct Options
    {
        // The part of the bus name after "org.mpris.MediaPlayer2.".
        QString name;
        QString playbackStatus = QStringLiteral("Stopped");
        // In the player's own order; equal names are allowed.
        QStringList playlists;
        QStringList orderings{QStringLiteral("Alphabetical"), QStringLiteral("UserDefined")};
        bool servesPlaylists = true;
        bool refusesPause = false;
        // Shuffle cannot be set: the shuffle script fails while the rest works.
        bool locksShuffle = false;
        // The index in `playlists` of the playlist that plays or is paused at start, and its track; none when
        // negative.
        int activePlaylist = -1;
        int track = 0;
        // A playlist that is removed once the player has listed it, as if deleted by another program then.
        QString vanishingPlaylist;
        // Ways real players depart from MPRIS (see TestMprisPlayer.cpp): "toggle-while-playing",
        // "skip-on-activate", "changing-ids", "user-ordering-only", "never-plays", "never-answers".
        QStringList quirks;
    };

    explicit TestMprisPlayerProcess(Options options);
    ~TestMprisPlayerProcess();
    TestMprisPlayerProcess(const TestMprisPlayerProcess&) = delete;
    TestMprisPlayerProcess& operator=(const TestMprisPlayerProcess&) = delete;

    // Starts the process and waits until its name is on the bus.
    bool start();
    // Ends the process and waits until its name has left the bus; false if it did not leave in time.
    bool stop();

    // Stops the process (SIGSTOP) and lets it go on (SIGCONT): a frozen player keeps its name on the bus
    // but answers nothing.
    bool freeze();
    bool thaw();

    QString busName() const;
    QString playbackStatus() const;
    bool shuffle() const;
    // Every call the player was given, in order: "Shuffle=true", "Pause", "GetPlaylists …",
    // "ActivatePlaylist <id>".
    QStringList calls() const;
    // The number of the track that plays in the active playlist: 0 for its first.
    int track() const;
    // The object path of the playlist that really is active, or the empty text when none is, whatever the
    // player reports in ActivePlaylist.
    QString activePlaylist() const;
    // The object path of the playlist at `index` of Options::playlists.
    static QString playlistId(int index);

private:
    QVariant property(const QString& interface, const QString& name) const;

    Options m_options;
    QProcess m_process;
};

} // namespace VendelSDK::Testing
