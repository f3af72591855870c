// For the Linux compile check only: the part of the Sparkle 2 updater framework that the plugin uses, and the
// deprecated Sparkle 1 entry point next to it, copied from its published headers' signatures. Never part of a
// real build.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@protocol SPUUpdaterDelegate <NSObject>
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@optional
- (void)standardUserDriverWillShowModalAlert;
- (void)standardUserDriverDidShowModalAlert;
- (void)standardUserDriverWillFinishUpdateSession;
@end

@interface SPUUpdater : NSObject
- (instancetype)init NS_UNAVAILABLE;
- (BOOL)startUpdater:(NSError* __autoreleasing*)error;
- (void)checkForUpdates;
- (void)checkForUpdatesInBackground;
- (void)checkForUpdateInformation;
@property(nonatomic, readonly) BOOL canCheckForUpdates;
@property(nonatomic, readonly) BOOL sessionInProgress;
@property(nonatomic) BOOL automaticallyChecksForUpdates;
@property(nonatomic, readonly, nullable) NSURL* feedURL;
@end

@interface SPUStandardUpdaterController : NSObject
- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithUpdaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
@property(nonatomic, readonly) SPUUpdater* updater;
- (void)startUpdater;
- (IBAction)checkForUpdates:(nullable id)sender;
@end

__attribute__((
    deprecated("Deprecated in Sparkle 2. Use SPUStandardUpdaterController instead, or SPUUpdater if "
               "you need more control.")))
@interface SUUpdater : NSObject
+ (SUUpdater*)sharedUpdater;
- (void)checkForUpdatesInBackground;
@end

NS_ASSUME_NONNULL_END
