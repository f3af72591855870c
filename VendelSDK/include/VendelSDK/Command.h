// A one-way command to the host, sent by asking the system to open vendel://<name>[/<data>].
#pragma once

#include <VendelSDK/Export.h>
#include <VendelSDK/Resource.h>

#include <QList>
#include <QString>

#include <optional>

namespace VendelSDK {

/// A command URL to the host (`vendel://<name>[/<data>]`), which the host carries out on its own: the plugin
/// gets no answer.
class VENDELSDK_EXPORT Command
{
public:
    /// The name of the command that adds resources to the host.
    static constexpr auto addResourcesName = "add-resources";

    /// A command with its name and data as they are to stand in the URL (already percent-encoded).
    Command(QString name, std::optional<QString> data);
    /// The "add-resources" command carrying the list as percent-encoded JSON.
    explicit Command(const QList<Resource>& resources);

    /// The command's name.
    const QString& name() const { return m_name; }
    /// The command's data, as it stands in the URL; none for a command without data.
    const std::optional<QString>& data() const { return m_data; }

    /// The URL text that send() opens: the name inserted as it is, then "/" and the data if any.
    QString urlText() const;
    /// Opens the URL; throws the SDK error 0 when the text is not a valid URL, and then opens nothing.
    void send() const;

    /// Percent-encodes UTF-8 bytes outside the URL-path set (letters, digits and -._~!$&'()*+,;=:@/).
    static QString percentEncodedForPath(const QString& text);

private:
    QString m_name;
    std::optional<QString> m_data;
};

} // namespace VendelSDK
