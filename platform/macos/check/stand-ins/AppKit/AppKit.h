// For the Linux compile check only: AppKit as a file that imports it sees it on a Mac. Every AppKit class,
// type and constant we use is declared here with Apple's documented signatures, nullability, enum types,
// values and deprecations; GNUstep's header supplies the rest. Never part of a real build.
#pragma once

#import <Foundation/Foundation.h>

// GNUstep's own declarations of what is declared below, moved out of the way under other names.
#define NSAlert GNUstepNSAlert
#define NSApplication GNUstepNSApplication
#define NSRunningApplication GNUstepNSRunningApplication
#define NSView GNUstepNSView
#define NSWindow GNUstepNSWindow
#define NSWorkspace GNUstepNSWorkspace
#define NSApp GNUstepNSApp
#define NSAlertStyle GNUstepNSAlertStyle
#define NSWarningAlertStyle GNUstepNSWarningAlertStyle
#define NSInformationalAlertStyle GNUstepNSInformationalAlertStyle
#define NSCriticalAlertStyle GNUstepNSCriticalAlertStyle
#define NSAlertFirstButtonReturn GNUstepNSAlertFirstButtonReturn
#define NSAlertSecondButtonReturn GNUstepNSAlertSecondButtonReturn
#define NSAlertThirdButtonReturn GNUstepNSAlertThirdButtonReturn
#define NSModalResponse GNUstepNSModalResponse
#define NSModalResponseOK GNUstepNSModalResponseOK
#define NSModalResponseCancel GNUstepNSModalResponseCancel
#define NSModalResponseStop GNUstepNSModalResponseStop
#define NSModalResponseAbort GNUstepNSModalResponseAbort
#define NSModalResponseContinue GNUstepNSModalResponseContinue
#define NSNormalWindowLevel GNUstepNSNormalWindowLevel
#define NSFloatingWindowLevel GNUstepNSFloatingWindowLevel
#define NSSubmenuWindowLevel GNUstepNSSubmenuWindowLevel
#define NSTornOffMenuWindowLevel GNUstepNSTornOffMenuWindowLevel
#define NSMainMenuWindowLevel GNUstepNSMainMenuWindowLevel
#define NSStatusWindowLevel GNUstepNSStatusWindowLevel
#define NSModalPanelWindowLevel GNUstepNSModalPanelWindowLevel
#define NSPopUpMenuWindowLevel GNUstepNSPopUpMenuWindowLevel
#define NSScreenSaverWindowLevel GNUstepNSScreenSaverWindowLevel
#define NSWindowStyleMask GNUstepNSWindowStyleMask
#define NSBorderlessWindowMask GNUstepNSBorderlessWindowMask
#define NSTitledWindowMask GNUstepNSTitledWindowMask
#define NSClosableWindowMask GNUstepNSClosableWindowMask
#define NSMiniaturizableWindowMask GNUstepNSMiniaturizableWindowMask
#define NSResizableWindowMask GNUstepNSResizableWindowMask
#define NSFullScreenWindowMask GNUstepNSFullScreenWindowMask
#define NSWindowStyleMaskBorderless GNUstepNSWindowStyleMaskBorderless
#define NSWindowStyleMaskTitled GNUstepNSWindowStyleMaskTitled
#define NSWindowStyleMaskClosable GNUstepNSWindowStyleMaskClosable
#define NSWindowStyleMaskMiniaturizable GNUstepNSWindowStyleMaskMiniaturizable
#define NSWindowStyleMaskResizable GNUstepNSWindowStyleMaskResizable
#define NSWindowStyleMaskUtilityWindow GNUstepNSWindowStyleMaskUtilityWindow
#define NSWindowStyleMaskFullScreen GNUstepNSWindowStyleMaskFullScreen
#define NSBackingStoreType GNUstepNSBackingStoreType
#define NSBackingStoreRetained GNUstepNSBackingStoreRetained
#define NSBackingStoreNonretained GNUstepNSBackingStoreNonretained
#define NSBackingStoreBuffered GNUstepNSBackingStoreBuffered
#define NSWindowOrderingMode GNUstepNSWindowOrderingMode
#define NSWindowAbove GNUstepNSWindowAbove
#define NSWindowBelow GNUstepNSWindowBelow
#define NSWindowOut GNUstepNSWindowOut
#define NSApplicationActivationOptions GNUstepNSApplicationActivationOptions
#define NSApplicationActivateAllWindows GNUstepNSApplicationActivateAllWindows
#define NSApplicationActivateIgnoringOtherApps GNUstepNSApplicationActivateIgnoringOtherApps
#define NSApplicationActivationPolicy GNUstepNSApplicationActivationPolicy
#define NSApplicationActivationPolicyRegular GNUstepNSApplicationActivationPolicyRegular
#define NSApplicationActivationPolicyAccessory GNUstepNSApplicationActivationPolicyAccessory
#define NSApplicationActivationPolicyProhibited GNUstepNSApplicationActivationPolicyProhibited
#include_next <AppKit/AppKit.h>
#undef NSAlert
#undef NSApplication
#undef NSRunningApplication
#undef NSView
#undef NSWindow
#undef NSWorkspace
#undef NSApp
#undef NSAlertStyle
#undef NSWarningAlertStyle
#undef NSInformationalAlertStyle
#undef NSCriticalAlertStyle
#undef NSAlertFirstButtonReturn
#undef NSAlertSecondButtonReturn
#undef NSAlertThirdButtonReturn
#undef NSModalResponse
#undef NSModalResponseOK
#undef NSModalResponseCancel
#undef NSModalResponseStop
#undef NSModalResponseAbort
#undef NSModalResponseContinue
#undef NSNormalWindowLevel
#undef NSFloatingWindowLevel
#undef NSSubmenuWindowLevel
#undef NSTornOffMenuWindowLevel
#undef NSMainMenuWindowLevel
#undef NSStatusWindowLevel
#undef NSModalPanelWindowLevel
#undef NSPopUpMenuWindowLevel
#undef NSScreenSaverWindowLevel
#undef NSWindowStyleMask
#undef NSBorderlessWindowMask
#undef NSTitledWindowMask
#undef NSClosableWindowMask
#undef NSMiniaturizableWindowMask
#undef NSResizableWindowMask
#undef NSFullScreenWindowMask
#undef NSWindowStyleMaskBorderless
#undef NSWindowStyleMaskTitled
#undef NSWindowStyleMaskClosable
#undef NSWindowStyleMaskMiniaturizable
#undef NSWindowStyleMaskResizable
#undef NSWindowStyleMaskUtilityWindow
#undef NSWindowStyleMaskFullScreen
#undef NSBackingStoreType
#undef NSBackingStoreRetained
#undef NSBackingStoreNonretained
#undef NSBackingStoreBuffered
#undef NSWindowOrderingMode
#undef NSWindowAbove
#undef NSWindowBelow
#undef NSWindowOut
#undef NSApplicationActivationOptions
#undef NSApplicationActivateAllWindows
#undef NSApplicationActivateIgnoringOtherApps
#undef NSApplicationActivationPolicy
#undef NSApplicationActivationPolicyRegular
#undef NSApplicationActivationPolicyAccessory
#undef NSApplicationActivationPolicyProhibited

