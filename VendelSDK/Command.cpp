// Builds and sends host command URLs; the host reads the name from the host part and data from the path.
#include <VendelSDK/Command.h>

#include "Uri.h"
#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace VendelSDK {

Command::Command(QString name, std::optional<QString> data) : m_name(std::move(name)), m_data(std::move(data))
{}

Command::Command(const QList<Resource>& resources) : m_name(QString::fromLatin1(addResourcesName))
{
    QJsonArray list;
    for (const Resource& resource : resources) {
        list.append(resource.toJson());
    }
    m_data = percentEncodedForPath(QString::fromUtf8(QJsonDocument(list).toJson(QJsonDocument::Compact)));
}

QString Command::percentEncodedForPath(const QString& text)
{
    // Unreserved characters stay by default; these are the rest of the URL-path set.
    return QString::fromLatin1(text.toUtf8().toPercentEncoding("!$&'()*+,;=:@/"));
}

QString Command::urlText() const
{
    QString text = QStringLiteral("vendel://") + m_name;
    if (m_data) {
        text += u'/' + *m_data;
    }
    return text;
}

void Command::send() const
{
    const QString text = urlText();
    if (!Vendel::Uri::parse(text)) {
        throw couldNotCreateURLError();
    }
    Platform::urlOpener().open(text);
}

} // namespace VendelSDK
