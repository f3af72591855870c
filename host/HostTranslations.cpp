// Qt's own catalogue comes first, so that the host's texts win where both translate one.
#include "HostTranslations.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>
#include <vector>

namespace VendelHost {

namespace {

constexpr auto folder = ":/i18n";

std::vector<std::unique_ptr<QTranslator>>& installed()
{
    static std::vector<std::unique_ptr<QTranslator>> translators;
    return translators;
}

void add(const QString& file, const QString& directory)
{
    auto translator = std::make_unique<QTranslator>();
    if (translator->load(file, directory) && QCoreApplication::installTranslator(translator.get())) {
        installed().push_back(std::move(translator));
    }
}

} // namespace

QString HostTranslations::chooseLanguage(const QStringList& uiLanguages)
{
    for (const QString& uiLanguage : uiLanguages) {
        const QString bare = uiLanguage.section(u'-', 0, 0).toLower();
        if (bare == u"en" || bare == u"c" || bare == u"posix") {
            break;
        }
        const QString regional = QString(uiLanguage).replace(u'-', u'_');
        for (const QString& language : {regional, bare}) {
            const QString file =
                QStringLiteral("%1/%2_%3.qm").arg(QLatin1String(folder), QLatin1String(catalogue), language);
            if (QFile::exists(file)) {
                return language;
            }
        }
    }
    return {};
}

QString HostTranslations::install()
{
    return install(QLocale::system().uiLanguages());
}

QString HostTranslations::install(const QStringList& uiLanguages)
{
    for (const auto& translator : installed()) {
        QCoreApplication::removeTranslator(translator.get());
    }
    installed().clear();
    const QString language = chooseLanguage(uiLanguages);
    if (!language.isEmpty()) {
        add(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        add(QLatin1String(catalogue) + u'_' + language, QLatin1String(folder));
    }
    return language;
}

} // namespace VendelHost
