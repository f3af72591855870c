// Tests that the windowed application services report each window's visible and minimised state.
#include <VendelSDK/QtGuiApplicationServices.h>

#include "FakeHost.h"
#include "SampleConfig.h"
#include "TestPlatform.h"

#include <VendelSDK/LocalConfigProvider.h>

#include <QGuiApplication>
#include <QTest>
#include <QWindow>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

class QtGuiApplicationServicesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void windowListReportsVisibleAndMinimisedWindows()
    {
        QtGuiApplicationServices services;
        QWindow shown;
        shown.show();
        QWindow minimised;
        minimised.showMinimized();
        QWindow hidden;
        hidden.create();
        const auto states = services.windows();
        int visible = 0;
        int miniaturised = 0;
        for (const WindowState& state : states) {
            visible += state.visible ? 1 : 0;
            miniaturised += state.miniaturised ? 1 : 0;
        }
        QCOMPARE(states.size(), 3);
        QCOMPARE(miniaturised, 1);
        QVERIFY(visible >= 1);
    }

    void aHiddenWindowIsNeitherVisibleNorMinimised()
    {
        QtGuiApplicationServices services;
        QWindow hidden;
        hidden.create();
        const auto states = services.windows();
        QCOMPARE(states.size(), 1);
        QVERIFY(!states.first().visible);
        QVERIFY(!states.first().miniaturised);
    }

    // Xvfb has no session manager, so the request's hook is called as the application would call it.
    void endOfSessionRequestWritesAPendingChangeAtOnce()
    {
        TestPlatform platform;
        FakeHost host(*platform.engine);
        const auto provider =
            LocalConfigProvider<SampleConfig>::create(QStringLiteral("S-1"), SampleConfig{});
        QVERIFY(provider);
        provider->config.count = 30;
        provider->save();
        QtGuiApplicationServices services;
        services.commitData();
        QCOMPARE(host.writes.size(), 1);
        QCOMPARE(host.writes.first().key, QStringLiteral("S-1"));
        QCOMPARE(decodeConfig(host.writes.first().text, SampleConfig{}).count, 30);
        platform.services->terminateNow();
    }
};

QTEST_MAIN(QtGuiApplicationServicesTest)
#include "QtGuiApplicationServicesTest.moc"
