// Tests the macOS application services with real Apple events sent by the test to itself.
#include "MacApplicationServices.h"

#include <VendelSDK/PluginController.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#import <AppKit/AppKit.h>

#include <unistd.h>

using namespace VendelSDK;

namespace {

bool finishedLaunching()
{
    NSRunningApplication* application = [NSRunningApplication currentApplication];
    return application.finishedLaunching;
}

// A get-URL event addressed to this process, as the system sends it when the host opens a launch URL.
void sendGetURLEvent(const char* url)
{
    @autoreleasepool {
        NSAppleEventDescriptor* target = [NSAppleEventDescriptor descriptorWithProcessIdentifier:getpid()];
        NSAppleEventDescriptor* event = [NSAppleEventDescriptor appleEventWithEventClass:kInternetEventClass
                                                                                 eventID:kAEGetURL
                                                                        targetDescriptor:target
                                                                                returnID:kAutoGenerateReturnID
                                                                           transactionID:kAnyTransactionID];
        [event setParamDescriptor:[NSAppleEventDescriptor descriptorWithString:@(url)]
                       forKeyword:keyDirectObject];
        NSError* error = nil;
        [event sendEventWithOptions:NSAppleEventSendNoReply timeout:10 error:&error];
        QVERIFY2(error == nil, "the event could not be sent");
    }
}

} // namespace

class MacApplicationServicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void launchingFinishesOnceWhenTheSystemSaysSo()
    {
        MacApplicationServices services;
        QSignalSpy finished(&services, &ApplicationServices::didFinishLaunching);
        const bool before = finishedLaunching();
        services.finishLaunchingWhenLoopStarts();
        if (!before) {
            QCOMPARE(finished.count(), 0);
            [NSApp finishLaunching];
        }
        QTRY_COMPARE(finished.count(), 1);
        QTest::qWait(0);
        QCOMPARE(finished.count(), 1);
    }

    void getURLEventsAreMatchedByTheirExactText()
    {
        if (!finishedLaunching()) {
            [NSApp finishLaunching];
        }
        MacApplicationServices services;
        PluginController controller;
        QStringList runs;
        controller.onRun = [&runs](const QString& actionID) { runs.append(actionID); };
        QStringList delivered;
        connect(&services, &ApplicationServices::getURLEvent, &services, [&](const QString& url) {
            delivered.append(url);
            controller.handle(url);
        });

        sendGetURLEvent("vendelplugin://Run/X");
        sendGetURLEvent("VENDELPLUGIN://run/X");
        sendGetURLEvent("vendelplugin://run/X");
        // Events arrive in order, so once the last has run its handler the first two have been handled.
        QTRY_COMPARE(runs, QStringList{QStringLiteral("X")});
        QVERIFY(!delivered.contains(QStringLiteral("vendelplugin://run/x")));
        QVERIFY(delivered.endsWith(QStringLiteral("vendelplugin://run/X")));
    }

    void urlOpenedByTheApplicationItselfIsNoLaunch()
    {
        MacApplicationServices services;
        QSignalSpy delivered(&services, &ApplicationServices::getURLEvent);
        // The toolkit calls the handler directly, with no Apple event being handled.
        QVERIFY(QMetaObject::invokeMethod(&services, "handleLaunchURL",
                                          Q_ARG(QUrl, QUrl(QStringLiteral("vendelplugin://run/X")))));
        QCOMPARE(delivered.count(), 0);
    }
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    MacApplicationServicesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "MacApplicationServicesTest.moc"
