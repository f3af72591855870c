// A library that cannot be opened ends the application: the editor is useless without its playlists.
#include "PlaylistStore.h"

#include "MediaLibrary.h"

#include <VendelSDK/Platform.h>

namespace MusicPlugin {

using namespace VendelSDK;

PlaylistStore::PlaylistStore(QObject* parent) : QObject(parent)
{
    load(*makePlatformMediaLibrary());
}

PlaylistStore::PlaylistStore(MediaLibrary& library, QObject* parent) : QObject(parent)
{
    load(library);
}

void PlaylistStore::setPlaylists(const QStringList& playlists)
{
    if (playlists == m_playlists) {
        return;
    }
    m_playlists = playlists;
    Q_EMIT playlistsChanged();
}

void PlaylistStore::load(MediaLibrary& library)
{
    auto names = library.playlistNames();
    if (const auto* error = std::get_if<Error>(&names)) {
        Platform::alertPresenter().runModal(Alert::fromError(*error));
        Platform::applicationServices().terminate();
        return;
    }
    // Every entry counts, in the library's order: two playlists of one name are two choices.
    setPlaylists(std::get<QStringList>(std::move(names)));
}

} // namespace MusicPlugin
