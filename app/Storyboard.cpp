// The scene registry; filled by the windowed part of the application when it is loaded.
#include "Storyboard.h"

#include <VendelSDK/FatalError.h>

#include <QHash>

namespace MusicPlugin {

namespace {

using SceneKey = std::pair<QString, QString>;

QHash<SceneKey, Storyboard::SceneFactory>& scenes()
{
    static QHash<SceneKey, Storyboard::SceneFactory> registry;
    return registry;
}

} // namespace

void Storyboard::registerScene(const QString& storyboard, const QString& identifier, SceneFactory factory)
{
    scenes().insert({storyboard, identifier}, std::move(factory));
}

bool Storyboard::exists(const QString& name)
{
    const auto& registry = scenes();
    return std::any_of(registry.keyBegin(), registry.keyEnd(),
                       [&](const SceneKey& key) { return key.first == name; });
}

void Storyboard::clear()
{
    scenes().clear();
}

std::unique_ptr<WindowController> Storyboard::instantiateController(const QString& identifier) const
{
    const auto factory = scenes().value({m_name, identifier});
    std::unique_ptr<WindowController> controller = factory ? factory() : nullptr;
    if (!controller) {
        VendelSDK::fatalError(
            QStringLiteral("Storyboard “%1” has no window controller “%2”.").arg(m_name, identifier),
            "app/Storyboard", __LINE__);
    }
    return controller;
}

} // namespace MusicPlugin
