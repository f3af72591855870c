<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>VendelHost::ActionListModel</name>
    <message>
        <source>Action</source>
        <extracomment>Heading of the list&apos;s column of action titles</extracomment>
        <translation>Action</translation>
    </message>
    <message>
        <source>Plugin</source>
        <extracomment>Heading of the list&apos;s column of plugin names</extracomment>
        <translation>Plugin</translation>
    </message>
</context>
<context>
    <name>VendelHost::ActionsClient</name>
    <message>
        <source>The actions could not be listed.</source>
        <extracomment>Failure headline when the host could not list the actions; the reason follows</extracomment>
        <translation>Les actions n’ont pas pu être listées.</translation>
    </message>
    <message>
        <source>No action of %1 was made.</source>
        <extracomment>Failure headline of making an action; %1 is the plugin&apos;s display name; the reason follows</extracomment>
        <translation>Aucune action de %1 n’a été créée.</translation>
    </message>
    <message>
        <source>“%1” could not be renamed.</source>
        <extracomment>Failure headline of renaming; %1 is the action&apos;s title; the reason follows</extracomment>
        <translation>«&#xa0;%1&#xa0;» n’a pas pu être renommée.</translation>
    </message>
    <message>
        <source>“%1” could not be deleted.</source>
        <extracomment>Failure headline of deleting; %1 is the action&apos;s title; the reason follows</extracomment>
        <translation>«&#xa0;%1&#xa0;» n’a pas pu être supprimée.</translation>
    </message>
    <message>
        <source>Running “%1”…</source>
        <extracomment>Status bar while a run is under way; %1 is the action&apos;s title</extracomment>
        <translation>Lancement de «&#xa0;%1&#xa0;»…</translation>
    </message>
    <message>
        <source>“%1” has run.</source>
        <extracomment>Status bar after a run ended well; %1 is the action&apos;s title</extracomment>
        <translation>«&#xa0;%1&#xa0;» s’est exécutée.</translation>
    </message>
</context>
<context>
    <name>VendelHost::DesktopNotifications</name>
    <message>
        <source>Vendel Actions</source>
        <extracomment>The application&apos;s name that the desktop shows with a notification of a failed launch</extracomment>
        <translation>Actions Vendel</translation>
    </message>
