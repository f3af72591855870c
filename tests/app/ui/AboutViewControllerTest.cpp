// Tests the about panel: the version line built from the bundle, empty texts for missing information, and
// the application's icon.
#include "AboutViewController.h"

#include "TestPlatform.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QTest>

#include <memory>

using namespace MusicPlugin;
using namespace VendelSDK;
using namespace VendelSDK::Testing;

namespace {

QVariantMap bundleInfo(const QVariant& shortVersion, const QVariant& build)
{
    return {{QString::fromLatin1(Bundle::nameKey), QStringLiteral("Vendel Music")},
            {QString::fromLatin1(Bundle::copyrightKey), QStringLiteral("Copyright © 2026 Someone")},
            {QString::fromLatin1(Bundle::shortVersionKey), shortVersion},
            {QString::fromLatin1(Bundle::versionKey), build}};
}

// The panel's four views, as a form would hold them.
struct Views
{
    Views()
    {
        icon.setFixedSize(48, 48);
        controller.icon = &icon;
        controller.name = &name;
        controller.copyright = &copyright;
        controller.version = &version;
    }

    QLabel icon;
    QLabel name;
    QLabel copyright;
    QLabel version;
    AboutViewController controller;
};

} // namespace

class AboutViewControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shortVersionAndBuildMakeTheVersionLine()
    {
        TestPlatform platform;
        Platform::setMainBundle(Bundle(QStringLiteral("/p"), QStringLiteral("org.vendel.test"),
                                       bundleInfo(QStringLiteral("2.0"), QStringLiteral("7"))));
        Views views;
        views.controller.viewDidLoad();
        QCOMPARE(views.version.text(), QStringLiteral("Version: 2.0 (7)"));
        QCOMPARE(views.name.text(), QStringLiteral("Vendel Music"));
        QCOMPARE(views.copyright.text(), QStringLiteral("Copyright © 2026 Someone"));
        QCOMPARE(AboutViewController::versionLine(QStringLiteral("1.2"), QStringLiteral("34")),
                 QStringLiteral("Version: 1.2 (34)"));
    }

    void missingOrNonTextInformationShowsEmptyTexts()
    {
        TestPlatform platform;
        Platform::setMainBundle(Bundle(QStringLiteral("/p"), QStringLiteral("org.vendel.test"),
                                       {{QString::fromLatin1(Bundle::shortVersionKey), 2}}));
        Views views;
        views.name.setText(QStringLiteral("placeholder"));
        views.controller.viewDidLoad();
        QCOMPARE(views.version.text(), QStringLiteral("Version:  ()"));
        QCOMPARE(views.name.text(), QString());
        QCOMPARE(views.copyright.text(), QString());
    }

    void iconViewShowsTheApplicationsIconAtItsSize()
    {
        TestPlatform platform;
        QPixmap red(128, 128);
        red.fill(Qt::red);
        QApplication::setWindowIcon(QIcon(red));
        Views views;
        views.controller.viewDidLoad();
        const QPixmap shown = views.icon.pixmap();
        QApplication::setWindowIcon(QIcon());
        QVERIFY(!shown.isNull());
        QCOMPARE(shown.deviceIndependentSize().toSize(), QSize(48, 48));
        QCOMPARE(shown.toImage().pixelColor(10, 10), QColor(Qt::red));
    }
};

QTEST_MAIN(AboutViewControllerTest)
#include "AboutViewControllerTest.moc"
