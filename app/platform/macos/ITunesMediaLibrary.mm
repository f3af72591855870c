// The user's Music library on macOS, read through the iTunesLibrary framework.
#include "FoundationConversions.h"
#include "FoundationErrors.h"

#include "MediaLibrary.h"

#import <iTunesLibrary/iTunesLibrary.h>

namespace MusicPlugin {

namespace {

class ITunesMediaLibrary final : public MediaLibrary
{
public:
    std::variant<QStringList, VendelSDK::Error> playlistNames() override
    {
        @autoreleasepool {
            NSError* error = nil;
            ITLibrary* library = [[ITLibrary alloc] initWithAPIVersion:@"1.0" error:&error];
            if (library == nil) {
                // The framework says why (no permission, no library, an unsupported version): that is shown.
                return frameworkError(toFrameworkErrorFacts(
                    error != nil ? error : [NSError errorWithDomain:NSCocoaErrorDomain code:0 userInfo:nil]));
            }
            // Every playlist counts, in the library's order, whatever its kind: only its name is kept.
            QStringList names;
            for (ITLibPlaylist* playlist in library.allPlaylists) {
                names.append(VendelSDK::toQString(playlist.name));
            }
            return names;
        }
    }
};

} // namespace

std::unique_ptr<MediaLibrary> makePlatformMediaLibrary()
{
    return std::make_unique<ITunesMediaLibrary>();
}

} // namespace MusicPlugin
