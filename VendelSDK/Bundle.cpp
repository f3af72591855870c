// Bundle values, and the identity that a plugin's build gives its executable.
#include <VendelSDK/Bundle.h>

#include <utility>

namespace VendelSDK {

namespace {

struct BuiltIdentity
{
    QString identifier;
    QVariantMap info;
};

// Set before main() by the executable's own code, read on the main thread afterwards.
BuiltIdentity& builtIdentity()
{
    static BuiltIdentity identity;
    return identity;
}

} // namespace

Bundle::Bundle(QString path, QString identifier, QVariantMap info)
    : m_path(std::move(path)), m_identifier(std::move(identifier)), m_info(std::move(info))
{}

QString Bundle::infoText(const char* key) const
{
    const auto value = m_info.value(QString::fromLatin1(key));
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

void setBuiltBundleIdentity(const char* identifier, const BundleInfoEntry* info, std::size_t count) noexcept
{
    BuiltIdentity identity{QString::fromUtf8(identifier), {}};
    for (std::size_t index = 0; index < count; ++index) {
        identity.info.insert(QString::fromUtf8(info[index].key), QString::fromUtf8(info[index].value));
    }
    builtIdentity() = std::move(identity);
}

Bundle Bundle::withBuiltIdentity() const
{
    if (!m_identifier.isEmpty()) {
        return *this;
    }
    const BuiltIdentity& built = builtIdentity();
    return Bundle(m_path, built.identifier, built.info);
}

} // namespace VendelSDK
