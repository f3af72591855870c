// Keeps the plugin-wide configuration: read from the host once, written back after saves and at termination.
#pragma once

#include <VendelSDK/ConfigAlert.h>
#include <VendelSDK/ConfigCoding.h>
#include <VendelSDK/ConfigProvider.h>
#include <VendelSDK/ConfigWriteBack.h>
#include <VendelSDK/VendelAPI.h>
#include <VendelSDK/VendelActionConfig.h>

#include <QString>

#include <memory>
#include <optional>

namespace VendelSDK {

/// A provider outlives its owner until its pending and final writes are done (see ConfigWriteBack).
template <VendelActionConfig T> class GlobalConfigProvider final : public ConfigProvider
{
    struct Key
    {
        explicit Key() = default;
    };

public:
    /// Reads the plugin's configuration from the host. Nothing when the host could not be asked; the
    /// configuration alert has then been shown. Call it on the main thread.
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
        provider->m_writeBack.start(
            provider, [raw = provider.get()] { raw->write(); }, [raw = provider.get()] { raw->writeNow(); });
        return provider;
    }

    /// For create() only: the key cannot be named outside the class.
    GlobalConfigProvider(Key, std::unique_ptr<VendelAPI> hostAPI) : m_api(std::move(hostAPI)) {}

    /// The current value; assigning it writes nothing until save().
    T config{};

    /// The host's commands that the provider reads and writes with.
    VendelAPI& api() const { return *m_api; }
    /// The observer of termination that makes the last write.
    AppTerminationObserver* appTerminationObserver() const { return m_writeBack.appTerminationObserver(); }
    /// Made by the first save().
    DelayedActionController* writeAction() const { return m_writeBack.writeAction(); }

    /// Writes `config` to the host about a second after the last call of a burst; returns at once.
    void save() { m_writeBack.save(); }

private:
    /// The delayed write reports its failure; the write at termination cannot.
    void write()
    {
        withErrorAlert([this] { writeNow(); });
    }

    void writeNow() { m_api->setGlobalConfig(encodeConfig(config)); }

    std::unique_ptr<VendelAPI> m_api;
    ConfigWriteBack m_writeBack;
};

} // namespace VendelSDK
