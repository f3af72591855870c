// Builds the panel from the content decided in plain C++ and runs it modally on the main thread.
#include "CocoaAlertPresenter.h"

#include "CocoaAlertContent.h"
#include "FoundationConversions.h"

#import <AppKit/AppKit.h>

namespace VendelSDK {

namespace {

NSAlert* makePanel(const CocoaAlertContent& content)
{
    if (content.error) {
        NSError* error = [NSError errorWithDomain:toNSString(content.error->domain)
                                             code:NSInteger(content.error->code)
                                         userInfo:toNSDictionary(content.error->userInfo)];
        return [NSAlert alertWithError:error];
    }
    NSAlert* panel = [[NSAlert alloc] init];
    panel.messageText = toNSString(content.messageText);
    panel.informativeText = toNSString(content.informativeText);
    for (const QString& title : content.buttons) {
        [panel addButtonWithTitle:toNSString(title)];
    }
    return panel;
}

} // namespace

int CocoaAlertPresenter::runModal(const Alert& alert)
{
    @autoreleasepool {
        const CocoaAlertContent content = cocoaAlertContent(alert);
        NSAlert* panel = makePanel(content);
        const NSModalResponse response = [panel runModal];
        return pressedButtonIndex(long(response), content.error ? 0 : content.buttons.size());
    }
}

} // namespace VendelSDK
