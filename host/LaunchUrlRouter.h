// Routes a vendelplugin:// launch URL to the installed plugin that owns it, for the host that claims the
// scheme.
#pragma once

#include "HostStorage.h"

#include <QString>

namespace VendelHost {

// Every plugin's launch URLs share one scheme, so on a desktop one program must claim it and hand each URL to
// the right plugin: the host, which knows which plugin owns an action. The URL goes on exactly as it came, so
// the plugin reads the same text that was opened, and refuses what it would refuse.
class LaunchUrlRouter
{
public:
    static constexpr auto scheme = "vendelplugin";

    enum class Verb
    {
        run,
        edit,
        configure,
    };

    struct Route
    {
        Verb verb;
        // The plugin's name, and the executable it was installed with.
        QString plugin;
        QString executable;
        // The launch URL, unchanged.
        QString url;
    };

    explicit LaunchUrlRouter(const HostStorage& storage) : m_storage(storage) {}

    // Whether the text is written in the launch URLs' scheme, in any case, as the desktop matched it.
    static bool isLaunchUrl(const QString& text);

    // The plugin that the URL goes to: the owner of the action that vendelplugin://run/<id> and
    // vendelplugin://edit/<id> name, or the plugin that vendelplugin://configure/<plugin> names. Throws
    // HostError, saying why, for anything else: no URL, a verb it cannot route, no identifier or plugin, one
    // it does not know.
    Route route(const QString& url) const;

private:
    const HostStorage& m_storage;
};

} // namespace VendelHost