</context>
<context>
    <name>VendelHost::HostWindow</name>
    <message>
        <source>Vendel Actions</source>
        <extracomment>Title of the host&apos;s window, and its name in the desktop&apos;s menu</extracomment>
        <translation>Actions Vendel</translation>
    </message>
    <message>
        <source>Filter by title</source>
        <extracomment>Placeholder of the filter field above the list</extracomment>
        <translation>Filtrer par titre</translation>
    </message>
    <message>
        <source>&amp;New Action…</source>
        <extracomment>Menu and toolbar: make a new action</extracomment>
        <translation>&amp;Nouvelle action…</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <extracomment>Menu and toolbar: run the selected action (Enter)</extracomment>
        <translation>&amp;Lancer</translation>
    </message>
    <message>
        <source>&amp;Edit…</source>
        <extracomment>Menu and toolbar: open the selected action in its plugin&apos;s editor</extracomment>
        <translation>&amp;Modifier…</translation>
    </message>
    <message>
        <source>&amp;Delete…</source>
        <extracomment>Menu and toolbar: delete the selected action, after a question</extracomment>
        <translation>&amp;Supprimer…</translation>
    </message>
    <message>
        <source>Plugin &amp;Preferences…</source>
        <extracomment>Menu and toolbar: open the preferences of the selected action&apos;s plugin</extracomment>
        <translation>&amp;Préférences du plugin…</translation>
    </message>
    <message>
        <source>&amp;Filter</source>
        <extracomment>View menu: go to the filter field (Ctrl+F)</extracomment>
        <translation>&amp;Filtrer</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <extracomment>Action menu: close the window</extracomment>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>&amp;Action</source>
        <extracomment>Menu title</extracomment>
        <translation>&amp;Action</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <extracomment>Menu title</extracomment>
        <translation>A&amp;ffichage</translation>
    </message>
    <message>
        <source>&amp;Plugins</source>
        <extracomment>Menu title: one entry per installed plugin, opening its preferences</extracomment>
        <translation>&amp;Plugins</translation>
    </message>
    <message>
        <source>Actions</source>
        <extracomment>Name of the toolbar</extracomment>
        <translation>Actions</translation>
    </message>
    <message>
        <source>Delete Action</source>
        <extracomment>Title of the question before deleting an action</extracomment>
        <translation>Supprimer l’action</translation>
    </message>
    <message>
        <source>Delete “%1”?</source>
        <extracomment>The question before deleting; %1 is the action&apos;s title</extracomment>
        <translation>Supprimer «&#xa0;%1&#xa0;»&#xa0;?</translation>
    </message>
    <message>
        <source>Its settings are deleted with it.</source>
        <extracomment>Below the question before deleting an action</extracomment>
        <translation>Ses réglages sont supprimés avec elle.</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <extracomment>Button of the question that deletes the action</extracomment>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>No plugin is installed yet: a plugin installs itself when it is started on its own.</source>
        <extracomment>Message when a new action is asked for and no plugin is installed</extracomment>
        <translation>Aucun plugin n’est encore installé&#xa0;: un plugin s’installe de lui-même lorsqu’on le démarre seul.</translation>
    </message>
    <message>
        <source>There are no actions yet. Make one with New Action (Ctrl+N).</source>
        <extracomment>Shown in place of the empty list</extracomment>
        <translation>Il n’y a pas encore d’action. Créez-en une avec Nouvelle action (Ctrl+N).</translation>
    </message>
    <message>
        <source>No action&apos;s title holds “%1”.</source>
        <extracomment>Shown in place of the list when the filter hides every action; %1 is the filter text</extracomment>
        <translation>Aucun titre d’action ne contient «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>%1 Preferences…</source>
        <extracomment>Entry of the Plugins menu; %1 is the plugin&apos;s display name</extracomment>
        <translation>Préférences de %1…</translation>
    </message>
    <message>
        <source>Rena&amp;me</source>
        <extracomment>Menu and toolbar: rename the selected action in place (F2)</extracomment>
        <translation>&amp;Renommer</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <extracomment>View menu: ask the host for the actions again (F5)</extracomment>
        <translation>&amp;Actualiser</translation>
    </message>
</context>
<context>
    <name>VendelHost::KRunnerService</name>
    <message>
        <source>Edit</source>
        <extracomment>KRunner&apos;s action that opens the action&apos;s plugin&apos;s editor, offered beside every match</extracomment>
        <translation>Modifier</translation>
    </message>
