// org.vendel.Actions1: the host's actions for its own clients, and launches that never make a caller wait
// for a plugin. Reads and writes go through the same ordering as the plugins' interface.
#include "HostService.h"

#include "HostInput.h"

namespace VendelHost {

namespace {

using Refusal = HostService::Refusal;

Refusal noSuchAction(const QString& actionID)
{
    return {HostService::actionsNoSuchActionError,
            QStringLiteral("There is no action \"%1\".").arg(HostInput::escaped(actionID))};
}

Refusal noSuchPlugin(const QString& plugin)
{
    return {HostService::actionsNoSuchPluginError,
            QStringLiteral("There is no plugin \"%1\"; plugins install themselves when started on their own.")
                .arg(HostInput::escaped(plugin))};
}

HostStorage::Plugin installedPlugin(const HostStorage& storage, const QString& name)
{
    const auto plugin = storage.plugin(name);
    if (!plugin) {
        throw noSuchPlugin(name);
    }
    return *plugin;
}

} // namespace

ActionEntries HostService::ListActions()
{
    perform(Work::Read, [](HostStorage& storage) -> QVariantList {
        ActionEntries entries;
        for (const HostStorage::Action& action : storage.actions()) {
            entries.append({action.id, action.title(), action.number, action.plugin, action.pluginDisplayName,
                            action.pluginIcon});
        }
        return {QVariant::fromValue(entries)};
    });
    return {};
}

PluginEntries HostService::ListPlugins()
{
    perform(Work::Read, [](HostStorage& storage) -> QVariantList {
        PluginEntries entries;
        for (const HostStorage::Plugin& plugin : storage.plugins()) {
            entries.append({plugin.name, plugin.displayName(), plugin.icon(), plugin.path});
        }
        return {QVariant::fromValue(entries)};
    });
    return {};
}

QString HostService::CreateAction(const QString& plugin, const QString& title)
{
    if (const auto problem = title.isEmpty() ? std::nullopt : HostInput::titleProblem(title)) {
        refuse(invalidTitleError, problem->at(0).toUpper() + problem->mid(1));
        return {};
    }
    perform(Work::Write, [plugin, title](HostStorage& storage) -> QVariantList {
        return {storage.createAction(installedPlugin(storage, plugin).name, title)};
    });
    return {};
}

void HostService::SetActionTitle(const QString& actionID, const QString& title)
{
    if (const auto problem = title.isEmpty() ? std::nullopt : HostInput::titleProblem(title)) {
        refuse(invalidTitleError, problem->at(0).toUpper() + problem->mid(1));
        return;
    }
    perform(Work::Write, [actionID, title](HostStorage& storage) -> QVariantList {
        if (!storage.setTitle(actionID, title)) {
            throw noSuchAction(actionID);
        }
        return {};
    });
}

void HostService::DeleteAction(const QString& actionID)
{
    perform(Work::Write, [actionID](HostStorage& storage) -> QVariantList {
        if (!storage.deleteAction(actionID)) {
            throw noSuchAction(actionID);
        }
        return {};
    });
}

qulonglong HostService::RunAction(const QString& actionID)
{
    launch(Launches::Verb::Run, actionID);
    return 0;
}

qulonglong HostService::EditAction(const QString& actionID)
{
    launch(Launches::Verb::Edit, actionID);
    return 0;
}

qulonglong HostService::ConfigurePlugin(const QString& plugin)
{
    launch(Launches::Verb::Configure, plugin);
    return 0;
}

// The names are looked up in storage, as any read, then the launch starts here, where the launches are
// counted. Only what storage holds is ever started: an installed plugin's recorded executable.
void HostService::launch(Launches::Verb verb, const QString& name)
{
    perform(
        Work::Read,
        [verb, name](HostStorage& storage) -> QVariantList {
            if (verb == Launches::Verb::Configure) {
                const HostStorage::Plugin plugin = installedPlugin(storage, name);
                return {QString(), plugin.name, plugin.path, plugin.displayName()};
            }
            const auto action = storage.action(name);
            if (!action) {
                throw noSuchAction(name);
            }
            return {action->id, action->plugin, installedPlugin(storage, action->plugin).path,
                    action->title()};
        },
        [this, verb](const QVariantList& found) -> QVariantList {
            const Launches::Request request{verb, found.at(0).toString(), found.at(1).toString(),
                                            found.at(2).toString(), found.at(3).toString()};
            try {
                return {QVariant::fromValue<qulonglong>(m_launches.start(request))};
            } catch (const Launches::Refusal& refusal) {
                static constexpr const char* errorNames[] = {alreadyRunningError, tooManyLaunchesError,
                                                             launchFailedError};
                throw Refusal{errorNames[refusal.kind], refusal.message};
            }
        });
}

} // namespace VendelHost
