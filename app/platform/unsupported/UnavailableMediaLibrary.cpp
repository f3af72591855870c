// The media library of a platform without a port: it can never be opened.
#include "MediaLibrary.h"

namespace MusicPlugin {

namespace {

class UnavailableMediaLibrary final : public MediaLibrary
{
public:
    std::variant<QStringList, VendelSDK::Error> playlistNames() override
    {
        //: Why the playlists cannot be read on a platform that has no music library support.
        return cannotOpenMediaLibraryError(QCoreApplication::translate(
            "MediaLibrary", "This platform has no music library that can be read."));
    }
};

} // namespace

std::unique_ptr<MediaLibrary> makePlatformMediaLibrary()
{
    return std::make_unique<UnavailableMediaLibrary>();
}

} // namespace MusicPlugin
