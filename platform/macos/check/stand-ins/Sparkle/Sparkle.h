// For the Linux compile check only: the part of the Sparkle 2 updater framework that the plugin uses,
// copied from its published headers' signatures. Never part of a real build.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@protocol SPUUpdaterDelegate <NSObject>
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@end

@interface SPUUpdater : NSObject
- (BOOL)startUpdater:(NSError* __autoreleasing*)error;
- (void)checkForUpdatesInBackground;
@end

@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
@property(nonatomic, readonly) SPUUpdater* updater;
@end

NS_ASSUME_NONNULL_END
