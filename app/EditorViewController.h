// The action editor's state: the edited values, bound to the window's controls, written through to the
// action's configuration in the host.
#pragma once

#include "LocalConfig.h"
#include "PlaylistStore.h"

#include <VendelSDK/LocalConfigProvider.h>

#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

namespace MusicPlugin {

class EditorViewController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(MusicPlugin::PlaylistStore* playlistStore READ playlistStore WRITE setPlaylistStore NOTIFY
                   playlistStoreChanged)
    Q_PROPERTY(qint64 actionIndex READ actionIndex WRITE setActionIndex NOTIFY actionIndexChanged)
    // A null variant stands for no playlist; otherwise the name, which may be empty.
    Q_PROPERTY(QVariant selectedPlaylist READ selectedPlaylistVariant WRITE setSelectedPlaylistVariant NOTIFY
                   selectedPlaylistChanged)
    Q_PROPERTY(bool shouldShuffle READ shouldShuffle WRITE setShouldShuffle NOTIFY shouldShuffleChanged)

public:
    using ConfigProvider = VendelSDK::LocalConfigProvider<LocalConfig>;

    // The operation control's entries: 0 plays, 1 pauses.
    static constexpr qint64 playIndex = 0;
    static constexpr qint64 pauseIndex = 1;

    // Makes a store of the platform's playlists, which may alert and ask to terminate.
    explicit EditorViewController(QObject* parent = nullptr);
    // Takes over the given store.
    explicit EditorViewController(PlaylistStore* playlistStore, QObject* parent = nullptr);
    ~EditorViewController() override;

    // Kept for the record's sake only; the operation edited is actionIndex.
    LocalConfig::Action action = LocalConfig::Action::play;

    PlaylistStore* playlistStore() const { return m_playlistStore; }
    // Replaces the store and deletes the one the editor owned; writes nothing.
    void setPlaylistStore(PlaylistStore* playlistStore);

    qint64 actionIndex() const { return m_actionIndex; }
    const std::optional<QString>& selectedPlaylist() const { return m_selectedPlaylist; }
    QVariant selectedPlaylistVariant() const;
    bool shouldShuffle() const { return m_shouldShuffle; }

    // Each setter keeps the value and, once a configuration is loaded, changes the record and asks for a
    // coalesced write, even when the value is unchanged.
    void setActionIndex(qint64 actionIndex);
    void setSelectedPlaylist(const std::optional<QString>& selectedPlaylist);
    void setSelectedPlaylistVariant(const QVariant& selectedPlaylist);
    void setShouldShuffle(bool shouldShuffle);

    const std::optional<QString>& actionIdentifier() const { return m_actionIdentifier; }
    void setActionIdentifier(std::optional<QString> actionIdentifier);

    // Present only after a successful load.
    const std::shared_ptr<ConfigProvider>& configProvider() const { return m_configProvider; }

public Q_SLOTS:
    // Reads the action's record and shows it; without an identifier it does nothing. A host that cannot be
    // asked ends the application, after the provider's alert.
    void loadConfiguration();
    // Opens the plugin's preferences through the configure handler.
    void showPreferences();

Q_SIGNALS:
    void playlistStoreChanged();
    void actionIndexChanged();
    void selectedPlaylistChanged();
    void shouldShuffleChanged();

private:
    // Asks the provider for a coalesced write, unless a load is assigning the values.
    void save();

    PlaylistStore* m_playlistStore = nullptr;
    qint64 m_actionIndex = playIndex;
    std::optional<QString> m_selectedPlaylist;
    bool m_shouldShuffle = false;
    std::optional<QString> m_actionIdentifier;
    std::shared_ptr<ConfigProvider> m_configProvider;
    bool m_loading = false;
};

} // namespace MusicPlugin
