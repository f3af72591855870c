// A URL opener for tests: records the URLs instead of starting their handlers.
#pragma once

#include <VendelSDK/UrlOpener.h>

#include <QStringList>

namespace VendelSDK::Testing {

class RecordingUrlOpener final : public UrlOpener
{
public:
    void open(const QString& url) override { opened.append(url); }

    QStringList opened;
};

} // namespace VendelSDK::Testing
