<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>TellScriptEngine</name>
    <message>
        <source>Application “%1” can’t be found.</source>
        <extracomment>The system&apos;s message for a script addressed to an application it does not know; %1 is its name</extracomment>
        <translation>Das Programm „%1“ wurde nicht gefunden.</translation>
    </message>
</context>
<context>
    <name>VendelHostApplication</name>
    <message>
        <source>Application isn&apos;t running.</source>
        <extracomment>The system&apos;s message when the host application is not running</extracomment>
        <translation>Das Programm läuft nicht.</translation>
    </message>
    <message>
        <source>AppleEvent timed out.</source>
        <extracomment>The system&apos;s message when the host application did not answer in time</extracomment>
        <translation>Zeitüberschreitung beim AppleEvent.</translation>
    </message>
    <message>
        <source>Can’t make some data into the expected type.</source>
        <extracomment>The system&apos;s message when the host application answered with a value of another kind</extracomment>
        <translation>Einige Daten können nicht in den erwarteten Typ umgewandelt werden.</translation>
    </message>
</context>
<context>
    <name>VendelSDK</name>
    <message>
        <source>Could not read action data in Vendel.</source>
        <extracomment>Alert title</extracomment>
        <translation>Die Daten der Aktion konnten nicht aus Vendel gelesen werden.</translation>
    </message>
    <message>
        <source>Could not save action data in Vendel.</source>
        <extracomment>Alert title</extracomment>
        <translation>Die Daten der Aktion konnten nicht in Vendel gespeichert werden.</translation>
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
        <translation>Der Vorgang konnte nicht abgeschlossen werden. (%1-Fehler %2.)</translation>
    </message>
    <message>
        <source>Could not create URL</source>
        <extracomment>Error</extracomment>
        <translation>Die URL konnte nicht erstellt werden</translation>
    </message>
    <message>
        <source>Could not run script</source>
        <extracomment>Error</extracomment>
        <translation>Das Skript konnte nicht ausgeführt werden</translation>
    </message>
    <message>
        <source>It looks like you haven&apos;t got Vendel 2 app or you didn&apos;t allow to communicate the plugin (this app) via Apple Script</source>
        <extracomment>No Vendel 2 or disallowed.</extracomment>
        <translation>Anscheinend ist Vendel 2 nicht installiert, oder Sie haben diesem Plugin (diesem Programm) nicht erlaubt, per AppleScript mit Vendel zu kommunizieren</translation>
    </message>
    <message>
        <source>Could not read data from script output</source>
        <extracomment>Error</extracomment>
        <translation>Die Daten konnten nicht aus der Ausgabe des Skripts gelesen werden</translation>
    </message>
    <message>
        <source>Plugin cannot be installed.</source>
        <extracomment>Can&apos;t communicate with Vendel message during plugin installation.</extracomment>
        <translation>Das Plugin kann nicht installiert werden.</translation>
    </message>
    <message>
        <source>Please make sure you have the latest version of Vendel installed. If problem occurs again, go to Preferences -&gt; Plugins and install the plugin there.</source>
        <extracomment>Can&apos;t communicate with Vendel informative text of message during plugin installation.</extracomment>
        <translation>Bitte stellen Sie sicher, dass die neueste Version von Vendel installiert ist. Tritt das Problem erneut auf, öffnen Sie in Vendel „Einstellungen“ &gt; „Plugins“ und installieren Sie das Plugin dort.</translation>
    </message>
    <message>
        <source>This plugin must be run by Vendel app.</source>
        <extracomment>Information that plugin must be run by Vendel</extracomment>
        <translation>Dieses Plugin muss von Vendel gestartet werden.</translation>
    </message>
</context>
</TS>
