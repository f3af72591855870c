// Tests the windowed module's entry: the widget application it makes, the windowed backends, and the two
// scenes that it registers under the storyboards' names.
#include "EditorViewController.h"
#include "MainWindowController.h"
#include "PreferencesWindowController.h"
#include "Storyboard.h"

#include <VendelSDK/Testing/RecordingAlertPresenter.h>

#include <VendelSDK/Platform.h>
#include <VendelSDK/QtGuiApplicationServices.h>
#include <VendelSDK/WidgetAlertPresenter.h>

#include <QApplication>
#include <QTest>

extern "C" QCoreApplication* vendelMusicPluginCreateApplication(int& argc, char** argv);

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

class UiModuleEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void widgetApplicationIsEndedByItsWindowsOnly()
    {
        QVERIFY(qobject_cast<QApplication*>(QCoreApplication::instance()));
        QVERIFY(!QGuiApplication::quitOnLastWindowClosed());
        QVERIFY(!QGuiApplication::windowIcon().isNull());
    }

    void windowedBackendsAreInstalled()
    {
        QVERIFY(dynamic_cast<QtGuiApplicationServices*>(&Platform::applicationServices()));
        QVERIFY(dynamic_cast<WidgetAlertPresenter*>(&Platform::alertPresenter()));
    }

    void preferencesSceneIsThePreferencesWindow()
    {
        QVERIFY(Storyboard::exists(QStringLiteral("Preferences")));
        const auto controller = Storyboard(QStringLiteral("Preferences"))
                                    .instantiateController(QStringLiteral("Preferences Window Controller"));
        QVERIFY(qobject_cast<PreferencesWindowController*>(controller.get()));
    }

    void editSceneIsTheEditorWindowWithThePlatformsPlaylists()
    {
        QVERIFY(Storyboard::exists(QStringLiteral("Main")));
        // No player to read the playlists from: the store says so, which shows it asked the platform.
        qputenv("VENDEL_MUSIC", "mpd");
        qputenv("MPD_HOST", "/nonexistent/vendel-test/mpd.socket");
        auto alerts = std::make_unique<RecordingAlertPresenter>();
        const RecordingAlertPresenter* recorded = alerts.get();
        Platform::setAlertPresenter(std::move(alerts));
        const auto controller = Storyboard(QStringLiteral("Main"))
                                    .instantiateController(QStringLiteral("Edit Window Controller"));
        QVERIFY(qobject_cast<MainWindowController*>(controller.get()));
        QVERIFY(qobject_cast<EditorViewController*>(controller->contentViewController()));
        QCOMPARE(recorded->alerts.size(), 1);
        QCOMPARE(recorded->alerts.constFirst().messageText,
                 QStringLiteral("The music library could not be opened."));
        QVERIFY(Platform::applicationServices().terminationRequested());
    }
};

int main(int argc, char* argv[])
{
    QCoreApplication* app = vendelMusicPluginCreateApplication(argc, argv);
    int result = 0;
    {
        UiModuleEntryTest test;
        result = QTest::qExec(&test, argc, argv);
    }
    // Backends go before the application object that some of them depend on.
    Platform::reset();
    delete app;
    return result;
}

#include "UiModuleEntryTest.moc"
