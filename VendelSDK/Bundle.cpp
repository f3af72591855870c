// Bundle values.
#include <VendelSDK/Bundle.h>

namespace VendelSDK {

Bundle::Bundle(QString path, QString identifier, QVariantMap info)
    : m_path(std::move(path)), m_identifier(std::move(identifier)), m_info(std::move(info))
{}

QString Bundle::infoText(const char* key) const
{
    const auto value = m_info.value(QString::fromLatin1(key));
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

} // namespace VendelSDK
