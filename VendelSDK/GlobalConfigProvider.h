// Keeps the plugin-wide configuration: read from the host once, written back after saves and at termination.
#pragma once

#include "AppTerminationObserver.h"
#include "ConfigAlert.h"
#include "ConfigCoding.h"
#include "ConfigProvider.h"
#include "DelayedActionController.h"
#include "Platform.h"
#include "VendelAPI.h"
#include "VendelActionConfig.h"

#include <QString>

#include <memory>
#include <optional>
#include <utility>

namespace VendelSDK {

// Lifetime as for LocalConfigProvider: the termination closure and the write action hold the provider
// until the termination write, or the end of the application services, drops them.
template <VendelActionConfig T>
class GlobalConfigProvider final : public ConfigProvider,
                                   public std::enable_shared_from_this<GlobalConfigProvider<T>>
{
    struct Key
    {
        explicit Key() = default;
    };

public:
    // Reads the plugin's configuration from the host. Nothing when the host could not be asked; the
    // configuration alert has then been shown. Call it on the main thread.
    static std::shared_ptr<GlobalConfigProvider> create(std::unique_ptr<VendelAPI> hostAPI = nullptr)
    {
        if (!hostAPI) {
            hostAPI = std::make_unique<VendelAPI>();
        }
        auto provider = std::make_shared<GlobalConfigProvider>(Key{}, std::move(hostAPI));
        const std::optional<QString> text =
            withErrorAlert([&provider] { return provider->m_api->getGlobalConfig(); });
        if (!text) {
            return nullptr;
        }
        provider->config = decodeConfig(*text, T{});
        provider->m_appTerminationObserver =
            std::make_unique<AppTerminationObserver>([self = provider] { self->writeAtTermination(); });
        // Services that go away without announcing termination (replaced in a test, or an exit that skips
        // the event loop) will never call the closure; holding the provider for it would only leak it.
        QObject::connect(&Platform::applicationServices(), &QObject::destroyed,
                         provider->m_appTerminationObserver.get(), [raw = provider.get()] { raw->letGo(); });
        return provider;
    }

    GlobalConfigProvider(Key, std::unique_ptr<VendelAPI> hostAPI) : m_api(std::move(hostAPI)) {}

    // The current value; assigning it writes nothing until save().
    T config{};

    VendelAPI& api() const { return *m_api; }
    AppTerminationObserver* appTerminationObserver() const { return m_appTerminationObserver.get(); }
    // Made by the first save().
    DelayedActionController* writeAction() const { return m_writeAction.get(); }

    // Writes `config` to the host about a second after the last call of a burst; returns at once.
    void save()
    {
        // After the termination write nothing more is written, and a new write action would hold the
        // provider again.
        if (m_released) {
            return;
        }
        if (!m_writeAction) {
            m_writeAction = std::make_unique<DelayedActionController>(
                1.0, [self = this->shared_from_this()] { self->write(); });
        }
        m_writeAction->run();
    }

private:
    void write()
    {
        withErrorAlert([this] { m_api->setGlobalConfig(encodeConfig(config)); });
    }

    void writeAtTermination()
    {
        try {
            m_api->setGlobalConfig(encodeConfig(config));
        } catch (...) {
            // The application is ending: nobody could act on an alert now.
        }
        letGo();
    }

    // Drops the closures' strong references, which ends the cycles that kept the provider alive; from
    // then on it lives only as long as its owner keeps it, and writes no more.
    void letGo()
    {
        m_released = true;
        const std::function<void()> closures[] = {
            std::exchange(m_appTerminationObserver->onRun, {}),
            m_writeAction ? std::exchange(m_writeAction->action, {}) : std::function<void()>(),
        };
        // The closures are destroyed on return, possibly with the provider itself; nothing may follow.
    }

    std::unique_ptr<VendelAPI> m_api;
    std::unique_ptr<AppTerminationObserver> m_appTerminationObserver;
    std::unique_ptr<DelayedActionController> m_writeAction;
    bool m_released = false;
};

} // namespace VendelSDK
