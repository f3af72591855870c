// For the Linux compile check only: declarations of Apple's frameworks that GNUstep lacks, copied from
// Apple's documented signatures. Never part of a real build.
#pragma once

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <sys/types.h>

#ifndef API_AVAILABLE
#define API_AVAILABLE(...)
#endif

NS_ASSUME_NONNULL_BEGIN

// MacTypes.h
typedef unsigned int UInt32;
typedef signed short SInt16;
typedef signed int SInt32;

// Apple Event Manager types and constants (CarbonCore/AEDataModel.h, AERegistry.h, AEDataModel.h).
typedef UInt32 FourCharCode;
typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;
typedef FourCharCode AEKeyword;
typedef FourCharCode DescType;
typedef SInt16 AEReturnID;
typedef SInt32 AETransactionID;

enum
{
    keyDirectObject = 0x2D2D2D2D,     // '----'
    kInternetEventClass = 0x4755524C, // 'GURL'
    kAEGetURL = 0x4755524C,           // 'GURL'
};
enum
{
    kAutoGenerateReturnID = -1,
    kAnyTransactionID = 0,
};

// Foundation/NSAppleEventDescriptor.h
typedef NS_OPTIONS(NSUInteger, NSAppleEventSendOptions) {
    NSAppleEventSendNoReply = 0x00000001,
    NSAppleEventSendQueueReply = 0x00000002,
    NSAppleEventSendWaitForReply = 0x00000003,
    NSAppleEventSendNeverInteract = 0x00000010,
    NSAppleEventSendCanInteract = 0x00000020,
    NSAppleEventSendAlwaysInteract = 0x00000030,
    NSAppleEventSendCanSwitchLayer = 0x00000040,
    NSAppleEventSendDontRecord = 0x00001000,
    NSAppleEventSendDontExecute = 0x00002000,
    NSAppleEventSendDontAnnotate = 0x00010000,
    NSAppleEventSendDefaultOptions = NSAppleEventSendWaitForReply | NSAppleEventSendCanInteract
};

@interface NSAppleEventDescriptor (AppleSignatures)
+ (NSAppleEventDescriptor*)descriptorWithString:(NSString*)string;
+ (NSAppleEventDescriptor*)appleEventWithEventClass:(AEEventClass)eventClass
                                            eventID:(AEEventID)eventID
                                   targetDescriptor:(nullable NSAppleEventDescriptor*)targetDescriptor
                                           returnID:(AEReturnID)returnID
                                      transactionID:(AETransactionID)transactionID;
+ (NSAppleEventDescriptor*)descriptorWithProcessIdentifier:(pid_t)processIdentifier
    API_AVAILABLE(macos(10.11));
@property(readonly) DescType descriptorType;
@property(nullable, readonly, copy) NSString* stringValue;
@property(readonly) AEEventClass eventClass;
@property(readonly) AEEventID eventID;
@property(readonly) AEReturnID returnID;
@property(readonly) AETransactionID transactionID;
- (nullable NSAppleEventDescriptor*)paramDescriptorForKeyword:(AEKeyword)keyword;
- (void)setParamDescriptor:(NSAppleEventDescriptor*)descriptor forKeyword:(AEKeyword)keyword;
- (nullable NSAppleEventDescriptor*)sendEventWithOptions:(NSAppleEventSendOptions)sendOptions
                                                 timeout:(NSTimeInterval)timeoutInSeconds
                                                   error:(NSError**)error API_AVAILABLE(macos(10.11));
@end

// Foundation/NSAppleEventManager.h
@interface NSAppleEventManager (AppleSignatures)
+ (NSAppleEventManager*)sharedAppleEventManager;
@property(nullable, readonly, retain) NSAppleEventDescriptor* currentAppleEvent;
@end

// Foundation/NSAppleScript.h
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorNumber;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorAppName;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorBriefMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorRange;

@interface NSAppleScript (AppleSignatures)
- (nullable instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end

NS_ASSUME_NONNULL_END
