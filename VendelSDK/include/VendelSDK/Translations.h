// Loads the catalogues of the user's language at start: Qt's own, the SDK's and the application's.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>
#include <QStringList>

namespace VendelSDK {

/// Chooses and installs the catalogues of the user's language.
class VENDELSDK_EXPORT Translations
{
public:
    Translations() = delete;

    /// Where the build embeds every catalogue, and the SDK's own catalogue's name there.
    static constexpr auto resourceFolder = ":/i18n";
    /// The SDK's own catalogue's name there.
    static constexpr auto sdkCatalogue = "VendelSDK";

    /// The first of the user's languages, in order of preference, in which `catalogue` is shipped in
    /// `folder` ("de", or "de_CH" when that exists), or the empty text: the keys are English, so a user who
    /// prefers English before any shipped language, or whose languages are all unshipped, gets the keys.
    static QString chooseLanguage(const QStringList& uiLanguages, const QString& catalogue,
                                  const QString& folder = QString::fromLatin1(resourceFolder));

    /// The user's languages in order of preference, as Qt reads them from LANGUAGE, LC_ALL, LC_MESSAGES and
    /// LANG; when only an untranslated locale is named (no LANGUAGE list, messages in C, POSIX or English),
    /// just that locale's language ("C", "POSIX" or "en"), which is all that choosing a catalogue needs.
    static QStringList userLanguages();

    /// Installs, for the language chosen by the application's catalogue (the SDK's when the plugin ships
    /// none), Qt's own catalogue, the SDK's and the application's, in this order: the last installed is
    /// asked first, so the application's texts win and the SDK's fill in. Replaces what an earlier call
    /// installed. Needs the application object; returns the language, empty when the keys stay.
    static QString install(const QString& applicationCatalogue, const QStringList& uiLanguages);
    /// The same for the user's languages.
    static QString install(const QString& applicationCatalogue = QString());
};

} // namespace VendelSDK
