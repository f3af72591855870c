// The write-back shared by the local and the global configuration providers.
#include <VendelSDK/ConfigWriteBack.h>

#include <VendelSDK/Platform.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace VendelSDK {

namespace {

// Every armed write-back, so that an ending that cannot wait finds the pending writes. Main thread only.
std::vector<ConfigWriteBack*>& armed()
{
    static std::vector<ConfigWriteBack*> writeBacks;
    return writeBacks;
}

} // namespace

ConfigWriteBack::~ConfigWriteBack()
{
    std::erase(armed(), this);
}

void ConfigWriteBack::carryOutPendingWrites()
{
    // A copy: a write may end its provider, and with it a write-back of the list.
    const std::vector<ConfigWriteBack*> writeBacks = armed();
    for (ConfigWriteBack* writeBack : writeBacks) {
        if (std::ranges::find(armed(), writeBack) != armed().end() && writeBack->m_pending &&
            !writeBack->m_released) {
            writeBack->writeFinally();
        }
    }
}

void ConfigWriteBack::start(std::shared_ptr<void> provider, std::function<void()> write,
                            std::function<void()> finalWrite)
{
    m_provider = provider;
    m_write = std::move(write);
    m_finalWrite = std::move(finalWrite);
    m_appTerminationObserver = std::make_unique<AppTerminationObserver>([this, self = std::move(provider)] {
        writeFinally();
        letGo();
    });
    if (std::ranges::find(armed(), this) == armed().end()) {
        armed().push_back(this);
    }
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
        m_writeAction = std::make_unique<DelayedActionController>(1.0, [this, self = provider] {
            m_pending = false;
            m_write();
        });
    }
    m_pending = true;
    m_writeAction->run();
}

void ConfigWriteBack::writeFinally()
{
    m_pending = false;
    try {
        m_finalWrite();
    } catch (...) {
        // The application is ending: nobody could act on an alert now.
    }
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
