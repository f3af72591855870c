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
