// Keeps one action's configuration: read from the host once, written back after saves and at termination.
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

// Lifetime: the termination closure and the write action hold the provider strongly, so a provider whose
// owner lets it go early still makes its pending write and its write at termination. The termination write
// then drops both closures, which ends those cycles: the provider goes with its last owner. Application
// services destroyed without announcing termination end the cycles in the same way, without a write.
template <VendelActionConfig T>
class LocalConfigProvider final : public ConfigProvider,
                                  public std::enable_shared_from_this<LocalConfigProvider<T>>
{
    struct Key
    {
        explicit Key() = default;
    };

public:
    // Reads the action's configuration from the host. Nothing when the host could not be asked; the
    // configuration alert has then been shown. Call it on the main thread.
    static std::shared_ptr<LocalConfigProvider> create(QString identifier, T fallback,
                                                       std::unique_ptr<VendelAPI> hostAPI = nullptr)
    {
        if (!hostAPI) {
            hostAPI = std::make_unique<VendelAPI>();
        }
        auto provider = std::make_shared<LocalConfigProvider>(Key{}, std::move(identifier),
                                                              std::move(fallback), std::move(hostAPI));
        const std::optional<QString> text =
            withErrorAlert([&provider] { return provider->m_api->getConfig(provider->m_actionID); });
        if (!text) {
            return nullptr;
        }
        provider->config = decodeConfig(*text, provider->m_defaultConfig);
        provider->m_appTerminationObserver =
            std::make_unique<AppTerminationObserver>([self = provider] { self->writeAtTermination(); });
        // Services that go away without announcing termination (replaced in a test, or an exit that skips
        // the event loop) will never call the closure; holding the provider for it would only leak it.
        QObject::connect(&Platform::applicationServices(), &QObject::destroyed,
                         provider->m_appTerminationObserver.get(), [raw = provider.get()] { raw->letGo(); });
        return provider;
    }

    LocalConfigProvider(Key, QString identifier, T fallback, std::unique_ptr<VendelAPI> hostAPI)
        : config(fallback), m_actionID(std::move(identifier)), m_defaultConfig(std::move(fallback)),
          m_api(std::move(hostAPI))
    {}

    // The current value; assigning it writes nothing until save().
    T config;

    const QString& actionID() const { return m_actionID; }
    // The value used when the host's text holds no valid configuration.
    const T& defaultConfig() const { return m_defaultConfig; }
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
        withErrorAlert([this] { m_api->setConfig(encodeConfig(config), m_actionID); });
    }

    void writeAtTermination()
    {
        try {
            m_api->setConfig(encodeConfig(config), m_actionID);
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

    QString m_actionID;
    T m_defaultConfig;
    std::unique_ptr<VendelAPI> m_api;
    std::unique_ptr<AppTerminationObserver> m_appTerminationObserver;
    std::unique_ptr<DelayedActionController> m_writeAction;
    bool m_released = false;
};

} // namespace VendelSDK
