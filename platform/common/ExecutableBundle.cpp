// The main bundle where applications are bare executables: the host knows the plugin by its executable.
#include <VendelSDK/Bundle.h>

#include <QCoreApplication>
#include <QFileInfo>

namespace VendelSDK {

Bundle makePlatformMainBundle()
{
    QString path;
    if (QCoreApplication::instance() != nullptr) {
        const QFileInfo executable(QCoreApplication::applicationFilePath());
        path = executable.canonicalFilePath();
    }
    return Bundle(path, QString(), {});
}

} // namespace VendelSDK