@class NSWindow;

NS_ASSUME_NONNULL_BEGIN

// Enumerations keep the layout of Apple's headers, one constant a line.

// CoreGraphics' CGWindowLevel.h
#define kCGNormalWindowLevel 0
#define kCGFloatingWindowLevel 3
#define kCGTornOffMenuWindowLevel 3
#define kCGMainMenuWindowLevel 24
#define kCGStatusWindowLevel 25
#define kCGModalPanelWindowLevel 8
#define kCGPopUpMenuWindowLevel 101
#define kCGScreenSaverWindowLevel 1000

// NSGraphics.h
// clang-format off
typedef APPLE_ENUM(NSUInteger, NSBackingStoreType){
    NSBackingStoreRetained APPLE_DEPRECATED(10_13, "Use NSBackingStoreBuffered instead") = 0,
    NSBackingStoreNonretained APPLE_DEPRECATED(10_13, "Use NSBackingStoreBuffered instead") = 1,
    NSBackingStoreBuffered = 2,
};
// clang-format on
// clang-format off
typedef APPLE_ENUM(NSInteger, NSWindowOrderingMode){
    NSWindowAbove = 1,
    NSWindowBelow = -1,
    NSWindowOut = 0,
};
// clang-format on

// NSWindow.h
typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSNormalWindowLevel = kCGNormalWindowLevel;
static const NSWindowLevel NSFloatingWindowLevel = kCGFloatingWindowLevel;
static const NSWindowLevel NSSubmenuWindowLevel = kCGTornOffMenuWindowLevel;
static const NSWindowLevel NSTornOffMenuWindowLevel = kCGTornOffMenuWindowLevel;
static const NSWindowLevel NSMainMenuWindowLevel = kCGMainMenuWindowLevel;
static const NSWindowLevel NSStatusWindowLevel = kCGStatusWindowLevel;
static const NSWindowLevel NSModalPanelWindowLevel = kCGModalPanelWindowLevel;
static const NSWindowLevel NSPopUpMenuWindowLevel = kCGPopUpMenuWindowLevel;
static const NSWindowLevel NSScreenSaverWindowLevel = kCGScreenSaverWindowLevel;

