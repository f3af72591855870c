// The user's media library as the playlist picker reads it: the names of all playlists, in the library's
// order.
#pragma once

#include <VendelSDK/Error.h>

#include <QCoreApplication>
#include <QStringList>

#include <memory>
#include <variant>

namespace MusicPlugin {

// The library's failures come from the library, not from the plugin, so they have a domain of their own.
inline constexpr auto mediaLibraryErrorDomain = "org.vendel.MediaLibrary";

enum class MediaLibraryErrorCode : qint64
{
    // No library could be opened: no player to read it from, or no permission to read it.
    cannotOpen = 1,
};

// The error of a library that cannot be opened; the reason says why, in a sentence.
inline VendelSDK::Error cannotOpenMediaLibraryError(const QString& failureReason)
{
    return VendelSDK::Error(
        QString::fromLatin1(mediaLibraryErrorDomain), static_cast<qint64>(MediaLibraryErrorCode::cannotOpen),
        {{QString::fromLatin1(VendelSDK::localizedDescriptionKey),
          //: Description of the error shown when the playlists cannot be read.
          QCoreApplication::translate("MediaLibrary", "The music library could not be opened.")},
         {QString::fromLatin1(VendelSDK::localizedFailureReasonKey), failureReason}});
}

class MediaLibrary
{
public:
    virtual ~MediaLibrary() = default;

    // Opens the library and lists every playlist's name in the library's order, duplicates kept; an
    // error made by cannotOpenMediaLibraryError when the library cannot be opened.
    virtual std::variant<QStringList, VendelSDK::Error> playlistNames() = 0;
};

// The library of the platform this build targets; CMake picks the implementation. On Linux it is the
// playlists of the player that "Music" stands for (MPD, else an MPRIS player; see
// app/platform/linux/MusicApplication.h); MPD keeps no order, so its names come sorted.
std::unique_ptr<MediaLibrary> makePlatformMediaLibrary();

} // namespace MusicPlugin
