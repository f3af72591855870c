// Missing information shows as empty text rather than failing: the panel is informative only.
#include "AboutViewController.h"

#include <VendelSDK/FatalError.h>
#include <VendelSDK/Platform.h>

#include <QGuiApplication>
#include <QIcon>

namespace MusicPlugin {

using VendelSDK::Bundle;

namespace {

QLabel& outlet(const QPointer<QLabel>& view, const char* name)
{
    if (!view) {
        VendelSDK::fatalError(
            QStringLiteral("The about panel's outlet “%1” is not connected.").arg(QString::fromLatin1(name)),
            "app/ui/AboutViewController", __LINE__);
    }
    return *view;
}

} // namespace

void AboutViewController::viewDidLoad()
{
    QLabel& iconView = outlet(icon, "icon");
    // The form fixes the icon's size; a view without one shows the icon at the usual 64 pixels.
    const QSize size = iconView.minimumSize().isEmpty() ? QSize(64, 64) : iconView.minimumSize();
    iconView.setPixmap(QGuiApplication::windowIcon().pixmap(size, iconView.devicePixelRatioF()));

    const Bundle& bundle = VendelSDK::Platform::mainBundle();
    outlet(name, "name").setText(bundle.infoText(Bundle::nameKey));
    outlet(copyright, "copyright").setText(bundle.infoText(Bundle::copyrightKey));
    outlet(version, "version")
        .setText(versionLine(bundle.infoText(Bundle::shortVersionKey), bundle.infoText(Bundle::versionKey)));
}

QString AboutViewController::versionLine(const QString& shortVersion, const QString& build)
{
    //: Start of the about panel's version line, followed by the version and the build in parentheses
    return QCoreApplication::translate("AboutViewController", "Version: ") + shortVersion +
           QStringLiteral(" (") + build + u')';
}

} // namespace MusicPlugin
