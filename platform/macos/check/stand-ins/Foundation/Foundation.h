// For the Linux compile check only: Foundation as a file that imports it sees it on a Mac. GNUstep's header
// supplies the root class, strings and collections; every other class we call is declared here instead, with
// Apple's documented signatures, nullability, enum types and deprecations. Never part of a real build.
#pragma once

#include "../AppleMarks.h"

// GNUstep declares these classes too, with untyped results and no nullability: its declarations are moved
// out of the way, under other names, so that ours are the only ones a source sees.
#define NSAppleEventDescriptor GNUstepNSAppleEventDescriptor
#define NSAppleEventManager GNUstepNSAppleEventManager
#define NSAppleScript GNUstepNSAppleScript
#define NSBundle GNUstepNSBundle
#define NSDictionary GNUstepNSDictionary
#define NSError GNUstepNSError
#define NSMutableDictionary GNUstepNSMutableDictionary
#define NSNotificationCenter GNUstepNSNotificationCenter
#define NSNumber GNUstepNSNumber
#define NSRunLoop GNUstepNSRunLoop
#define NSTimer GNUstepNSTimer
#define NSURL GNUstepNSURL
#include_next <Foundation/Foundation.h>
#undef NSAppleEventDescriptor
#undef NSAppleEventManager
#undef NSAppleScript
#undef NSBundle
#undef NSDictionary
#undef NSError
#undef NSMutableDictionary
#undef NSNotificationCenter
#undef NSNumber
#undef NSRunLoop
#undef NSTimer
#undef NSURL

#include <sys/types.h>

@class NSAppleEventDescriptor, NSError, NSURL;

NS_ASSUME_NONNULL_BEGIN

// Enumerations keep the layout of Apple's headers, one constant a line.

// MacTypes.h, which Foundation reaches through CoreFoundation.
typedef unsigned char Boolean;
typedef unsigned int UInt32;
typedef signed short SInt16;
typedef signed int SInt32;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef SInt32 OSStatus;

// CoreServices' Apple Event Manager (AEDataModel.h, AERegistry.h), which NSAppleEventDescriptor.h imports.
typedef FourCharCode DescType;
typedef FourCharCode AEKeyword;
typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;
typedef SInt16 AEReturnID;
typedef SInt32 AETransactionID;
typedef struct OpaqueAEDataStorageType* AEDataStorageType;
typedef AEDataStorageType* AEDataStorage;
struct AEDesc
{
    DescType descriptorType;
    AEDataStorage _Nullable dataHandle;
};
typedef struct AEDesc AEDesc;
enum
{
    keyDirectObject = 0x2D2D2D2D, // '----'
};
enum
{
    kInternetEventClass = 0x4755524C, // 'GURL'
    kAEGetURL = 0x4755524C,           // 'GURL'
};
enum
{
    kAutoGenerateReturnID = -1,
    kAnyTransactionID = 0,
};

// NSDictionary.h
@interface NSDictionary<__covariant KeyType, __covariant ObjectType>
    : NSObject <NSCopying, NSMutableCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
- (nullable ObjectType)objectForKey:(KeyType)aKey;
- (NSEnumerator<KeyType>*)keyEnumerator;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                        forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                          count:(NSUInteger)cnt NS_DESIGNATED_INITIALIZER;
+ (instancetype)dictionary;
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
@property(readonly, copy) NSArray<KeyType>* allKeys;
@property(readonly, copy) NSArray<ObjectType>* allValues;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)removeObjectForKey:(KeyType)aKey;
- (void)setObject:(ObjectType)anObject forKey:(KeyType<NSCopying>)aKey;
- (instancetype)initWithCapacity:(NSUInteger)numItems NS_DESIGNATED_INITIALIZER;
+ (instancetype)dictionaryWithCapacity:(NSUInteger)numItems;
- (void)setObject:(nullable ObjectType)obj forKeyedSubscript:(KeyType<NSCopying>)key;
@end

// NSValue.h
@interface NSNumber : NSValue
@property(readonly) char charValue;
@property(readonly) int intValue;
@property(readonly) long long longLongValue;
@property(readonly) unsigned long long unsignedLongLongValue;
@property(readonly) double doubleValue;
@property(readonly) BOOL boolValue;
@property(readonly) NSInteger integerValue;
@property(readonly, copy) NSString* stringValue;
+ (NSNumber*)numberWithChar:(char)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithUnsignedInt:(unsigned int)value;
+ (NSNumber*)numberWithLong:(long)value;
+ (NSNumber*)numberWithUnsignedLong:(unsigned long)value;
+ (NSNumber*)numberWithLongLong:(long long)value;
+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)value;
+ (NSNumber*)numberWithFloat:(float)value;
+ (NSNumber*)numberWithDouble:(double)value;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value;
@end

// NSError.h
typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;
FOUNDATION_EXPORT NSErrorDomain const NSCocoaErrorDomain;
FOUNDATION_EXPORT NSErrorDomain const NSOSStatusErrorDomain;
FOUNDATION_EXPORT NSErrorUserInfoKey const NSLocalizedDescriptionKey;
FOUNDATION_EXPORT NSErrorUserInfoKey const NSLocalizedFailureReasonErrorKey;

