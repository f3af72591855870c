// Loading assigns through the setters, so opening an editor always schedules one write of what it loaded.
#include "EditorViewController.h"

#include "App.h"

#include <VendelSDK/Platform.h>

namespace MusicPlugin {

using namespace VendelSDK;

EditorViewController::EditorViewController(QObject* parent) : EditorViewController(new PlaylistStore, parent)
{}

EditorViewController::EditorViewController(PlaylistStore* playlistStore, QObject* parent)
    : QObject(parent), m_playlistStore(playlistStore)
{
    if (m_playlistStore) {
        m_playlistStore->setParent(this);
    }
}

EditorViewController::~EditorViewController() = default;

void EditorViewController::setPlaylistStore(PlaylistStore* playlistStore)
{
    if (playlistStore == m_playlistStore) {
        return;
    }
    PlaylistStore* const previous = m_playlistStore;
    m_playlistStore = playlistStore;
    if (m_playlistStore && !m_playlistStore->parent()) {
        m_playlistStore->setParent(this);
    }
    Q_EMIT playlistStoreChanged();
    if (previous && previous->parent() == this) {
        delete previous;
    }
}

QVariant EditorViewController::selectedPlaylistVariant() const
{
    return m_selectedPlaylist ? QVariant(*m_selectedPlaylist) : QVariant();
}

void EditorViewController::setActionIndex(qint64 actionIndex)
{
    const bool changed = actionIndex != m_actionIndex;
    m_actionIndex = actionIndex;
    if (m_configProvider) {
        // Only 1 pauses; every other number, negative ones included, plays.
        m_configProvider->config.action =
            actionIndex == pauseIndex ? LocalConfig::Action::pause : LocalConfig::Action::play;
        save();
    }
    if (changed) {
        Q_EMIT actionIndexChanged();
    }
}

void EditorViewController::setSelectedPlaylist(const std::optional<QString>& selectedPlaylist)
{
    const bool changed = selectedPlaylist != m_selectedPlaylist;
    m_selectedPlaylist = selectedPlaylist;
    if (m_configProvider) {
        // Never checked against the store: a playlist that is gone is kept, and only a run finds out.
        m_configProvider->config.name = selectedPlaylist;
        save();
    }
    if (changed) {
        Q_EMIT selectedPlaylistChanged();
    }
}

void EditorViewController::setSelectedPlaylistVariant(const QVariant& selectedPlaylist)
{
    setSelectedPlaylist(selectedPlaylist.isNull() ? std::nullopt
                                                  : std::optional<QString>(selectedPlaylist.toString()));
}

void EditorViewController::setShouldShuffle(bool shouldShuffle)
{
    const bool changed = shouldShuffle != m_shouldShuffle;
    m_shouldShuffle = shouldShuffle;
    if (m_configProvider) {
        m_configProvider->config.shouldShuffle = shouldShuffle;
        save();
    }
    if (changed) {
        Q_EMIT shouldShuffleChanged();
    }
}

void EditorViewController::setActionIdentifier(std::optional<QString> actionIdentifier)
{
    m_actionIdentifier = std::move(actionIdentifier);
}

void EditorViewController::loadConfiguration()
{
    if (!m_actionIdentifier) {
        return;
    }
    auto provider = ConfigProvider::create(*m_actionIdentifier, LocalConfig{});
    if (!provider) {
        // The provider has shown its alert; an editor that cannot reach the host has nothing to edit.
        Platform::applicationServices().terminate();
        return;
    }
    m_configProvider = std::move(provider);
    // In this order, each through its setter, so that the controls show the values and the record takes
    // them. The three count as one change: saves made in the same instant would each find a quiet second
    // when their checks run and write once each, so the loaded record is saved once, after all three.
    m_loading = true;
    setActionIndex(m_configProvider->config.action == LocalConfig::Action::pause ? pauseIndex : playIndex);
    setSelectedPlaylist(m_configProvider->config.name);
    setShouldShuffle(m_configProvider->config.shouldShuffle);
    m_loading = false;
    m_configProvider->save();
}

void EditorViewController::save()
{
    if (!m_loading) {
        m_configProvider->save();
    }
}

void EditorViewController::showPreferences()
{
    App::shared().vendelPlugin().actionController.onConfigure();
}

} // namespace MusicPlugin
