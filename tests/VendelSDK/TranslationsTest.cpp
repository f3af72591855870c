// Tests the choice of language, the order in which catalogues answer, and the shipped catalogues themselves:
// complete, and carrying the translator comments that the texts were written with.
#include <VendelSDK/Translations.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTest>
#include <QXmlStreamReader>

using namespace VendelSDK;

namespace {

const QString testCatalogue = QStringLiteral("TranslationsTest");
const QString mustBeRun = QStringLiteral("This plugin must be run by Vendel app.");

// A list of UI languages, as QLocale gives them, from a text that separates them with spaces.
QStringList languages(const char* spaced)
{
    return QString::fromLatin1(spaced).split(u' ', Qt::SkipEmptyParts);
}

QString sdkText(const char* key)
{
    return QCoreApplication::translate("VendelSDK", key);
}

// One message of a catalogue as committed.
struct Message
{
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString type;
};

QList<Message> readCatalogue(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QList<Message> messages;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) {
            continue;
        }
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"message") {
            Message message{context, {}, {}, {}, {}};
            while (xml.readNextStartElement()) {
                if (xml.name() == u"source") {
                    message.source = xml.readElementText();
                } else if (xml.name() == u"extracomment") {
                    message.comment = xml.readElementText();
                } else if (xml.name() == u"translation") {
                    message.type = xml.attributes().value(QStringLiteral("type")).toString();
                    message.translation = xml.readElementText();
                } else {
                    xml.skipCurrentElement();
                }
            }
            messages.append(message);
        }
    }
    return xml.hasError() ? QList<Message>{} : messages;
}

QStringList shippedCatalogues()
{
    QStringList paths;
    for (const QString& language : QStringLiteral(VENDEL_LANGUAGES).split(u' ', Qt::SkipEmptyParts)) {
        paths << QStringLiteral(VENDEL_SDK_CATALOGUES "/VendelSDK_%1.ts").arg(language)
              << QStringLiteral(VENDEL_APP_CATALOGUES "/vendel-music-plugin_%1.ts").arg(language);
    }
    return paths;
}

// Sets LANGUAGE, LC_ALL, LC_MESSAGES and LANG (an empty value unsets) and puts them back afterwards.
class EnvironmentGuard
{
public:
    explicit EnvironmentGuard(const QByteArrayList& values)
    {
        for (qsizetype i = 0; i < values.size() && i < qsizetype(std::size(names)); ++i) {
            m_saved.append({names[i], qEnvironmentVariableIsSet(names[i]), qgetenv(names[i])});
            set(names[i], values.at(i));
        }
    }
    ~EnvironmentGuard()
    {
        for (const Saved& saved : std::as_const(m_saved)) {
            set(saved.name, saved.wasSet ? saved.value : QByteArray());
        }
    }
    EnvironmentGuard(const EnvironmentGuard&) = delete;
    EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

private:
    static constexpr const char* names[] = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
    struct Saved
    {
        const char* name;
        bool wasSet;
        QByteArray value;
    };
    static void set(const char* name, const QByteArray& value)
    {
        if (value.isEmpty()) {
            qunsetenv(name);
        } else {
            qputenv(name, value);
        }
    }
    QList<Saved> m_saved;
};

} // namespace

class TranslationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Translations::install(QString(), {QStringLiteral("C")}); }

    void firstShippedLanguageInTheUsersOrderIsChosen_data()
    {
        QTest::addColumn<QStringList>("uiLanguages");
        QTest::addColumn<QString>("language");
        QTest::newRow("German desktop") << languages("de-DE de-Latn-DE de") << QStringLiteral("de");
        QTest::newRow("French desktop") << languages("fr-FR fr-Latn-FR fr") << QStringLiteral("fr");
        QTest::newRow("French before German") << languages("fr fr-FR de de-DE") << QStringLiteral("fr");
        QTest::newRow("unshipped before German") << languages("es-ES es de-DE") << QStringLiteral("de");
        QTest::newRow("region without the bare language")
            << languages("de-AT de-Latn-AT") << QStringLiteral("de");
        QTest::newRow("Canadian French") << languages("fr-CA") << QStringLiteral("fr");
        QTest::newRow("English before German keeps the keys") << languages("en en-US de") << QString();
        QTest::newRow("British English") << languages("en-GB de-DE") << QString();
        QTest::newRow("C locale") << languages("C") << QString();
        QTest::newRow("POSIX locale") << languages("POSIX") << QString();
        QTest::newRow("Japanese only") << languages("ja-JP ja-Jpan-JP ja") << QString();
        QTest::newRow("no languages") << languages("") << QString();
    }

    void firstShippedLanguageInTheUsersOrderIsChosen()
    {
        QFETCH(QStringList, uiLanguages);
        QFETCH(QString, language);
        QCOMPARE(Translations::chooseLanguage(uiLanguages, QString::fromLatin1(Translations::sdkCatalogue)),
                 language);
    }

    void untranslatedEnvironmentIsReadWithoutQtsSystemLocale_data()
    {
        QTest::addColumn<QByteArrayList>("environment"); // LANGUAGE, LC_ALL, LC_MESSAGES, LANG
        QTest::addColumn<QStringList>("languages");
        QTest::newRow("C.UTF-8 in LC_ALL") << QByteArrayList{"", "C.UTF-8", "de_DE.UTF-8", "de_DE.UTF-8"}
                                           << QStringList{QStringLiteral("C")};
        QTest::newRow("POSIX messages")
            << QByteArrayList{"", "", "POSIX", "fr_FR.UTF-8"} << QStringList{QStringLiteral("POSIX")};
        QTest::newRow("American English")
            << QByteArrayList{"", "", "", "en_US.UTF-8"} << QStringList{QStringLiteral("en")};
        QTest::newRow("English with a modifier")
            << QByteArrayList{"", "", "", "en@shaw"} << QStringList{QStringLiteral("en")};
        QTest::newRow("nothing set") << QByteArrayList{"", "", "", ""} << QStringList{QStringLiteral("C")};
    }

    void untranslatedEnvironmentIsReadWithoutQtsSystemLocale()
    {
        QFETCH(QByteArrayList, environment);
        QFETCH(QStringList, languages);
        const EnvironmentGuard guard(environment);
        QCOMPARE(Translations::userLanguages(), languages);
    }

    void languageListOrTranslatedLocaleIsLeftToQt_data()
    {
        QTest::addColumn<QByteArrayList>("environment"); // LANGUAGE, LC_ALL, LC_MESSAGES, LANG
        QTest::newRow("LANGUAGE list") << QByteArrayList{"fr:de", "", "", "C.UTF-8"};
        QTest::newRow("German messages") << QByteArrayList{"", "", "de_DE.UTF-8", "en_US.UTF-8"};
        QTest::newRow("English-like name") << QByteArrayList{"", "", "", "eng_XX"};
    }

    void languageListOrTranslatedLocaleIsLeftToQt()
    {
        QFETCH(QByteArrayList, environment);
        const EnvironmentGuard guard(environment);
        const QStringList languages = Translations::userLanguages();
        QCOMPARE(languages, QLocale::system().uiLanguages());
        QVERIFY(languages != QStringList{QStringLiteral("C")});
    }

    void germanDesktopGetsTheSdksGermanTexts()
    {
        QCOMPARE(Translations::install(QString(), {QStringLiteral("de-DE"), QStringLiteral("de")}),
                 QStringLiteral("de"));
        QCOMPARE(sdkText("This plugin must be run by Vendel app."),
                 QStringLiteral("Dieses Plugin muss von Vendel gestartet werden."));
        QCOMPARE(sdkText("Plugin cannot be installed."),
                 QStringLiteral("Das Plugin kann nicht installiert werden."));
    }

    void untranslatedLanguageShowsTheEnglishKeyExactly()
    {
        QCOMPARE(Translations::install(QString(), {QStringLiteral("ja-JP"), QStringLiteral("ja")}),
                 QString());
        QCOMPARE(
            sdkText(
                "It looks like you haven't got Vendel 2 app or you didn't allow to communicate the plugin "
                "(this app) via Apple Script"),
            QStringLiteral(
                "It looks like you haven't got Vendel 2 app or you didn't allow to communicate the "
                "plugin (this app) via Apple Script"));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
    }

    void applicationsCatalogueWinsAndTheSdksFillsIn()
    {
        QCOMPARE(Translations::install(testCatalogue, {QStringLiteral("de-DE")}), QStringLiteral("de"));
        QCOMPARE(sdkText("This plugin must be run by Vendel app."),
                 QStringLiteral("Bitte starten Sie dieses Plugin aus Vendel heraus."));
        QCOMPARE(sdkText("Could not run script"),
                 QStringLiteral("Das Skript konnte nicht ausgeführt werden"));
    }

    void applicationsLanguagesDecideForEveryCatalogue()
    {
        // The plugin ships German only: a French-first user who also reads German gets German throughout,
        // the SDK's texts and Qt's included, rather than a mixture.
        QCOMPARE(Translations::install(testCatalogue, {QStringLiteral("fr-FR"), QStringLiteral("de-DE")}),
                 QStringLiteral("de"));
        QCOMPARE(sdkText("Could not run script"),
                 QStringLiteral("Das Skript konnte nicht ausgeführt werden"));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
    }

    void qtsOwnCatalogueSpeaksTheSameLanguage()
    {
        QCOMPARE(Translations::install(QString(), {QStringLiteral("fr-FR")}), QStringLiteral("fr"));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Annuler"));
        QCOMPARE(sdkText("Could not run script"), QStringLiteral("Impossible d’exécuter le script"));
    }

    void installingAgainReplacesTheEarlierLanguage()
    {
        Translations::install(testCatalogue, {QStringLiteral("de")});
        QCOMPARE(Translations::install(QString(), {QStringLiteral("fr")}), QStringLiteral("fr"));
        QCOMPARE(sdkText("This plugin must be run by Vendel app."),
                 QStringLiteral("Ce plugin doit être lancé par l’application Vendel."));
        QCOMPARE(Translations::install(QString(), {QStringLiteral("C")}), QString());
        QCOMPARE(sdkText("This plugin must be run by Vendel app."), mustBeRun);
    }

    void shippedCataloguesAreCompleteInEveryLanguage()
    {
        const QStringList paths = shippedCatalogues();
        QCOMPARE(paths.size(), 2 * QStringLiteral(VENDEL_LANGUAGES).split(u' ', Qt::SkipEmptyParts).size());
        for (const QString& path : paths) {
            const QList<Message> messages = readCatalogue(path);
            QVERIFY2(!messages.isEmpty(), qPrintable(path));
            for (const Message& message : messages) {
                const QString where = path + QStringLiteral(": ") + message.source;
                QVERIFY2(message.type.isEmpty(), qPrintable(where));
                QVERIFY2(!message.translation.isEmpty(), qPrintable(where));
                QVERIFY2(!message.translation.contains(QStringLiteral("...")), qPrintable(where));
                // Every placeholder of the key is kept.
                for (const QString& placeholder : {QStringLiteral("%1"), QStringLiteral("%2")}) {
                    QCOMPARE(message.translation.contains(placeholder), message.source.contains(placeholder));
                }
            }
        }
    }

    void textsCarryTheTranslatorCommentsTheyWereWrittenWith_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("catalogue");
        QTest::addColumn<QString>("context");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("comment");
        const QString sdk = QStringLiteral(VENDEL_SDK_CATALOGUES);
        const QString app = QStringLiteral(VENDEL_APP_CATALOGUES);
        const auto row = [](const char* name, const QString& folder, const char* catalogue,
                            const char* context, const char* source, const char* comment) {
            QTest::newRow(name) << folder << QString::fromLatin1(catalogue) << QString::fromLatin1(context)
                                << QString::fromUtf8(source) << QString::fromUtf8(comment);
        };
        row("must be run", sdk, "VendelSDK", "VendelSDK", "This plugin must be run by Vendel app.",
            "Information that plugin must be run by Vendel");
        row("must be run OK", sdk, "VendelSDK", "VendelSDK", "OK", "OK button");
        row("configuration alert OK", sdk, "VendelSDK", "VendelSDK", "OK", "OK button title");
        row("read title", sdk, "VendelSDK", "VendelSDK", "Could not read action data in Vendel.",
            "Alert title");
        row("save title", sdk, "VendelSDK", "VendelSDK", "Could not save action data in Vendel.",
            "Alert title");
        row("code 0", sdk, "VendelSDK", "VendelSDK", "Could not create URL", "Error");
        row("code 1", sdk, "VendelSDK", "VendelSDK", "Could not run script", "Error");
        row("code 1 reason", sdk, "VendelSDK", "VendelSDK",
            "It looks like you haven't got Vendel 2 app or you didn't allow to communicate the plugin (this "
            "app) "
            "via Apple Script",
            "No Vendel 2 or disallowed.");
        row("code 2", sdk, "VendelSDK", "VendelSDK", "Could not read data from script output", "Error");
        row("installation message", sdk, "VendelSDK", "VendelSDK", "Plugin cannot be installed.",
            "Can't communicate with Vendel message during plugin installation.");
        row("installation informative text", sdk, "VendelSDK", "VendelSDK",
            "Please make sure you have the latest version of Vendel installed. If problem occurs again, go "
            "to "
            "Preferences -> Plugins and install the plugin there.",
            "Can't communicate with Vendel informative text of message during plugin installation.");
        row("no configuration", app, "vendel-music-plugin", "RunActionController",
            "Could not read action configuration", "Running Error");
        row("no playlist", app, "vendel-music-plugin", "RunActionController", "Playlist could not be read",
            "Running Error");
    }

    void textsCarryTheTranslatorCommentsTheyWereWrittenWith()
    {
        QFETCH(QString, folder);
        QFETCH(QString, catalogue);
        QFETCH(QString, context);
        QFETCH(QString, source);
        QFETCH(QString, comment);
        for (const QString& language : QStringLiteral(VENDEL_LANGUAGES).split(u' ', Qt::SkipEmptyParts)) {
            const QString path = folder + QStringLiteral("/%1_%2.ts").arg(catalogue, language);
            const QList<Message> messages = readCatalogue(path);
            const auto found = std::find_if(messages.cbegin(), messages.cend(), [&](const Message& message) {
                return message.context == context && message.source == source;
            });
            QVERIFY2(found != messages.cend(), qPrintable(path));
            // A key used in several places gathers their comments, one per line group.
            QVERIFY2(found->comment.split(u'\n').contains(comment), qPrintable(found->comment));
        }
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
