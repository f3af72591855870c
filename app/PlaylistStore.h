// The names of the user's playlists, read once from the media library, for the editor's playlist list.
#pragma once

#include <QObject>
#include <QStringList>

namespace MusicPlugin {

class MediaLibrary;

class PlaylistStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList playlists READ playlists WRITE setPlaylists NOTIFY playlistsChanged)

public:
    // Reads the platform's media library.
    explicit PlaylistStore(QObject* parent = nullptr);
    // Reads the given library; the store does not keep it.
    explicit PlaylistStore(MediaLibrary& library, QObject* parent = nullptr);

    // In the library's order, duplicates kept; empty when the library could not be opened.
    const QStringList& playlists() const { return m_playlists; }
    // Only the store's own creation writes the list; the setter is there for bindings.
    void setPlaylists(const QStringList& playlists);

Q_SIGNALS:
    void playlistsChanged();

private:
    void load(MediaLibrary& library);

    QStringList m_playlists;
};

} // namespace MusicPlugin
