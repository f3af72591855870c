// Carries out the vendel:// command URLs that plugins open: today, "add-resources".
#pragma once

#include <QStringList>

namespace VendelHost {

class HostStorage;

class CommandUrlHandler
{
public:
    static constexpr auto addResourcesCommand = "add-resources";

    explicit CommandUrlHandler(HostStorage& storage) : m_storage(storage) {}

    // Does what the URL asks and says what was done, one line per item. Throws HostError for a malformed
    // URL, an unknown command or a bad argument; nothing is stored then.
    QStringList handle(const QString& urlText);

private:
    QStringList addResources(const QByteArray& list);

    HostStorage& m_storage;
};

} // namespace VendelHost