// clang-format off
typedef APPLE_OPTIONS(NSUInteger, NSWindowStyleMask){
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskResizable = 1 << 3,
    NSWindowStyleMaskUtilityWindow = 1 << 4,
    NSWindowStyleMaskFullScreen = 1 << 14,
};
// clang-format on
static const NSWindowStyleMask NSBorderlessWindowMask
    APPLE_DEPRECATED(10_12, "Use NSWindowStyleMaskBorderless instead") = NSWindowStyleMaskBorderless;
static const NSWindowStyleMask NSTitledWindowMask
    APPLE_DEPRECATED(10_12, "Use NSWindowStyleMaskTitled instead") = NSWindowStyleMaskTitled;
static const NSWindowStyleMask NSClosableWindowMask
    APPLE_DEPRECATED(10_12, "Use NSWindowStyleMaskClosable instead") = NSWindowStyleMaskClosable;
static const NSWindowStyleMask NSMiniaturizableWindowMask
    APPLE_DEPRECATED(10_12, "Use NSWindowStyleMaskMiniaturizable instead") = NSWindowStyleMaskMiniaturizable;
static const NSWindowStyleMask NSResizableWindowMask
    APPLE_DEPRECATED(10_12, "Use NSWindowStyleMaskResizable instead") = NSWindowStyleMaskResizable;
static const NSWindowStyleMask NSFullScreenWindowMask
    APPLE_DEPRECATED(10_12, "Use NSWindowStyleMaskFullScreen instead") = NSWindowStyleMaskFullScreen;

APPKIT_EXPORT NSNotificationName NSWindowDidBecomeKeyNotification;
APPKIT_EXPORT NSNotificationName NSWindowDidBecomeMainNotification;
APPKIT_EXPORT NSNotificationName NSWindowWillEnterFullScreenNotification;
APPKIT_EXPORT NSNotificationName NSWindowDidEnterFullScreenNotification;
APPKIT_EXPORT NSNotificationName NSWindowWillExitFullScreenNotification;
APPKIT_EXPORT NSNotificationName NSWindowDidExitFullScreenNotification;
APPKIT_EXPORT NSNotificationName NSWindowWillCloseNotification;

// NSApplication.h
typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseOK = 1;
static const NSModalResponse NSModalResponseCancel = 0;
static const NSModalResponse NSModalResponseStop = (-1000);
static const NSModalResponse NSModalResponseAbort = (-1001);
static const NSModalResponse NSModalResponseContinue = (-1002);

// clang-format off
typedef APPLE_ENUM(NSInteger, NSApplicationActivationPolicy){
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};
// clang-format on
// clang-format off
typedef APPLE_OPTIONS(NSUInteger, NSApplicationActivationOptions){
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps APPLE_DEPRECATED(
        14_0, "ignoringOtherApps is deprecated in macOS 14 and will have no effect.") = 1 << 1,
};
// clang-format on

APPKIT_EXPORT NSNotificationName NSApplicationDidFinishLaunchingNotification;
APPKIT_EXPORT NSNotificationName NSApplicationWillTerminateNotification;
APPKIT_EXPORT NSRunLoopMode NSModalPanelRunLoopMode;
APPKIT_EXPORT NSRunLoopMode NSEventTrackingRunLoopMode;

