// The bundle seam: where the application lives, who it is, and its information keys.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>
#include <QVariantMap>

namespace VendelSDK {

class VENDELSDK_EXPORT Bundle
{
public:
    // Information keys that the About panel and the updater read.
    static constexpr auto nameKey = "CFBundleName";
    static constexpr auto copyrightKey = "NSHumanReadableCopyright";
    static constexpr auto shortVersionKey = "CFBundleShortVersionString";
    static constexpr auto versionKey = "CFBundleVersion";

    Bundle() = default;
    Bundle(QString path, QString identifier, QVariantMap info);

    // The path under which the host knows the installed plugin: the executable's canonical path.
    const QString& path() const { return m_path; }
    // The application's reverse-DNS identifier; empty when the application has none.
    const QString& identifier() const { return m_identifier; }
    const QVariantMap& info() const { return m_info; }
    // The text value of an information key, or the empty text when it is missing or not text.
    QString infoText(const char* key) const;

    // The identity that a plugin's build gives its executable: the identifier and the information keys.
    // vendel_add_plugin() compiles a call of it into the executable, which runs before main(). A later call
    // replaces the identity.
    static void setBuiltIdentity(QString identifier, QVariantMap info);
    // This bundle when it has an identifier; otherwise the same path with the built identity, if any.
    Bundle withBuiltIdentity() const;

private:
    QString m_path;
    QString m_identifier;
    QVariantMap m_info;
};

// The main bundle of the platform this build targets; CMake picks the implementation. Where applications
// are bare executables it is the running executable's canonical path, with the identity that its build gave
// it (setBuiltIdentity), or none.
VENDELSDK_EXPORT Bundle makePlatformMainBundle();

} // namespace VendelSDK
