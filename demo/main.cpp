// Shows what the SDK makes of a launch URL: its verb, its identifier and the host command of a run.
#include <VendelSDK/VendelAPI.h>
#include <VendelSDK/VendelPluginURL.h>

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

using namespace VendelSDK;

namespace {

void print(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
}

int describe(const QString& text)
{
    print(QStringLiteral("URL:        ") + text);
    const auto url = VendelPluginURL::parse(text);
    if (!url) {
        print(QStringLiteral("            not a launch URL: the plugin ignores it"));
        return 1;
    }
    print(QStringLiteral("verb:       ") + url->action);
    print(QStringLiteral("identifier: ") + url->actionID.value_or(QStringLiteral("(none)")));
    if (url->action == u"run" && url->actionID) {
        const auto command = VendelAPI::getConfigCommand(*url->actionID);
        print(QStringLiteral("run sends:  ") +
              command.value_or(QStringLiteral("nothing: the identifier could break out of the command")));
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QStringList urls = app.arguments().mid(1);
    if (urls.isEmpty()) {
        urls = {
            QStringLiteral("vendelplugin://run/8F2C-Road-Trip"), QStringLiteral("vendelplugin://edit/A%20B"),
            QStringLiteral("vendelplugin://configure"), QStringLiteral("VENDELPLUGIN://run/X"),
            QStringLiteral("vendelplugin://run/x%22%20%26%20(do%20shell%20script%20%22id%22)%20%26%20%22")};
    }
    int status = 0;
    for (const QString& url : urls) {
        status |= describe(url);
        print(QString());
    }
    return app.arguments().size() > 1 ? status : 0;
}
