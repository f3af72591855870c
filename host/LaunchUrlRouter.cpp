// Reads only the verb and the one identifier of a launch URL, the way plugins read them, to find its plugin.
#include "LaunchUrlRouter.h"

#include "HostError.h"
#include "UrlParsing.h"

#include <QRegularExpression>

namespace VendelHost {

namespace {

const QString launchForms =
    QStringLiteral("vendelplugin://run/<id>, vendelplugin://edit/<id> and vendelplugin://configure/<plugin>");

// The one non-empty path segment, percent-decoded after splitting, as plugins read it; nothing when there are
// none or several, or when it decodes to a NUL or to text that is not UTF-8.
std::optional<QString> identifierOf(const QList<QByteArray>& segments)
{
    std::optional<QString> identifier;
    for (const QByteArray& raw : segments) {
        if (raw.isEmpty()) {
            continue;
        }
        if (identifier) {
            return std::nullopt;
        }
        const QByteArray decoded = QByteArray::fromPercentEncoding(raw);
        const QString text = QString::fromUtf8(decoded);
        if (decoded.contains('\0') || text.toUtf8() != decoded) {
            return std::nullopt;
        }
        identifier = text;
    }
    return identifier;
}

} // namespace

bool LaunchUrlRouter::isLaunchUrl(const QString& text)
{
    static const QRegularExpression schemePart(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*):"));
    const QRegularExpressionMatch match = schemePart.match(text);
    return match.hasMatch() && match.captured(1).compare(QLatin1String(scheme), Qt::CaseInsensitive) == 0;
}

LaunchUrlRouter::Route LaunchUrlRouter::route(const QString& url) const
{
    const Vendel::Uri parsed = parseUrl(url);
    if (parsed.scheme().compare(QLatin1String(scheme), Qt::CaseInsensitive) != 0) {
        throw HostError(QStringLiteral("\"%1\" is not a vendelplugin:// launch URL.").arg(url));
    }
    const QString verb = parsed.host().value_or(QString());
    if (verb.isEmpty()) {
        throw HostError(QStringLiteral("\"%1\" names no launch; launch URLs are %2.").arg(url, launchForms));
    }
    const std::optional<QString> identifier = identifierOf(parsed.rawPathSegments());

    // Verbs are matched exactly, as plugins match them.
    if (verb == u"run" || verb == u"edit") {
        if (!identifier) {
            throw HostError(QStringLiteral("\"%1\" names no action, so it belongs to no plugin: "
                                           "vendelplugin://%2/<id>.")
                                .arg(url, verb));
        }
        const auto action = m_storage.action(*identifier);
        if (!action) {
            throw HostError(QStringLiteral("\"%1\" names the action \"%2\", which this host does not know; "
                                           "'vendel-host actions' lists them.")
                                .arg(url, *identifier));
        }
        const auto plugin = m_storage.plugin(action->plugin);
        if (!plugin) {
            throw HostError(
                QStringLiteral("\"%1\" names an action of the plugin \"%2\", which is not installed.")
                    .arg(url, action->plugin));
        }
        return {verb == u"run" ? Verb::run : Verb::edit, plugin->name, plugin->path, url};
    }
    if (verb == u"configure") {
        if (!identifier) {
            throw HostError(
                QStringLiteral("\"%1\" names no plugin: vendelplugin://configure/<plugin>.").arg(url));
        }
        const auto plugin = m_storage.plugin(*identifier);
        if (!plugin) {
            throw HostError(QStringLiteral("\"%1\" names the plugin \"%2\", which is not installed; "
                                           "'vendel-host plugins' lists them.")
                                .arg(url, *identifier));
        }
        return {Verb::configure, plugin->name, plugin->path, url};
    }
    throw HostError(
        QStringLiteral(
            "The host cannot route \"%1\": \"%2\" is no launch it knows the plugin of; it routes %3.")
            .arg(url, verb, launchForms));
}

} // namespace VendelHost
