// Calls a closure when the application is about to terminate.
#pragma once

#include <VendelSDK/Export.h>

#include <QObject>

#include <functional>

namespace VendelSDK {

/// Calls a closure when the application services announce termination (ApplicationServices::willTerminate).
class VENDELSDK_EXPORT AppTerminationObserver : public QObject
{
    Q_OBJECT

public:
    AppTerminationObserver() = delete;
    /// Starts observing the will-terminate hook of the application services; the registration is never
    /// removed, and an observer that has been destroyed is simply no longer called.
    explicit AppTerminationObserver(std::function<void()> onRun);

    /// What to do at termination; may be empty. The value present at delivery is the one called.
    std::function<void()> onRun;
};

} // namespace VendelSDK
