<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>AboutViewController</name>
    <message>
        <source>Version: </source>
        <extracomment>Start of the about panel&apos;s version line, followed by the version and the build in parentheses</extracomment>
        <translation>Version&#xa0;: </translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>The window cannot be opened.</source>
        <extracomment>Shown when an edit or configure launch finds no display to open its window on</extracomment>
        <translation>Impossible d’ouvrir la fenêtre.</translation>
    </message>
    <message>
        <source>The plugin was started without a display.</source>
        <extracomment>Informative text of the message shown when there is no display</extracomment>
        <translation>Le plugin a été lancé sans interface graphique.</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Music Action</source>
        <extracomment>Title of the window that edits one music action</extracomment>
        <translation>Action musicale</translation>
    </message>
    <message>
        <source>&amp;Action:</source>
        <extracomment>Label of the choice between playing a playlist and pausing; &amp; marks the access key</extracomment>
        <translation>&amp;Action&#xa0;:</translation>
    </message>
    <message>
        <source>Action</source>
        <extracomment>Name of the action choice for screen readers</extracomment>
        <translation>Action</translation>
    </message>
    <message>
        <source>Play Playlist</source>
        <extracomment>The action that plays the chosen playlist</extracomment>
        <translation>Lire une liste de lecture</translation>
    </message>
    <message>
        <source>Pause</source>
        <extracomment>The action that pauses playback</extracomment>
        <translation>Mettre en pause</translation>
    </message>
    <message>
        <source>&amp;Playlist:</source>
        <extracomment>Label of the playlist field; &amp; marks the access key</extracomment>
        <translation>&amp;Liste de lecture&#xa0;:</translation>
    </message>
    <message>
        <source>Playlist</source>
        <extracomment>Name of the playlist field for screen readers</extracomment>
        <translation>Liste de lecture</translation>
    </message>
    <message>
        <source>&amp;Shuffle before playing</source>
        <extracomment>Switch that turns shuffle on before the playlist plays; &amp; marks the access key</extracomment>
        <translation>&amp;Mélanger avant la lecture</translation>
    </message>
    <message>
        <source>S&amp;ettings</source>
        <extracomment>Menu that holds the preferences; &amp; marks the access key</extracomment>
        <translation>&amp;Configuration</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <extracomment>Menu item that opens the preferences window; use the desktop&apos;s usual word</extracomment>
        <translation>&amp;Préférences…</translation>
    </message>
</context>
<context>
    <name>MainWindowController</name>
    <message>
        <source>None</source>
        <extracomment>Placeholder of the playlist field while no playlist is chosen</extracomment>
        <translation>Aucune</translation>
    </message>
</context>
<context>
    <name>MediaLibrary</name>
    <message>
        <source>The music library could not be opened.</source>
        <extracomment>Description of the error shown when the playlists cannot be read.</extracomment>
        <translation>Impossible d’ouvrir la bibliothèque musicale.</translation>
    </message>
    <message>
        <source>No music player could be reached: start MPD or a player that offers MPRIS.</source>
        <extracomment>Why the playlists cannot be read when neither kind of music player answers.</extracomment>
        <translation>Aucun lecteur de musique n’a pu être joint&#xa0;: démarrez MPD ou un lecteur compatible MPRIS.</translation>
    </message>
    <message>
        <source>This platform has no music library that can be read.</source>
        <extracomment>Why the playlists cannot be read on a platform that has no music library support.</extracomment>
        <translation>Ce système n’a aucune bibliothèque musicale lisible.</translation>
    </message>
</context>
<context>
    <name>MpdMusicPlayer</name>
    <message>
        <source>Out of memory.</source>
        <extracomment>The system&apos;s message when there was no memory left to connect to the music player</extracomment>
        <translation>Mémoire insuffisante.</translation>
    </message>
</context>
<context>
    <name>MprisMusicPlayer</name>
    <message>
        <source>The player “%1” sent its playlists in an unknown form.</source>
        <extracomment>%1 is the music player&apos;s bus name</extracomment>
        <translation>Le lecteur «&#xa0;%1&#xa0;» a envoyé ses listes de lecture sous une forme inconnue.</translation>
    </message>
