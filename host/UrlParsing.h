// Parses the URLs the host is given, with the shared uriparser wrapper, and says where a bad one goes wrong.
#pragma once

#include "Uri.h"

#include <QString>

namespace VendelHost {

// Throws HostError, naming the first character that is wrong, when the text is no URL.
Vendel::Uri parseUrl(const QString& text);

} // namespace VendelHost
