// For the Linux compile check only: the part of the iTunesLibrary framework that the plugin uses, copied
// from Apple's documented signatures. Never part of a real build.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface ITLibMediaEntity : NSObject
@end

@interface ITLibPlaylist : ITLibMediaEntity
@property(readonly, nonatomic, copy) NSString* name;
@end

@interface ITLibrary : NSObject
- (nullable instancetype)initWithAPIVersion:(NSString*)requestedAPIVersion error:(NSError* _Nullable*)error;
@property(readonly, nonatomic, retain) NSArray<ITLibPlaylist*>* allPlaylists;
@end

NS_ASSUME_NONNULL_END