@interface NSError : NSObject <NSCopying, NSSecureCoding>
- (instancetype)initWithDomain:(NSErrorDomain)domain
                          code:(NSInteger)code
                      userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id>*)dict NS_DESIGNATED_INITIALIZER;
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id>*)dict;
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSDictionary<NSErrorUserInfoKey, id>* userInfo;
@property(readonly, copy) NSString* localizedDescription;
@property(nullable, readonly, copy) NSString* localizedFailureReason;
@property(nullable, readonly, copy) NSString* localizedRecoverySuggestion;
@end

// NSURL.h
@interface NSURL : NSObject <NSSecureCoding, NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)URLString;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@property(nullable, readonly, copy) NSString* absoluteString;
@property(nullable, readonly, copy) NSString* scheme;
@property(nullable, readonly, copy) NSString* path;
@property(readonly, getter=isFileURL) BOOL fileURL;
@end

// NSBundle.h
@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
+ (nullable instancetype)bundleWithPath:(NSString*)path;
@property(readonly, copy) NSString* bundlePath;
@property(readonly, copy) NSURL* bundleURL;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

// NSNotification.h
typedef NSString* NSNotificationName;

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(nullable NSNotificationName)aName
             object:(nullable id)anObject;
- (void)postNotificationName:(NSNotificationName)aName object:(nullable id)anObject;
- (void)removeObserver:(id)observer;
- (void)removeObserver:(id)observer name:(nullable NSNotificationName)aName object:(nullable id)anObject;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)obj
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
@end

// NSRunLoop.h and NSTimer.h
typedef NSString* NSRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSDefaultRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSRunLoopCommonModes;

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block;
+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval
                                   repeats:(BOOL)repeats
                                     block:(void (^)(NSTimer* timer))block;
- (void)invalidate;
@property(readonly, getter=isValid) BOOL valid;
@end

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* currentRunLoop;
@property(class, readonly, strong) NSRunLoop* mainRunLoop;
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
- (BOOL)runMode:(NSRunLoopMode)mode beforeDate:(NSDate*)limitDate;
@end

// NSAppleEventDescriptor.h
// clang-format off
typedef APPLE_OPTIONS(NSUInteger, NSAppleEventSendOptions){
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
    NSAppleEventSendDefaultOptions = NSAppleEventSendWaitForReply | NSAppleEventSendCanInteract};
// clang-format on

@interface NSAppleEventDescriptor : NSObject <NSCopying, NSSecureCoding>
+ (NSAppleEventDescriptor*)nullDescriptor;
+ (NSAppleEventDescriptor*)descriptorWithBoolean:(Boolean)boolean;
+ (NSAppleEventDescriptor*)descriptorWithInt32:(SInt32)signedInt;
+ (NSAppleEventDescriptor*)descriptorWithString:(NSString*)string;
+ (NSAppleEventDescriptor*)descriptorWithURL:(NSURL*)url;
+ (NSAppleEventDescriptor*)appleEventWithEventClass:(AEEventClass)eventClass
                                            eventID:(AEEventID)eventID
                                   targetDescriptor:(nullable NSAppleEventDescriptor*)targetDescriptor
                                           returnID:(AEReturnID)returnID
                                      transactionID:(AETransactionID)transactionID;
+ (NSAppleEventDescriptor*)descriptorWithProcessIdentifier:(pid_t)processIdentifier;
+ (NSAppleEventDescriptor*)descriptorWithBundleIdentifier:(NSString*)bundleIdentifier;
@property(nullable, readonly) const AEDesc* aeDesc NS_RETURNS_INNER_POINTER;
@property(readonly) DescType descriptorType;
@property(readonly) Boolean booleanValue;
@property(readonly) SInt32 int32Value;
@property(nullable, readonly, copy) NSString* stringValue;
@property(nullable, readonly, copy) NSURL* URLValue;
@property(readonly) AEEventClass eventClass;
@property(readonly) AEEventID eventID;
@property(readonly) AEReturnID returnID;
@property(readonly) AETransactionID transactionID;
- (void)setParamDescriptor:(NSAppleEventDescriptor*)descriptor forKeyword:(AEKeyword)keyword;
- (nullable NSAppleEventDescriptor*)paramDescriptorForKeyword:(AEKeyword)keyword;
- (nullable NSAppleEventDescriptor*)sendEventWithOptions:(NSAppleEventSendOptions)sendOptions
                                                 timeout:(NSTimeInterval)timeoutInSeconds
                                                   error:(NSError**)error;
@end

// NSAppleEventManager.h
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@property(nullable, readonly, retain) NSAppleEventDescriptor* currentAppleEvent;
@property(nullable, readonly, retain) NSAppleEventDescriptor* currentReplyAppleEvent;
@end

// NSAppleScript.h
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorNumber;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorAppName;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorBriefMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorRange;

@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url
                                         error:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo
    NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithSource:(NSString*)source NS_DESIGNATED_INITIALIZER;
@property(nullable, readonly, copy) NSString* source;
@property(readonly, getter=isCompiled) BOOL compiled;
- (BOOL)compileAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
- (NSAppleEventDescriptor*)executeAppleEvent:(NSAppleEventDescriptor*)event
                                       error:(NSDictionary<NSString*, id>* _Nullable* _Nullable)errorInfo;
@end

NS_ASSUME_NONNULL_END
