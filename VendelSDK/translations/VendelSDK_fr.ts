<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>TellScriptEngine</name>
    <message>
        <source>Application “%1” can’t be found.</source>
        <extracomment>The system&apos;s message for a script addressed to an application it does not know; %1 is its name</extracomment>
        <translation>L’application «&#xa0;%1&#xa0;» est introuvable.</translation>
    </message>
</context>
<context>
    <name>VendelHostApplication</name>
    <message>
        <source>Application isn&apos;t running.</source>
        <extracomment>The system&apos;s message when the host application is not running</extracomment>
        <translation>L’application n’est pas ouverte.</translation>
    </message>
    <message>
        <source>AppleEvent timed out.</source>
        <extracomment>The system&apos;s message when the host application did not answer in time</extracomment>
        <translation>Le délai d’attente de l’AppleEvent a expiré.</translation>
    </message>
    <message>
        <source>Can’t make some data into the expected type.</source>
        <extracomment>The system&apos;s message when the host application answered with a value of another kind</extracomment>
        <translation>Impossible de convertir certaines données dans le type attendu.</translation>
    </message>
</context>
<context>
    <name>VendelSDK</name>
    <message>
        <source>Could not read action data in Vendel.</source>
        <extracomment>Alert title</extracomment>
        <translation>Impossible de lire les données de l’action dans Vendel.</translation>
    </message>
    <message>
        <source>Could not save action data in Vendel.</source>
        <extracomment>Alert title</extracomment>
        <translation>Impossible d’enregistrer les données de l’action dans Vendel.</translation>
    </message>
    <message>
        <source>OK</source>
        <extracomment>OK button title
----------
OK button</extracomment>
        <translation>OK</translation>
    </message>
    <message>
        <source>The operation couldn’t be completed. (%1 error %2.)</source>
        <extracomment>Generic description of an error that carries no text of its own; %1 is the domain, %2 the code.</extracomment>
        <translation>L’opération n’a pas pu s’achever. (%1, erreur %2.)</translation>
    </message>
    <message>
        <source>Could not create URL</source>
        <extracomment>Error</extracomment>
        <translation>Impossible de créer l’URL</translation>
    </message>
    <message>
        <source>Could not run script</source>
        <extracomment>Error</extracomment>
        <translation>Impossible d’exécuter le script</translation>
    </message>
    <message>
        <source>It looks like you haven&apos;t got Vendel 2 app or you didn&apos;t allow to communicate the plugin (this app) via Apple Script</source>
        <extracomment>No Vendel 2 or disallowed.</extracomment>
        <translation>Il semble que l’application Vendel 2 ne soit pas installée, ou que vous n’ayez pas autorisé ce plugin (cette application) à communiquer avec elle par AppleScript</translation>
    </message>
    <message>
        <source>Could not read data from script output</source>
        <extracomment>Error</extracomment>
        <translation>Impossible de lire les données de la sortie du script</translation>
    </message>
    <message>
        <source>Plugin cannot be installed.</source>
        <extracomment>Can&apos;t communicate with Vendel message during plugin installation.</extracomment>
        <translation>Impossible d’installer le plugin.</translation>
    </message>
    <message>
        <source>Please make sure you have the latest version of Vendel installed. If problem occurs again, go to Preferences -&gt; Plugins and install the plugin there.</source>
        <extracomment>Can&apos;t communicate with Vendel informative text of message during plugin installation.</extracomment>
        <translation>Vérifiez que la dernière version de Vendel est installée. Si le problème se reproduit, ouvrez «&#xa0;Préférences&#xa0;» &gt; «&#xa0;Plugins&#xa0;» dans Vendel et installez-y le plugin.</translation>
    </message>
    <message>
        <source>This plugin must be run by Vendel app.</source>
        <extracomment>Information that plugin must be run by Vendel</extracomment>
        <translation>Ce plugin doit être lancé par l’application Vendel.</translation>
    </message>
</context>
</TS>
