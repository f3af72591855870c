<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>MediaLibrary</name>
    <message>
        <source>No music player could be reached: start MPD or a player that offers MPRIS.</source>
        <extracomment>Why the playlists cannot be read when neither kind of music player answers.</extracomment>
        <translation>Es konnte kein Musikplayer erreicht werden. Starten Sie MPD oder einen Player, der MPRIS unterstützt.</translation>
    </message>
    <message>
        <source>This platform has no music library that can be read.</source>
        <extracomment>Why the playlists cannot be read on a platform that has no music library support.</extracomment>
        <translation>Auf diesem System gibt es keine Musikmediathek, die gelesen werden kann.</translation>
    </message>
</context>
<context>
    <name>MpdMusicPlayer</name>
    <message>
        <source>Out of memory.</source>
        <extracomment>The system&apos;s message when there was no memory left to connect to the music player</extracomment>
        <translation>Nicht genügend Arbeitsspeicher.</translation>
    </message>
</context>
<context>
    <name>MprisMusicPlayer</name>
    <message>
        <source>The player “%1” sent its playlists in an unknown form.</source>
        <extracomment>%1 is the music player&apos;s bus name</extracomment>
        <translation>Der Player „%1“ hat seine Wiedergabelisten in einer unbekannten Form gesendet.</translation>
    </message>
</context>
<context>
    <name>MusicApplication</name>
    <message>
        <source>Music doesn’t understand the command.</source>
        <extracomment>The system&apos;s message for a command that the application Music does not know</extracomment>
        <translation>Music versteht den Befehl nicht.</translation>
    </message>
</context>
<context>
    <name>MusicPlayer</name>
    <message>
        <source>Music got an error: %1</source>
        <extracomment>The scripting language&apos;s message for an error of the application Music; %1 is its brief message</extracomment>
        <translation>Music hat einen Fehler erhalten: %1</translation>
    </message>
    <message>
        <source>Application isn’t running.</source>
        <extracomment>The system&apos;s message when the music player is not running</extracomment>
        <translation>Das Programm läuft nicht.</translation>
    </message>
    <message>
        <source>Connection is invalid.</source>
        <extracomment>The system&apos;s message when the connection to the music player was lost</extracomment>
        <translation>Die Verbindung ist ungültig.</translation>
    </message>
    <message>
        <source>The player “%1” cannot play a playlist: it has no org.mpris.MediaPlayer2.Playlists interface.</source>
        <extracomment>%1 is the music player&apos;s bus name; the interface&apos;s name stays as it is</extracomment>
        <translation>Der Player „%1“ kann keine Wiedergabeliste abspielen: Er bietet die Schnittstelle org.mpris.MediaPlayer2.Playlists nicht an.</translation>
    </message>
    <message>
        <source>AppleEvent timed out.</source>
        <extracomment>The system&apos;s message when the music player did not answer in time</extracomment>
        <translation>Zeitüberschreitung beim AppleEvent.</translation>
    </message>
    <message>
        <source>Can’t get playlist &quot;%1&quot;.</source>
        <extracomment>The system&apos;s message for a playlist that the music player does not have; %1 is its name</extracomment>
        <translation>Die Wiedergabeliste „%1“ kann nicht abgerufen werden.</translation>
    </message>
    <message>
        <source>VENDEL_MUSIC must be “mpd” or “mpris”, not “%1”.</source>
        <extracomment>%1 is the environment variable&apos;s value; the variable&apos;s name and values stay as they are</extracomment>
        <translation>VENDEL_MUSIC muss „mpd“ oder „mpris“ sein, nicht „%1“.</translation>
    </message>
    <message>
        <source>The player failed.</source>
        <extracomment>The music player reported a failure without saying why</extracomment>
        <translation>Beim Player ist ein Fehler aufgetreten.</translation>
    </message>
    <message>
        <source>The player “%1” did not start playing the playlist “%2”.</source>
        <extracomment>A music player answered the command to play a playlist but did not start playing it; %1 is the player, %2 the playlist.</extracomment>
        <translation>Der Player „%1“ hat die Wiedergabe der Wiedergabeliste „%2“ nicht gestartet.</translation>
    </message>
</context>
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
