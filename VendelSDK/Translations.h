// Loads the catalogues of the user's language at start: Qt's own, the SDK's and the application's.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace VendelSDK {

class Translations
{
public:
    Translations() = delete;

    // Where the build embeds every catalogue, and the SDK's own catalogue's name there.
    static constexpr auto resourceFolder = ":/i18n";
    static constexpr auto sdkCatalogue = "VendelSDK";

    // The first of the user's languages, in order of preference, in which `catalogue` is shipped in
    // `folder` ("de", or "de_CH" when that exists), or the empty text: the keys are English, so a user who
    // prefers English before any shipped language, or whose languages are all unshipped, gets the keys.
    static QString chooseLanguage(const QStringList& uiLanguages, const QString& catalogue,
                                  const QString& folder = QString::fromLatin1(resourceFolder));

    // Installs, for the language chosen by the application's catalogue (the SDK's when the plugin ships
    // none), Qt's own catalogue, the SDK's and the application's, in this order: the last installed is
    // asked first, so the application's texts win and the SDK's fill in. Replaces what an earlier call
    // installed. Needs the application object; returns the language, empty when the keys stay.
    static QString install(const QString& applicationCatalogue = QString(),
                           const QStringList& uiLanguages = QLocale::system().uiLanguages());
};

} // namespace VendelSDK