</context>
<context>
    <name>MusicAppController</name>
    <message>
        <source>Expected end of line but found a double quote, a backslash or a control character in the playlist name.</source>
        <extracomment>The script compiler&apos;s message for a playlist name that would end the script&apos;s text</extracomment>
        <translation>Fin de ligne attendue, mais le nom de la liste de lecture contient un guillemet droit, une barre oblique inverse ou un caractère de contrôle.</translation>
    </message>
</context>
<context>
    <name>MusicApplication</name>
    <message>
        <source>Music doesn’t understand the command.</source>
        <extracomment>The system&apos;s message for a command that the application Music does not know</extracomment>
        <translation>Music ne comprend pas la commande.</translation>
    </message>
</context>
<context>
    <name>MusicPlayer</name>
    <message>
        <source>Music got an error: %1</source>
        <extracomment>The scripting language&apos;s message for an error of the application Music; %1 is its brief message</extracomment>
        <translation>Music a rencontré une erreur&#xa0;: %1</translation>
    </message>
    <message>
        <source>Application isn’t running.</source>
        <extracomment>The system&apos;s message when the music player is not running</extracomment>
        <translation>L’application n’est pas ouverte.</translation>
    </message>
    <message>
        <source>Connection is invalid.</source>
        <extracomment>The system&apos;s message when the connection to the music player was lost</extracomment>
        <translation>La connexion n’est pas valide.</translation>
    </message>
    <message>
        <source>The player “%1” cannot play a playlist: it has no org.mpris.MediaPlayer2.Playlists interface.</source>
        <extracomment>%1 is the music player&apos;s bus name; the interface&apos;s name stays as it is</extracomment>
        <translation>Le lecteur «&#xa0;%1&#xa0;» ne peut pas lire de liste de lecture&#xa0;: il n’offre pas l’interface org.mpris.MediaPlayer2.Playlists.</translation>
    </message>
    <message>
        <source>AppleEvent timed out.</source>
        <extracomment>The system&apos;s message when the music player did not answer in time</extracomment>
        <translation>Le délai d’attente de l’AppleEvent a expiré.</translation>
    </message>
    <message>
        <source>Can’t get playlist &quot;%1&quot;.</source>
        <extracomment>The system&apos;s message for a playlist that the music player does not have; %1 is its name</extracomment>
        <translation>Impossible d’obtenir la liste de lecture «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The player “%1” did not start playing the playlist “%2”.</source>
        <extracomment>A music player answered the command to play a playlist but did not start playing it; %1 is the player, %2 the playlist.</extracomment>
        <translation>Le lecteur «&#xa0;%1&#xa0;» n’a pas lancé la lecture de la liste «&#xa0;%2&#xa0;».</translation>
    </message>
    <message>
        <source>VENDEL_MUSIC must be “mpd” or “mpris”, not “%1”.</source>
        <extracomment>%1 is the environment variable&apos;s value; the variable&apos;s name and values stay as they are</extracomment>
        <translation>VENDEL_MUSIC doit valoir «&#xa0;mpd&#xa0;» ou «&#xa0;mpris&#xa0;», et non «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The player failed.</source>
        <extracomment>The music player reported a failure without saying why</extracomment>
        <translation>Le lecteur a rencontré une erreur.</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source>Preferences</source>
        <extracomment>Title of the preferences window; use the desktop&apos;s usual word</extracomment>
        <translation>Préférences</translation>
    </message>
    <message>
        <source>Application icon</source>
        <extracomment>Name of the application&apos;s icon in the about panel, for screen readers</extracomment>
        <translation>Icône de l’application</translation>
    </message>
    <message>
        <source>Website</source>
        <extracomment>Link to the plugin&apos;s website in the about panel</extracomment>
        <translation>Site web</translation>
    </message>
</context>
<context>
    <name>RunActionController</name>
    <message>
        <source>Could not read action configuration</source>
        <extracomment>Running Error</extracomment>
        <translation>Impossible de lire la configuration de l’action</translation>
    </message>
    <message>
        <source>Playlist could not be read</source>
        <extracomment>Running Error</extracomment>
        <translation>Impossible de lire la liste de lecture</translation>
    </message>
</context>
</TS>
