// Application services of the macOS application: launch URLs from get-URL Apple events, and launching
// finished when the system says so.
#pragma once

#include "GetURLEventGate.h"

#include <VendelSDK/QtGuiApplicationServices.h>

#include <QUrl>

#include <memory>

namespace VendelSDK {

class MacApplicationServices final : public QtGuiApplicationServices
{
    Q_OBJECT

public:
    // Needs the application object: it takes the launch URLs that the toolkit receives.
    explicit MacApplicationServices(QObject* parent = nullptr);
    ~MacApplicationServices() override;

    // Launching finishes with the system's did-finish-launching notification, after the launch URL
    // that started the process has been handled.
    void finishLaunchingWhenLoopStarts() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    // The toolkit's handler of "vendelplugin" URLs. Its URL is not used: it has been through a parser
    // that lower-cases the scheme and the host, and both are matched exactly.
    void handleLaunchURL(const QUrl& url);

private:
    void dispatchCurrentGetURLEvent();
    void announceLaunchFinished();

    struct Cocoa;
    std::unique_ptr<Cocoa> m_cocoa;
    GetURLEventGate m_gate;
    bool m_launchFinished = false;
};

} // namespace VendelSDK
