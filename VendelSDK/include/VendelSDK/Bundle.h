// The bundle seam: where the application lives, who it is, and its information keys.
#pragma once

#include <QString>
#include <QVariantMap>

namespace VendelSDK {

class Bundle
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

private:
    QString m_path;
    QString m_identifier;
    QVariantMap m_info;
};

// The main bundle of the platform this build targets; CMake picks the implementation. Where applications
// are bare executables it is the running executable's canonical path, with no identifier and no
// information, which the application then supplies.
Bundle makePlatformMainBundle();

} // namespace VendelSDK
