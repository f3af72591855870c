// The bundle seam: where the application lives, who it is, and its information keys.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>
#include <QVariantMap>

#include <cstddef>

namespace VendelSDK {

/// The identity of the running plugin: its path, its reverse-DNS identifier and its information keys.
class VENDELSDK_EXPORT Bundle
{
public:
    /// Information keys that the About panel and the updater read.
    static constexpr auto nameKey = "CFBundleName";
    /// The key of the copyright line that the About panel shows.
    static constexpr auto copyrightKey = "NSHumanReadableCopyright";
    /// The key of the version that users see ("1.2").
    static constexpr auto shortVersionKey = "CFBundleShortVersionString";
    /// The key of the build number.
    static constexpr auto versionKey = "CFBundleVersion";

    Bundle() = default;
    /// A bundle with the given path, identifier and information keys.
    Bundle(QString path, QString identifier, QVariantMap info);

    /// The path under which the host knows the installed plugin: the executable's canonical path.
    const QString& path() const { return m_path; }
    /// The application's reverse-DNS identifier; empty when the application has none.
    const QString& identifier() const { return m_identifier; }
    /// Every information key with its value.
    const QVariantMap& info() const { return m_info; }
    /// The text value of an information key, or the empty text when it is missing or not text.
    QString infoText(const char* key) const;

    /// This bundle when it has an identifier; otherwise the same path with the identity that the plugin's
    /// build gave its executable (setBuiltBundleIdentity), if any.
    Bundle withBuiltIdentity() const;

private:
    QString m_path;
    QString m_identifier;
    QVariantMap m_info;
};

/// One information key of a built identity and its text value, both UTF-8.
struct BundleInfoEntry
{
    /// The key, such as Bundle::nameKey.
    const char* key;
    /// Its text value.
    const char* value;
};

/// The identity that a plugin's build gives its executable: the identifier and `count` information keys,
/// copied. vendel_add_plugin() compiles a call of it into the executable, which runs before main(). It takes
/// plain texts, so that the executable needs nothing else for it. A later call replaces the identity.
VENDELSDK_EXPORT void setBuiltBundleIdentity(const char* identifier, const BundleInfoEntry* info,
                                             std::size_t count) noexcept;

/// The main bundle of the platform this build targets; CMake picks the implementation. Where applications
/// are bare executables it is the running executable's canonical path, with the identity that its build gave
/// it (setBuiltBundleIdentity), or none.
VENDELSDK_EXPORT Bundle makePlatformMainBundle();

} // namespace VendelSDK
