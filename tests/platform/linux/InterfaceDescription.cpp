// Parses the introspection XML of the committed interface descriptions.
#include "InterfaceDescription.h"

#include <QFile>
#include <QXmlStreamReader>

namespace VendelSDK::Testing {

QHash<QString, DescribedMethod> describedMethods(const QString& file, const char* interface)
{
    QFile description(QStringLiteral(VENDEL_DBUS_INTERFACES "/") + file);
    if (!description.open(QIODevice::ReadOnly)) {
        return {};
    }
    QHash<QString, DescribedMethod> methods;
    QXmlStreamReader xml(&description);
    bool inInterface = false;
    QString method;
    while (!xml.atEnd()) {
        xml.readNext();
        const auto attributes = xml.attributes();
        if (xml.isStartElement() && xml.name() == u"interface") {
            inInterface = attributes.value(QLatin1String("name")) == QLatin1String(interface);
        } else if (xml.isEndElement() && xml.name() == u"interface") {
            inInterface = false;
        } else if (inInterface && xml.isStartElement() && xml.name() == u"method") {
            method = attributes.value(QLatin1String("name")).toString();
            methods.insert(method, {});
        } else if (inInterface && xml.isStartElement() && xml.name() == u"arg" && !method.isEmpty()) {
            // Arguments of a method are in-arguments unless they say otherwise.
            DescribedMethod& described = methods[method];
            (attributes.value(QLatin1String("direction")) == u"out" ? described.out : described.in) +=
                attributes.value(QLatin1String("type")).toString();
        }
    }
    return xml.hasError() ? QHash<QString, DescribedMethod>() : methods;
}

} // namespace VendelSDK::Testing
