// Writes a provider's configuration back to the host: after a burst of saves, and once more at termination.
#pragma once

#include <VendelSDK/AppTerminationObserver.h>
#include <VendelSDK/DelayedActionController.h>
#include <VendelSDK/Export.h>

#include <functional>
#include <memory>

namespace VendelSDK {

/// Lifetime: the termination closure and the write action hold the provider strongly, so a provider whose
/// owner lets it go early still makes its pending write and its write at termination. The termination write
/// then drops both closures, which ends those cycles: the provider goes with its last owner. Application
/// services destroyed without announcing termination end the cycles in the same way, without a write.
class VENDELSDK_EXPORT ConfigWriteBack
{
public:
    ConfigWriteBack() = default;
    ~ConfigWriteBack();
    ConfigWriteBack(const ConfigWriteBack&) = delete;
    ConfigWriteBack& operator=(const ConfigWriteBack&) = delete;

    /// Carries out, once and now, every write that is still waiting for its quiet second; their failures
    /// are ignored like those of the write at termination. For endings that do not run the termination
    /// hooks (a fatal stop) or may not wait for the delay (the desktop session ending). Main thread only.
    static void carryOutPendingWrites();

    /// Arms the termination write. `provider` is what the closures keep alive; `write` is the delayed write
    /// (it reports its own failures) and `finalWrite` the write at termination (its failures are ignored).
    void start(std::shared_ptr<void> provider, std::function<void()> write, std::function<void()> finalWrite);

    /// Asks for `write` about a second after the last call of a burst; returns at once.
    void save();
    /// Whether a save() is still waiting for its write.
    bool pending() const { return m_pending; }

    /// The observer of termination that makes the last write; made by start().
    AppTerminationObserver* appTerminationObserver() const { return m_appTerminationObserver.get(); }
    /// Made by the first save().
    DelayedActionController* writeAction() const { return m_writeAction.get(); }

private:
    void letGo();
    void writeFinally();

    std::weak_ptr<void> m_provider;
    std::function<void()> m_write;
    std::function<void()> m_finalWrite;
    std::unique_ptr<AppTerminationObserver> m_appTerminationObserver;
    std::unique_ptr<DelayedActionController> m_writeAction;
    bool m_released = false;
    bool m_pending = false;
};

} // namespace VendelSDK
