// The main bundle where applications are bare executables: the host knows the plugin by its executable, and
// the identity is the one the plugin's build compiled into it.
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
    return Bundle(path, QString(), {}).withBuiltIdentity();
}

} // namespace VendelSDK