</context>
<context>
    <name>VendelHost::LaunchMessages</name>
    <message>
        <source>“%1” did not run.</source>
        <extracomment>Headline of a run that did not start; %1 is the action&apos;s title; the reason follows</extracomment>
        <translation>«&#xa0;%1&#xa0;» n’a pas été lancée.</translation>
    </message>
    <message>
        <source>“%1” could not be opened in its editor.</source>
        <extracomment>Headline of an edit that did not start; %1 is the action&apos;s title; the reason follows</extracomment>
        <translation>«&#xa0;%1&#xa0;» n’a pas pu être ouverte dans son éditeur.</translation>
    </message>
    <message>
        <source>The preferences of %1 could not be opened.</source>
        <extracomment>Headline of a plugin&apos;s preferences that did not open; %1 is the plugin&apos;s display name</extracomment>
        <translation>Les préférences de %1 n’ont pas pu être ouvertes.</translation>
    </message>
    <message>
        <source>“%1” failed: its plugin ended with exit status %2.</source>
        <extracomment>A run ended with a failure status; %1 is the action&apos;s title, %2 the status (a number)</extracomment>
        <translation>«&#xa0;%1&#xa0;» a échoué&#xa0;: son plugin s’est terminé avec le code de sortie %2.</translation>
    </message>
    <message>
        <source>“%1” did not finish by itself.</source>
        <extracomment>A run crashed or was stopped at the time limit; the host&apos;s own sentence saying which follows</extracomment>
        <translation>«&#xa0;%1&#xa0;» ne s’est pas terminée d’elle-même.</translation>
    </message>
    <message>
        <source>The editor of “%1” ended with a failure.</source>
        <extracomment>An editor&apos;s process failed; %1 is the action&apos;s title; the host&apos;s own sentence follows</extracomment>
        <translation>L’éditeur de «&#xa0;%1&#xa0;» s’est terminé sur un échec.</translation>
    </message>
    <message>
        <source>The preferences of %1 ended with a failure.</source>
        <extracomment>A preferences window&apos;s process failed; %1 is the plugin&apos;s display name; the host&apos;s sentence follows</extracomment>
        <translation>Les préférences de %1 se sont terminées sur un échec.</translation>
    </message>
    <message>
        <source>It is still running; it can run again when this run has ended.</source>
        <extracomment>Reason: the action&apos;s earlier run is under way (one run of an action at a time)</extracomment>
        <translation>Elle est encore en cours&#xa0;; elle pourra être relancée lorsque cette exécution sera terminée.</translation>
    </message>
    <message>
        <source>The host is running as many plugins as it runs at once; try again when one has ended.</source>
        <extracomment>Reason: the host&apos;s limit on plugins running at once is reached</extracomment>
        <translation>L’hôte exécute déjà autant de plugins qu’il en lance à la fois&#xa0;; réessayez lorsque l’un d’eux sera terminé.</translation>
    </message>
    <message>
        <source>It no longer exists.</source>
        <extracomment>Reason: the action was deleted meanwhile, for example from the command line</extracomment>
        <translation>Elle n’existe plus.</translation>
    </message>
    <message>
        <source>Its plugin %1 is not installed; plugins install themselves when started on their own.</source>
        <extracomment>Reason: %1 is the plugin&apos;s name (its executable&apos;s file name)</extracomment>
        <translation>Son plugin %1 n’est pas installé&#xa0;; les plugins s’installent d’eux-mêmes lorsqu’on les démarre seuls.</translation>
    </message>
    <message>
        <source>Its plugin&apos;s executable %1 is missing; install the plugin again.</source>
        <extracomment>Reason: %1 is the path of the plugin&apos;s executable</extracomment>
        <translation>L’exécutable %1 de son plugin est introuvable&#xa0;; réinstallez le plugin.</translation>
    </message>
    <message>
        <source>Its plugin&apos;s executable %1 cannot be run.</source>
        <extracomment>Reason: %1 is the path of the plugin&apos;s executable, which exists but is no program</extracomment>
        <translation>L’exécutable %1 de son plugin ne peut pas être lancé.</translation>
    </message>
    <message>
        <source>The host could not be reached: %1</source>
        <extracomment>Reason: the served host did not answer on the session bus; %1 is the bus&apos;s error message (English)</extracomment>
        <translation>L’hôte est injoignable&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>VendelHost::MessageArea</name>
    <message>
        <source>Dismiss</source>
        <extracomment>Button that removes a message from the window</extracomment>
        <translation>Masquer</translation>
    </message>
</context>
<context>
    <name>VendelHost::NewActionDialog</name>
    <message>
        <source>New Action</source>
        <extracomment>Title of the dialog that makes an action</extracomment>
        <translation>Nouvelle action</translation>
    </message>
    <message>
        <source>Optional: the plugin&apos;s name and a number</source>
        <extracomment>Placeholder of the title field: an action without a title is shown with its plugin&apos;s name and a number</extracomment>
        <translation>Facultatif&#xa0;: le nom du plugin et un numéro</translation>
    </message>
    <message>
        <source>&amp;Plugin:</source>
        <extracomment>Label of the list of installed plugins in the new action dialog</extracomment>
        <translation>&amp;Plugin&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Title:</source>
        <extracomment>Label of the title field in the new action dialog</extracomment>
        <translation>&amp;Titre&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Create</source>
        <extracomment>Button of the new action dialog</extracomment>
        <translation>&amp;Créer</translation>
    </message>
</context>
</TS>
