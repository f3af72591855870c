// The toolkit installs its own get-URL handler and calls ours synchronously from it, so the event being
// handled is the manager's current event: its direct object holds the URL's exact text.
#include "MacApplicationServices.h"

#include "FoundationConversions.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileOpenEvent>
#include <QPointer>

#import <AppKit/AppKit.h>

namespace VendelSDK {

namespace {

const auto launchScheme = QStringLiteral("vendelplugin");

std::optional<AppleEventFacts> currentAppleEventFacts()
{
    NSAppleEventDescriptor* event = [[NSAppleEventManager sharedAppleEventManager] currentAppleEvent];
    if (event == nil) {
        return std::nullopt;
    }
    AppleEventFacts facts;
    facts.eventClass = quint32(event.eventClass);
    facts.eventID = quint32(event.eventID);
    facts.returnID = qint32(event.returnID);
    facts.transactionID = qint32(event.transactionID);
    facts.directObjectText = toOptionalQString([event paramDescriptorForKeyword:keyDirectObject].stringValue);
    return facts;
}

} // namespace

struct MacApplicationServices::Cocoa
{
    id launchObserver = nil;
};

MacApplicationServices::MacApplicationServices(QObject* parent)
    : QtGuiApplicationServices(parent), m_cocoa(std::make_unique<Cocoa>())
{
    // Which of the two the toolkit uses for a URL depends on its version; both lead to the same event.
    QDesktopServices::setUrlHandler(launchScheme, this, "handleLaunchURL");
    if (auto* app = QCoreApplication::instance()) {
        app->installEventFilter(this);
    }
}

MacApplicationServices::~MacApplicationServices()
{
    QDesktopServices::unsetUrlHandler(launchScheme);
    if (m_cocoa->launchObserver != nil) {
        [[NSNotificationCenter defaultCenter] removeObserver:m_cocoa->launchObserver];
    }
}

void MacApplicationServices::handleLaunchURL(const QUrl&)
{
    dispatchCurrentGetURLEvent();
}

bool MacApplicationServices::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FileOpen &&
        static_cast<QFileOpenEvent*>(event)->url().scheme().compare(launchScheme, Qt::CaseInsensitive) == 0) {
        dispatchCurrentGetURLEvent();
        return true;
    }
    return QtGuiApplicationServices::eventFilter(watched, event);
}

void MacApplicationServices::dispatchCurrentGetURLEvent()
{
    std::optional<QString> url;
    @autoreleasepool {
        url = m_gate.urlToDispatch(currentAppleEventFacts());
    }
    if (url) {
        Q_EMIT getURLEvent(*url);
    }
}

void MacApplicationServices::finishLaunchingWhenLoopStarts()
{
    NSRunningApplication* application = [NSRunningApplication currentApplication];
    if (application.finishedLaunching) {
        // Launching finished before the services existed (a test, say): announce it from the loop.
        QtGuiApplicationServices::finishLaunchingWhenLoopStarts();
        return;
    }
    const QPointer<MacApplicationServices> self(this);
    m_cocoa->launchObserver =
        [[NSNotificationCenter defaultCenter] addObserverForName:NSApplicationDidFinishLaunchingNotification
                                                          object:nil
                                                           queue:nil
                                                      usingBlock:^(NSNotification*) {
                                                        if (self) {
                                                            self->announceLaunchFinished();
                                                        }
                                                      }];
}

void MacApplicationServices::announceLaunchFinished()
{
    if (m_launchFinished) {
        return;
    }
    m_launchFinished = true;
    Q_EMIT didFinishLaunching();
}

} // namespace VendelSDK
