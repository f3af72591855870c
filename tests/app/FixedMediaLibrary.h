// A media library for tests: gives the same names, or the same error, every time, and counts its reads.
#pragma once

#include "MediaLibrary.h"

#include <utility>

namespace MusicPlugin::Testing {

class FixedMediaLibrary final : public MediaLibrary
{
public:
    explicit FixedMediaLibrary(std::variant<QStringList, VendelSDK::Error> answer)
        : m_answer(std::move(answer))
    {}

    std::variant<QStringList, VendelSDK::Error> playlistNames() override
    {
        ++reads;
        return m_answer;
    }

    int reads = 0;

private:
    std::variant<QStringList, VendelSDK::Error> m_answer;
};

} // namespace MusicPlugin::Testing
