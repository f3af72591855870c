// The write-back shared by the local and the global configuration providers.
#include "ConfigWriteBack.h"

#include "Platform.h"

#include <utility>

namespace VendelSDK {

void ConfigWriteBack::start(std::shared_ptr<void> provider, std::function<void()> write,
                            std::function<void()> finalWrite)
{
    m_provider = provider;
    m_write = std::move(write);
    m_appTerminationObserver = std::make_unique<AppTerminationObserver>(
        [this, self = std::move(provider), finalWrite = std::move(finalWrite)] {
            try {
                finalWrite();
            } catch (...) {
                // The application is ending: nobody could act on an alert now.
            }
            letGo();
        });
    // Services that go away without announcing termination (replaced in a test, or an exit that skips the
    // event loop) will never call the closure; holding the provider for it would only leak it.
    QObject::connect(&Platform::applicationServices(), &QObject::destroyed, m_appTerminationObserver.get(),
                     [this] { letGo(); });
}

void ConfigWriteBack::save()
{
    // After the termination write nothing more is written, and a new write action would hold the provider
    // again.
    const auto provider = m_provider.lock();
    if (m_released || !provider) {
        return;
    }
    if (!m_writeAction) {
        m_writeAction =
            std::make_unique<DelayedActionController>(1.0, [self = provider, write = m_write] { write(); });
    }
    m_writeAction->run();
}

// Drops the closures' strong references, which ends the cycles that kept the provider alive; from then on
// it lives only as long as its owner keeps it, and writes no more.
void ConfigWriteBack::letGo()
{
    m_released = true;
    const std::function<void()> closures[] = {
        m_appTerminationObserver ? std::exchange(m_appTerminationObserver->onRun, {})
                                 : std::function<void()>(),
        m_writeAction ? std::exchange(m_writeAction->action, {}) : std::function<void()>(),
    };
    // The closures are destroyed on return, possibly with the provider and this object; nothing may follow.
}

} // namespace VendelSDK
