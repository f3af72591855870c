// Bundle values and the bundle of the running executable.
#include "Bundle.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace VendelSDK {

Bundle::Bundle(QString path, QString identifier, QVariantMap info)
    : m_path(std::move(path)), m_identifier(std::move(identifier)), m_info(std::move(info))
{}

QString Bundle::infoText(const char* key) const
{
    const auto value = m_info.value(QString::fromLatin1(key));
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

Bundle Bundle::ofRunningExecutable()
{
    QString path;
    if (QCoreApplication::instance() != nullptr) {
        const QFileInfo executable(QCoreApplication::applicationFilePath());
        path = executable.canonicalFilePath();
    }
    return Bundle(path, QString(), {});
}

} // namespace VendelSDK
