<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AboutViewController</name>
    <message>
        <source>Version: </source>
        <extracomment>Start of the about panel&apos;s version line, followed by the version and the build in parentheses</extracomment>
        <translation>Version: </translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>The window cannot be opened.</source>
        <extracomment>Shown when an edit or configure launch finds no display to open its window on</extracomment>
        <translation>Das Fenster kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The plugin was started without a display.</source>
        <extracomment>Informative text of the message shown when there is no display</extracomment>
        <translation>Das Plugin wurde ohne grafische Oberfläche gestartet.</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Music Action</source>
        <extracomment>Title of the window that edits one music action</extracomment>
        <translation>Musikaktion</translation>
    </message>
    <message>
        <source>&amp;Action:</source>
        <extracomment>Label of the choice between playing a playlist and pausing; &amp; marks the access key</extracomment>
        <translation>&amp;Aktion:</translation>
    </message>
    <message>
        <source>Action</source>
        <extracomment>Name of the action choice for screen readers</extracomment>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Play Playlist</source>
        <extracomment>The action that plays the chosen playlist</extracomment>
        <translation>Wiedergabeliste abspielen</translation>
    </message>
    <message>
        <source>Pause</source>
        <extracomment>The action that pauses playback</extracomment>
        <translation>Pausieren</translation>
    </message>
    <message>
        <source>&amp;Playlist:</source>
        <extracomment>Label of the playlist field; &amp; marks the access key</extracomment>
        <translation>&amp;Wiedergabeliste:</translation>
    </message>
    <message>
        <source>Playlist</source>
        <extracomment>Name of the playlist field for screen readers</extracomment>
        <translation>Wiedergabeliste</translation>
    </message>
    <message>
        <source>&amp;Shuffle before playing</source>
        <extracomment>Switch that turns shuffle on before the playlist plays; &amp; marks the access key</extracomment>
        <translation>Vor dem Abspielen &amp;zufällig mischen</translation>
    </message>
    <message>
        <source>S&amp;ettings</source>
        <extracomment>Menu that holds the preferences; &amp; marks the access key</extracomment>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <extracomment>Menu item that opens the preferences window; use the desktop&apos;s usual word</extracomment>
        <translation>Ein&amp;stellungen…</translation>
    </message>
</context>
<context>
    <name>MainWindowController</name>
    <message>
        <source>None</source>
        <extracomment>Placeholder of the playlist field while no playlist is chosen</extracomment>
        <translation>Keine</translation>
    </message>
</context>
<context>
    <name>MediaLibrary</name>
    <message>
        <source>The music library could not be opened.</source>
        <extracomment>Description of the error shown when the playlists cannot be read.</extracomment>
        <translation>Die Musikmediathek konnte nicht geöffnet werden.</translation>
    </message>
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
    <name>MusicAppController</name>
    <message>
        <source>Expected end of line but found a double quote, a backslash or a control character in the playlist name.</source>
        <extracomment>The script compiler&apos;s message for a playlist name that would end the script&apos;s text</extracomment>
        <translation>Zeilenende erwartet, aber im Namen der Wiedergabeliste ein Anführungszeichen, einen umgekehrten Schrägstrich oder ein Steuerzeichen gefunden.</translation>
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
        <source>The player “%1” did not start playing the playlist “%2”.</source>
        <extracomment>A music player answered the command to play a playlist but did not start playing it; %1 is the player, %2 the playlist.</extracomment>
        <translation>Der Player „%1“ hat die Wiedergabe der Wiedergabeliste „%2“ nicht gestartet.</translation>
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
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Preferences</source>
        <extracomment>Title of the preferences window; use the desktop&apos;s usual word</extracomment>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Application icon</source>
        <extracomment>Name of the application&apos;s icon in the about panel, for screen readers</extracomment>
        <translation>Programmsymbol</translation>
    </message>
    <message>
        <source>Website</source>
        <extracomment>Link to the plugin&apos;s website in the about panel</extracomment>
        <translation>Website</translation>
    </message>
</context>
<context>
    <name>RunActionController</name>
    <message>
        <source>Could not read action configuration</source>
        <extracomment>Running Error</extracomment>
        <translation>Die Konfiguration der Aktion konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>Playlist could not be read</source>
        <extracomment>Running Error</extracomment>
        <translation>Die Wiedergabeliste konnte nicht gelesen werden</translation>
    </message>
</context>
</TS>
