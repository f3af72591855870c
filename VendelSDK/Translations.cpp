// Loads the catalogues of the user's language at start: Qt's own, the SDK's and the application's.
#include <VendelSDK/Translations.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

#include <string_view>

namespace VendelSDK {

namespace {

// The translators that install() made, so that a second call replaces rather than stacks them.
QList<QPointer<QTranslator>>& installedTranslators()
{
    static QList<QPointer<QTranslator>> translators;
    return translators;
}

void removeInstalled()
{
    for (const QPointer<QTranslator>& translator : std::as_const(installedTranslators())) {
        if (translator) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
    }
    installedTranslators().clear();
}

// Installs `catalogue` in `language` from `folder`; a missing file is no error (Qt may lack a language).
void installCatalogue(const QString& catalogue, const QString& language, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (translator->load(catalogue + u'_' + language, folder) &&
        QCoreApplication::installTranslator(translator.get())) {
        installedTranslators().append(translator.release());
    }
}

} // namespace

QString Translations::chooseLanguage(const QStringList& uiLanguages, const QString& catalogue,
                                     const QString& folder)
{
    for (const QString& uiLanguage : uiLanguages) {
        // "de-Latn-AT" names the language first; "C" and "POSIX" are the untranslated locale.
        const QString language = uiLanguage.section(u'-', 0, 0).toLower();
        if (language == u"en" || language == u"c" || language == u"posix") {
            return {};
        }
        QString withRegion = uiLanguage;
        withRegion.replace(u'-', u'_');
        for (const QString& candidate : {withRegion, language}) {
            if (QFileInfo::exists(folder + u'/' + catalogue + u'_' + candidate + QStringLiteral(".qm"))) {
                return candidate;
            }
        }
    }
    return {};
}

QStringList Translations::userLanguages()
{
    // Qt answers from its system locale, and building that reads pages of locale tables in every run; the
    // common untranslated case is read from the environment as Qt reads it, without them.
    if (qEnvironmentVariableIsEmpty("LANGUAGE")) {
        QByteArray messages = qgetenv("LC_ALL");
        for (const char* variable : {"LC_MESSAGES", "LANG"}) {
            if (messages.isEmpty()) {
                messages = qgetenv(variable);
            }
        }
        // "en_US.UTF-8@euro" names the language first; a locale that names none is the C locale.
        const std::string_view name(messages.constData(), std::size_t(messages.size()));
        const std::string_view named = name.substr(0, name.find_first_of("_.@-"));
        const std::string_view language = named.empty() ? std::string_view("C") : named;
        if (language == "C" || language == "POSIX" || language == "en") {
            return {QString::fromLatin1(language.data(), qsizetype(language.size()))};
        }
    }
    return QLocale::system().uiLanguages();
}

QString Translations::install(const QString& applicationCatalogue)
{
    return install(applicationCatalogue, userLanguages());
}

QString Translations::install(const QString& applicationCatalogue, const QStringList& uiLanguages)
{
    removeInstalled();
    const QString sdk = QString::fromLatin1(sdkCatalogue);
    const QString folder = QString::fromLatin1(resourceFolder);
    const QString language =
        chooseLanguage(uiLanguages, applicationCatalogue.isEmpty() ? sdk : applicationCatalogue, folder);
    if (language.isEmpty() || QCoreApplication::instance() == nullptr) {
        return {};
    }
    // Standard buttons and dialogs speak the same language as the plugin's own texts.
    installCatalogue(QStringLiteral("qtbase"), language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    installCatalogue(sdk, language, folder);
    if (!applicationCatalogue.isEmpty()) {
        installCatalogue(applicationCatalogue, language, folder);
    }
    return language;
}

} // namespace VendelSDK
