// Tests which catalogue the host takes for the user's languages, and that the window's texts come from it.
#include "HostTranslations.h"

#include <QCoreApplication>
#include <QTest>

using namespace VendelHost;

class HostTranslationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { HostTranslations::install(QStringList{QStringLiteral("C")}); }

    void theFirstShippedLanguageOfTheUsersIsChosen_data()
    {
        QTest::addColumn<QStringList>("uiLanguages");
        QTest::addColumn<QString>("language");
        QTest::newRow("German") << QStringList{QStringLiteral("de-DE")} << QStringLiteral("de");
        QTest::newRow("Austrian finds German")
            << QStringList{QStringLiteral("de-AT"), QStringLiteral("de")} << QStringLiteral("de");
        QTest::newRow("Canadian French") << QStringList{QStringLiteral("fr-CA")} << QStringLiteral("fr");
        QTest::newRow("Japanese, then French")
            << QStringList{QStringLiteral("ja-JP"), QStringLiteral("fr-FR")} << QStringLiteral("fr");
        QTest::newRow("English first keeps the keys")
            << QStringList{QStringLiteral("en-GB"), QStringLiteral("de-DE")} << QString();
        QTest::newRow("C keeps the keys") << QStringList{QStringLiteral("C")} << QString();
        QTest::newRow("POSIX keeps the keys") << QStringList{QStringLiteral("POSIX")} << QString();
        QTest::newRow("nothing shipped") << QStringList{QStringLiteral("ja-JP")} << QString();
        QTest::newRow("no languages") << QStringList{} << QString();
    }

    void theFirstShippedLanguageOfTheUsersIsChosen()
    {
        QFETCH(QStringList, uiLanguages);
        QFETCH(QString, language);
        QCOMPARE(HostTranslations::chooseLanguage(uiLanguages), language);
    }

    void theWindowsTextsComeFromTheChosenCatalogue()
    {
        const auto title = [] {
            return QCoreApplication::translate("VendelHost::HostWindow", "Vendel Actions");
        };
        QCOMPARE(HostTranslations::install({QStringLiteral("de-DE")}), QStringLiteral("de"));
        QCOMPARE(title(), QStringLiteral("Vendel-Aktionen"));
        QCOMPARE(HostTranslations::install({QStringLiteral("fr-FR")}), QStringLiteral("fr"));
        QCOMPARE(title(), QStringLiteral("Actions Vendel"));
        // Qt's own catalogue comes along, for the standard buttons.
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Annuler"));
        QCOMPARE(HostTranslations::install({QStringLiteral("en-US")}), QString());
        QCOMPARE(title(), QStringLiteral("Vendel Actions"));
    }
};

QTEST_GUILESS_MAIN(HostTranslationsTest)
#include "HostTranslationsTest.moc"
