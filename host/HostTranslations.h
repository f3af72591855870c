// The host's own catalogue (English keys, then German and French) and Qt's, in the user's language, for the
// processes that show texts to people: the window and the served host.
#pragma once

#include <QString>
#include <QStringList>

namespace VendelHost {

class HostTranslations
{
public:
    // The catalogue's name: the build embeds vendel-host_<language>.qm under :/i18n.
    static constexpr auto catalogue = "vendel-host";

    // The first of the languages, in the user's order, that the host ships: "de_AT" finds "de". English, C
    // or POSIX before any shipped one means the English keys, and so does no shipped language: empty then.
    static QString chooseLanguage(const QStringList& uiLanguages);
    // Installs Qt's catalogue and the host's in the chosen language of QLocale::system(), or of the given
    // languages, and returns the language (empty for the English keys). A second call replaces the first.
    static QString install();
    static QString install(const QStringList& uiLanguages);
};

} // namespace VendelHost