// NSView.h
@interface NSView : NSResponder
@property(nullable, readonly, unsafe_unretained) NSWindow* window;
@property(nullable, readonly, unsafe_unretained) NSView* superview;
@property(getter=isHidden) BOOL hidden;
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag;
@property NSWindowLevel level;
@property NSWindowStyleMask styleMask;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly, getter=isKeyWindow) BOOL keyWindow;
@property(readonly) NSInteger windowNumber;
@property(copy) NSString* title;
@property(strong, nullable) __kindof NSView* contentView;
@property BOOL releasedWhenClosed;
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
- (void)orderWindow:(NSWindowOrderingMode)place relativeTo:(NSInteger)otherWin;
- (void)orderFront:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)close;
- (void)toggleFullScreen:(nullable id)sender;
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(readonly, copy) NSArray<NSWindow*>* windows;
@property(nullable, readonly, weak) NSWindow* keyWindow;
@property(getter=isActive, readonly) BOOL active;
@property(getter=isRunning, readonly) BOOL running;
@property(nullable, strong) NSImage* applicationIconImage;
- (void)finishLaunching;
- (void)run;
- (void)stop:(nullable id)sender;
- (void)terminate:(nullable id)sender;
- (NSModalResponse)runModalForWindow:(NSWindow*)window;
- (void)stopModal;
- (void)stopModalWithCode:(NSModalResponse)returnCode;
- (void)abortModal;
- (NSApplicationActivationPolicy)activationPolicy;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag
    APPLE_DEPRECATED(14_0, "This method will be deprecated in a future release. Use NSApp.activate instead.");
@end

APPKIT_EXPORT __kindof NSApplication* _Null_unspecified NSApp;

// NSAlert.h
// clang-format off
typedef APPLE_ENUM(NSUInteger, NSAlertStyle){
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2,
};
// clang-format on
static const NSModalResponse NSAlertFirstButtonReturn = 1000;
static const NSModalResponse NSAlertSecondButtonReturn = 1001;
static const NSModalResponse NSAlertThirdButtonReturn = 1002;
static const NSAlertStyle
    NSWarningAlertStyle APPLE_DEPRECATED(10_12, "Use NSAlertStyleWarning instead") = NSAlertStyleWarning;
static const NSAlertStyle NSInformationalAlertStyle
    APPLE_DEPRECATED(10_12, "Use NSAlertStyleInformational instead") = NSAlertStyleInformational;
static const NSAlertStyle
    NSCriticalAlertStyle APPLE_DEPRECATED(10_12, "Use NSAlertStyleCritical instead") = NSAlertStyleCritical;

@interface NSAlert : NSObject
+ (NSAlert*)alertWithError:(NSError*)error;
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property(null_resettable, strong) NSImage* icon;
- (NSButton*)addButtonWithTitle:(NSString*)title;
@property(readonly, copy) NSArray<NSButton*>* buttons;
@property NSAlertStyle alertStyle;
@property(readonly, strong) NSWindow* window;
- (NSModalResponse)runModal;
+ (NSAlert*)alertWithMessageText:(nullable NSString*)message
                   defaultButton:(nullable NSString*)defaultButton
                 alternateButton:(nullable NSString*)alternateButton
                     otherButton:(nullable NSString*)otherButton
       informativeTextWithFormat:(NSString*)format, ... APPLE_DEPRECATED(10_10, "Use -init instead");
@end

// NSWorkspace.h
@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
- (BOOL)openURL:(NSURL*)url;
- (BOOL)openFile:(NSString*)fullPath APPLE_DEPRECATED(11_0, "Use -[NSWorkspace openURL:] instead.");
- (BOOL)launchApplication:(NSString*)appName
    APPLE_DEPRECATED(11_0,
                     "Use -[NSWorkspace openApplicationAtURL:configuration:completionHandler:] instead.");
@end

// NSRunningApplication.h
@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication* currentApplication;
@property(readonly, getter=isTerminated) BOOL terminated;
@property(readonly, getter=isFinishedLaunching) BOOL finishedLaunching;
@property(readonly, getter=isHidden) BOOL hidden;
@property(readonly, getter=isActive) BOOL active;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(readonly) pid_t processIdentifier;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@end

NS_ASSUME_NONNULL_END
