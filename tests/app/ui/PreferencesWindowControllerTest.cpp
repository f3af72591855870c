// Tests the preferences window: its level, the about panel and its link filled from the form and the
// bundle, the window that is not moved by its background, and closing it with and without an editor open.
#include "PreferencesWindowController.h"

#include "FixedMediaLibrary.h"
#include "MouseDrag.h"
#include "TestPlatform.h"
#include <VendelSDK/QtGuiApplicationServices.h>
#include <VendelSDK/Translations.h>

#include "AboutViewController.h"
#include "EditorViewController.h"
#include "LinkLabel.h"
#include "MainWindowController.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTest>

#include <memory>

using namespace MusicPlugin;
using namespace MusicPlugin::Testing;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

class PreferencesWindowControllerTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestPlatform> platform;
    TestApplicationServices* services = nullptr;

private Q_SLOTS:
    void init()
    {
        platform = std::make_unique<TestPlatform>();
        // The real window list of the widget application; termination requests are only counted.
        services = platform->services;
        services->windowSource = [] { return QtGuiApplicationServices().windows(); };
        Platform::setMainBundle(
            Bundle(QStringLiteral("/p"), QStringLiteral("org.vendel.test"),
                   {{QString::fromLatin1(Bundle::nameKey), QStringLiteral("Vendel Music")},
                    {QString::fromLatin1(Bundle::copyrightKey), QStringLiteral("© 2026")},
                    {QString::fromLatin1(Bundle::shortVersionKey), QStringLiteral("2.0")},
                    {QString::fromLatin1(Bundle::versionKey), QStringLiteral("7")}}));
    }

    void cleanup() { platform.reset(); }

    void windowOfThePreferencesFormStaysOnTop()
    {
        PreferencesWindowController controller;
        QWidget* window = controller.window();
        QCOMPARE(window->objectName(), QStringLiteral("PreferencesWindowController"));
        QVERIFY(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        controller.showWindow();
        QVERIFY(window->isVisible());
    }

    void aboutPanelShowsTheBundlesInformation()
    {
        PreferencesWindowController controller;
        auto* about = qobject_cast<AboutViewController*>(controller.contentViewController());
        QVERIFY(about);
        QCOMPARE(about, controller.aboutViewController());
        QVERIFY(about->icon && about->name && about->copyright && about->version);
        QCOMPARE(about->name->text(), QStringLiteral("Vendel Music"));
        QCOMPARE(about->copyright->text(), QStringLiteral("© 2026"));
        QCOMPARE(about->version->text(), QStringLiteral("Version: 2.0 (7)"));
        QVERIFY(!about->icon->accessibleName().isEmpty());
        QCOMPARE(about->icon->window(), controller.window());
    }

    void preferencesSpeakTheDesktopsLanguage_data()
    {
        QTest::addColumn<QStringList>("uiLanguages");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("link");
        QTest::addColumn<QString>("iconName");
        // German keeps "Version" and "Website" as English has them; its title and icon name differ.
        QTest::newRow("German") << QStringList{QStringLiteral("de-DE")} << QStringLiteral("Einstellungen")
                                << QStringLiteral("Version: 2.0 (7)") << QStringLiteral("Website")
                                << QStringLiteral("Programmsymbol");
        QTest::newRow("French") << QStringList{QStringLiteral("fr-FR")} << QStringLiteral("Préférences")
                                << QStringLiteral("Version\u00a0: 2.0 (7)") << QStringLiteral("Site web")
                                << QStringLiteral("Icône de l’application");
    }

    void preferencesSpeakTheDesktopsLanguage()
    {
        QFETCH(QStringList, uiLanguages);
        QFETCH(QString, title);
        QFETCH(QString, version);
        QFETCH(QString, link);
        QFETCH(QString, iconName);
        QVERIFY(!Translations::install(QStringLiteral("vendel-music-plugin"), uiLanguages).isEmpty());
        PreferencesWindowController controller;
        Translations::install(QString(), {QStringLiteral("C")});
        const AboutViewController* about = controller.aboutViewController();
        const auto links = controller.window()->findChildren<LinkLabel*>();
        QCOMPARE(links.size(), 1);
        QCOMPARE(controller.window()->windowTitle(), title);
        QCOMPARE(about->version->text(), version);
        QCOMPARE(links.first()->accessibleName(), link);
        QCOMPARE(about->icon->accessibleName(), iconName);
    }

    void formsLinkIsLinkedAndReachableByKeyboard()
    {
        PreferencesWindowController controller;
        const auto links = controller.window()->findChildren<LinkLabel*>();
        QCOMPARE(links.size(), 1);
        LinkLabel* link = links.first();
        QCOMPARE(link->link(), QStringLiteral("https://vendel.example/plugins/music"));
        QCOMPARE(link->textFormat(), Qt::RichText);
        QVERIFY(link->openExternalLinks());
        QCOMPARE(link->accessibleName(), QStringLiteral("Website"));
        QVERIFY(link->focusPolicy() != Qt::NoFocus);
    }

    void draggingTheBackgroundDoesNotMoveThisWindow()
    {
        PreferencesWindowController controller;
        controller.showWindow();
        QWidget* window = controller.window();
        const QPoint start = window->pos();
        mouseDrag(window, QPoint(3, 3), QPoint(40, 30));
        QCOMPARE(window->pos(), start);
    }

    void closingItWhileAnEditorIsOpenKeepsRunning()
    {
        FixedMediaLibrary library(QStringList{QStringLiteral("Evening")});
        MainWindowController editor(new EditorViewController(new PlaylistStore(library)));
        editor.showWindow();
        PreferencesWindowController preferences;
        preferences.showWindow();
        QVERIFY(preferences.window()->close());
        QCOMPARE(services->terminateRequests, 0);
        QVERIFY(editor.window()->close());
        QCOMPARE(services->terminateRequests, 1);
    }

    void closingItAsTheOnlyWindowTerminates()
    {
        PreferencesWindowController preferences;
        preferences.showWindow();
        QVERIFY(preferences.window()->close());
        QCOMPARE(services->terminateRequests, 1);
    }
};

QTEST_MAIN(PreferencesWindowControllerTest)
#include "PreferencesWindowControllerTest.moc"
