// Opens URLs through the desktop's handler registry (xdg-open), as a browser link would.
#pragma once

#include <VendelSDK/UrlOpener.h>

namespace VendelSDK {

class XdgUrlOpener final : public UrlOpener
{
public:
    void open(const QString& url) override;
};

} // namespace VendelSDK
